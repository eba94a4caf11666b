// The dispatcher: from two image records to one family.
#include "bayer/bayer.h"
#include "color/color.h"
#include "correction/correction.h"
#include "frame/outputs.h"
#include "frame/transform_options.h"
#include "mono/mono.h"
#include "support/faces.h"

namespace kel {

namespace {

struct Call {
    void* destination;
    void* source;
    const OrvImageInfo& info; // of the source
    u32 output;
    std::span<const OrvTransformInfo> options;

    const OrvPixelInfo& pixel() const { return info.PixelInfo; }
    u32 debayerMode() const {
        const OrvTransformInfo* option = findOption(options, OrvTransformTypeDebayerMode);
        return option ? option->Parameter.DebayerMode : u32{OrvDebayerMode2x2};
    }

    RunCall run() const { return {destination, source, u64{info.Width} * info.Height, output}; }
    template <class Family> Refusal mosaic(const Family& family) const {
        const auto pattern = static_cast<i32>(pixel().BayerPattern);
        return convert(family, {destination, source, info.Width, info.Height, output, pattern});
    }
};

Refusal transformMono(const Call& call) {
    const OrvPixelInfo& pixel = call.pixel();
    if (pixel.BitsPerPixel == 8) return convert(y8, call.run());
    if (pixel.BitsPerPixel != 16) return Refusal::format;
    if (pixel.BitsUsed != 16) {
        const OrvShiftRecord shift{0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, 0};
        return convertY16(call.run(), &shift);
    }
    return convert(pixel.Endianness != 0 ? y16BigEndian : y16LittleEndian, call.run());
}

Refusal transformMonoP(const Call& call) {
    switch (call.pixel().BitsPerPixel) {
    case 10: return convert(y10p, call.run());
    case 12: return convert(y12p, call.run());
    default: return Refusal::format;
    }
}

Refusal transformRaw8(const Call& call) {
    switch (call.debayerMode()) {
    case OrvDebayerMode2x2: return call.mosaic(raw8);
    case OrvDebayerMode3x3: return call.mosaic(raw8By3x3);
    case OrvDebayerModeLCAA: return call.mosaic(raw8ByLcaa);
    case OrvDebayerModeLCAAV: return call.mosaic(raw8ByLcaav);
    case OrvDebayerModeYuv422: return call.mosaic(raw8ByYuv422);
    default: return Refusal::mode;
    }
}

Refusal transformRaw16(const Call& call) {
    const OrvPixelInfo& pixel = call.pixel();
    if (pixel.BitsUsed == 16 && pixel.Endianness == 1) return call.mosaic(raw16);
    const OrvShiftRecord shift{0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, pixel.BayerPattern};
    return convertRaw16(call.destination, call.source, call.info.Width, call.info.Height, call.output, &shift);
}

Refusal transformRaw(const Call& call) {
    switch (call.pixel().BitsPerPixel) {
    case 8: return transformRaw8(call);
    case 16: return transformRaw16(call);
    default: return Refusal::format;
    }
}

// 10p and 12p, which know 2x2 only; other depths are looked up among the plain mosaics.
Refusal transformRawP(const Call& call) {
    const u32 bits = call.pixel().BitsPerPixel;
    if (bits != 10 && bits != 12) return transformRaw(call);
    if (call.debayerMode() > OrvDebayerModeYuv422) return Refusal::mode;
    if (call.debayerMode() != OrvDebayerMode2x2) return Refusal::notOffered;
    return call.mosaic(bits == 10 ? raw10p : raw12p);
}

// 12Packed; other depths are looked up among the bit-packed mosaics. BGR, RGBA and BGRA sources of a depth that their
// own family does not know end here as well.
Refusal transformRawPacked(const Call& call) {
    return call.pixel().BitsPerPixel == 12 ? call.mosaic(raw12Packed) : transformRawP(call);
}

Refusal transformBgr(const Call& call) {
    switch (call.pixel().BitsPerPixel) {
    case 24: return convert(bgr8, call.run());
    case 32: return convert(rgba8, call.run()); // RGBA, not BGRA
    default: return transformRawPacked(call);
    }
}

Refusal transform(const Call& call) {
    const u32 bits = call.pixel().BitsPerPixel, width = call.info.Width;
    switch (call.pixel().PixelLayout) {
    case OrvPixelLayoutMono: return transformMono(call);
    case OrvPixelLayoutMonoPacked: return bits == 12 ? convert(y12Packed, call.run()) : Refusal::format;
    case OrvPixelLayoutMonoP: return transformMonoP(call);
    case OrvPixelLayoutRgb: return bits == 24 ? convert(rgb8, call.run()) : Refusal::format;
    case OrvPixelLayoutBgr: return transformBgr(call);
    case OrvPixelLayoutRgba: return bits == 32 ? convert(rgba8, call.run()) : transformRawPacked(call);
    case OrvPixelLayoutBgra: return bits == 32 ? convert(bgra8, call.run()) : transformRawPacked(call);
    case OrvPixelLayoutYuv411: return width % 4 == 0 ? convert(yuv411, call.run()) : Refusal::width;
    case OrvPixelLayoutYuv422: return width % 2 == 0 ? convert(yuv422, call.run()) : Refusal::width;
    case OrvPixelLayoutYuv444: return convert(yuv444, call.run());
    case OrvPixelLayoutRawPacked: return transformRawPacked(call);
    case OrvPixelLayoutRawP: return transformRawP(call);
    case OrvPixelLayoutRaw: return transformRaw(call);
    default: return Refusal::format;
    }
}

// What the records say by themselves.
Refusal checkImages(const OrvImage* source, const OrvImage* destination) {
    if (!source || !destination || !source->Data || !destination->Data) return Refusal::source;
    const OrvImageInfo &from = source->ImageInfo, &to = destination->ImageInfo;
    return firstRefusal({{from.Height == to.Height, Refusal::height},
                         {from.Width == to.Width, Refusal::width},
                         {source->Size == sizeof(OrvImage), Refusal::structSize},
                         {destination->Size == sizeof(OrvImage), Refusal::structSize}});
}

Refusal transform(const OrvImage& source, const OrvImage& destination, std::span<const OrvTransformInfo> options) {
    if (const OrvTransformInfo* correction = findOption(options, OrvTransformTypeColorCorrection))
        return correctionTransform(source, destination, correction->Parameter.Matrix);
    const auto [refusal, output] = outputOf(destination.ImageInfo.PixelInfo);
    if (refusal != Refusal::none) return refusal;
    if (output == OrvOutputYuv422 && source.ImageInfo.Width % 2 != 0) return Refusal::width;
    return transform({destination.Data, source.Data, source.ImageInfo, output, options});
}

} // namespace

} // namespace kel

OrvErrorType OrvImageTransform(const OrvImage* source, OrvImage* destination, const OrvTransformInfo* info,
                               uint32_t count) {
    const kel::Refusal refusal = kel::checkImages(source, destination);
    if (refusal != kel::Refusal::none) return kel::orv(refusal);
    return kel::orv(kel::transform(*source, *destination, {info, info ? count : 0}));
}
