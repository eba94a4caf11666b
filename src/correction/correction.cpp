#include "correction/correction.h"

#include "correction/correction_kernels.h"
#include "frame/outputs.h"
#include "support/shift.h"

namespace kel {

namespace {

// Everything that the path does not take is refused alike, as a bad source record.
constexpr Result notTaken = badArgument(1);

struct Job {
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

Result correctRun(const Job& job, u32 bits, const ByOutput<CorrectedRun>& kernels) {
    const CorrectedRun kernel = kernels[job.output];
    if (job.pixel().BitsPerPixel != bits || !kernel) return notTaken;
    const auto pixels = static_cast<i32>(job.info.Width * job.info.Height); // as it has always been counted
    if (pixels > 0) kernel(job.destination, job.source, static_cast<size_t>(pixels), job.matrix);
    return success;
}

Result correctMosaic(const Job& job, const ByOutput<CorrectedMosaic>& kernels) {
    const CorrectedMosaic kernel = kernels[job.output];
    if (!kernel || !job.isMosaic()) return notTaken;
    kernel(job.destination, job.source, job.info.Width, job.info.Height, job.phase(), job.matrix);
    return success;
}

Result correctRaw16(const Job& job) {
    const OrvPixelInfo& pixel = job.pixel();
    if (pixel.Endianness > 1 || pixel.Alignment > 1) return notTaken;
    const int shift = shiftOf({0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, pixel.BayerPattern});
    const CorrectedShiftedMosaic kernel = correctionKernels().raw16Shifted[pixel.Endianness][job.output];
    if (shift < 0 || !kernel || !job.isMosaic()) return notTaken;
    kernel(job.destination, job.source, job.info.Width, job.info.Height, job.phase(), shift, job.matrix);
    return success;
}

Result correct(const Job& job) {
    const CorrectionKernels& kernels = correctionKernels();
    const u32 bits = job.pixel().BitsPerPixel;
    switch (job.pixel().PixelLayout) {
    case OrvPixelLayoutRaw:
        return bits == 8 ? correctMosaic(job, kernels.raw8) : bits == 16 ? correctRaw16(job) : notTaken;
    case OrvPixelLayoutRawPacked: return bits == 12 ? correctMosaic(job, kernels.raw12) : notTaken;
    case OrvPixelLayoutRgb: return correctRun(job, 24, kernels.rgb8);
    case OrvPixelLayoutBgr: return correctRun(job, 24, kernels.bgr8);
    case OrvPixelLayoutRgba: return correctRun(job, 32, kernels.rgba8);
    case OrvPixelLayoutBgra: return correctRun(job, 32, kernels.bgra8);
    default: return notTaken;
    }
}

} // namespace

Result correctionTransform(const OrvImage& source, const OrvImage& destination, const float* matrix) {
    u32 output = 0;
    if (const Result refusal = outputOf(destination.ImageInfo.PixelInfo, output); !refusal.ok()) return refusal;
    return correct({static_cast<u8*>(destination.Data), static_cast<const u8*>(source.Data), source.ImageInfo, output,
                    fixedPoint(matrix)});
}

} // namespace kel
