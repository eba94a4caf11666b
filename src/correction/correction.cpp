#include "correction/correction.h"

#include "correction/correction_kernels.h"
#include "frame/outputs.h"
#include "support/shift.h"

namespace kel {

namespace {

// Everything that the path does not take is refused alike.
constexpr Refusal notTaken = Refusal::format;

struct Call {
    u8* destination;
    const u8* source;
    const OrvImageInfo& info; // of the source
    u32 output;
    Matrix matrix;

    const OrvPixelInfo& pixel() const { return info.PixelInfo; }
    bool isMosaic() const { return info.Width >= 2 && info.Height >= 2 && pixel().BayerPattern <= OrvBayerPatternBGGR; }
    // The pattern code as it is: here the codes 1 and 2 are not exchanged.
    unsigned phase() const { return pixel().BayerPattern; }
};

Refusal correctRun(const Call& call, u32 bits, const ByOutput<CorrectedRun>& kernels) {
    const CorrectedRun kernel = kernels[call.output];
    if (call.pixel().BitsPerPixel != bits || !kernel) return notTaken;
    const auto pixels = static_cast<i32>(call.info.Width * call.info.Height); // a signed product
    if (pixels > 0) kernel(call.destination, call.source, static_cast<size_t>(pixels), call.matrix);
    return Refusal::none;
}

Refusal correctMosaic(const Call& call, const ByOutput<CorrectedMosaic>& kernels) {
    const CorrectedMosaic kernel = kernels[call.output];
    if (!kernel || !call.isMosaic()) return notTaken;
    kernel(call.destination, call.source, call.info.Width, call.info.Height, call.phase(), call.matrix);
    return Refusal::none;
}

Refusal correctRaw16(const Call& call) {
    const OrvPixelInfo& pixel = call.pixel();
    if (pixel.Endianness > 1 || pixel.Alignment > 1) return notTaken;
    const int shift = leftShift({0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, pixel.BayerPattern});
    const CorrectedShiftedMosaic kernel = correctionKernels().raw16Shifted[pixel.Endianness][call.output];
    if (shift < 0 || !kernel || !call.isMosaic()) return notTaken;
    kernel(call.destination, call.source, call.info.Width, call.info.Height, call.phase(), shift, call.matrix);
    return Refusal::none;
}

Refusal correct(const Call& call) {
    const CorrectionKernels& kernels = correctionKernels();
    const u32 bits = call.pixel().BitsPerPixel;
    switch (call.pixel().PixelLayout) {
    case OrvPixelLayoutRaw:
        return bits == 8 ? correctMosaic(call, kernels.raw8) : bits == 16 ? correctRaw16(call) : notTaken;
    case OrvPixelLayoutRawPacked: return bits == 12 ? correctMosaic(call, kernels.raw12) : notTaken;
    case OrvPixelLayoutRgb: return correctRun(call, 24, kernels.rgb8);
    case OrvPixelLayoutBgr: return correctRun(call, 24, kernels.bgr8);
    case OrvPixelLayoutRgba: return correctRun(call, 32, kernels.rgba8);
    case OrvPixelLayoutBgra: return correctRun(call, 32, kernels.bgra8);
    default: return notTaken;
    }
}

} // namespace

Refusal correctionTransform(const OrvImage& source, const OrvImage& destination, const float* matrix) {
    const auto [refusal, output] = outputOf(destination.ImageInfo.PixelInfo);
    if (refusal != Refusal::none) return refusal;
    return correct({bytes(destination.Data), bytes(source.Data), source.ImageInfo, output, fixedPoint(matrix)});
}

} // namespace kel
