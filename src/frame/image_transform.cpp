// The dispatcher: from two image records to one family function.
#include <utility>

#include "bayer/bayer.h"
#include "color/color.h"
#include "correction/correction.h"
#include "frame/outputs.h"
#include "frame/transform_options.h"
#include "mono/mono.h"
#include "support/faces.h"

namespace kel {

namespace {

// Refusals of the dispatcher itself concern the source record, its first argument.
constexpr Result badSource = badArgument(1);

struct Job {
    void* destination;
    void* source;
    const OrvImageInfo& info; // of the source
    u32 output;
    std::span<const OrvTransformInfo> options;

    const OrvPixelInfo& pixel() const { return info.PixelInfo; }
    u64 pixels() const { return u64{info.Width} * info.Height; }
    i32 pattern() const { return static_cast<i32>(pixel().BayerPattern); }
    u32 debayerMode() const {
        const OrvTransformInfo* option = findOption(options, OrvTransformTypeDebayerMode);
        return option ? option->Parameter.DebayerMode : u32{OrvDebayerMode2x2};
    }
};

Result transformMono(const Job& job) {
    const OrvPixelInfo& pixel = job.pixel();
    if (pixel.BitsPerPixel == 8) return y8ImageTransform(job.destination, job.source, job.pixels(), job.output);
    if (pixel.BitsPerPixel != 16) return badSource;
    if (pixel.BitsUsed != 16) {
        const OrvShiftRecord shift{0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, 0};
        return y16ImageTransformEx(job.destination, job.source, job.pixels(), job.output, &shift);
    }
    return pixel.Endianness != 0 ? y16BigEndianImageTransform(job.destination, job.source, job.pixels(), job.output)
                                 : y16LittleEndianImageTransform(job.destination, job.source, job.pixels(), job.output);
}

Result transformMonoP(const Job& job) {
    switch (job.pixel().BitsPerPixel) {
    case 10: return y10pImageTransform(job.destination, job.source, job.pixels(), job.output);
    case 12: return y12pImageTransform(job.destination, job.source, job.pixels(), job.output);
    default: return badSource;
    }
}

Result transformRaw8(const Job& job) {
    const auto [width, height] = std::pair(job.info.Width, job.info.Height);
    switch (job.debayerMode()) {
    case OrvDebayerMode2x2:
        return raw8ImageTransform(job.destination, job.source, width, height, job.output, job.pattern());
    case OrvDebayerMode3x3:
        return raw8ImageTransform3x3(job.destination, job.source, width, height, job.output, job.pattern());
    case OrvDebayerModeLCAA:
        return raw8ImageTransformIntLCAA(job.destination, job.source, width, height, job.output, job.pattern());
    case OrvDebayerModeLCAAV:
        return raw8ImageTransformIntLCAAV(job.destination, job.source, width, height, job.output, job.pattern());
    case OrvDebayerModeYuv422:
        return raw8ImageTransformIntYUV422(job.destination, job.source, width, height, job.output, job.pattern());
    default: return badSource;
    }
}

Result transformRaw16(const Job& job) {
    const OrvPixelInfo& pixel = job.pixel();
    if (pixel.BitsUsed == 16 && pixel.Endianness == 1)
        return raw16ImageTransform(job.destination, job.source, job.info.Width, job.info.Height, job.output,
                                   job.pattern());
    const OrvShiftRecord shift{0, pixel.Alignment, pixel.BitsUsed, pixel.Endianness, pixel.BayerPattern};
    return raw16ImageTransformEx(job.destination, job.source, job.info.Width, job.info.Height, job.output, &shift);
}

Result transformRaw(const Job& job) {
    switch (job.pixel().BitsPerPixel) {
    case 8: return transformRaw8(job);
    case 16: return transformRaw16(job);
    default: return badSource;
    }
}

// 10p and 12p, which know 2x2 only; other depths are looked up among the plain mosaics.
Result transformRawP(const Job& job) {
    const u32 bits = job.pixel().BitsPerPixel;
    if (bits != 10 && bits != 12) return transformRaw(job);
    if (job.debayerMode() > OrvDebayerModeYuv422) return badSource;
    if (job.debayerMode() != OrvDebayerMode2x2) return notImplemented;
    const auto family = bits == 10 ? raw10pImageTransform : raw12pImageTransform;
    return family(job.destination, job.source, job.info.Width, job.info.Height, job.output, job.pattern());
}

// 12Packed; other depths are looked up among the bit-packed mosaics. BGR, RGBA and BGRA sources of a depth that their
// own family does not know end here as well, as they always have.
Result transformRawPacked(const Job& job) {
    if (job.pixel().BitsPerPixel != 12) return transformRawP(job);
    return raw12ImageTransform(job.destination, job.source, job.info.Width, job.info.Height, job.output, job.pattern());
}

Result transformBgr(const Job& job) {
    switch (job.pixel().BitsPerPixel) {
    case 24: return bgr8ImageTransform(job.destination, job.source, job.pixels(), job.output);
    case 32: return rgba8ImageTransform(job.destination, job.source, job.pixels(), job.output); // RGBA, not BGRA
    default: return transformRawPacked(job);
    }
}

Result transform(const Job& job) {
    const u32 bits = job.pixel().BitsPerPixel, width = job.info.Width;
    switch (job.pixel().PixelLayout) {
    case OrvPixelLayoutMono: return transformMono(job);
    case OrvPixelLayoutMonoPacked:
        return bits == 12 ? y12ImageTransform(job.destination, job.source, job.pixels(), job.output) : badSource;
    case OrvPixelLayoutMonoP: return transformMonoP(job);
    case OrvPixelLayoutRgb:
        return bits == 24 ? rgb8ImageTransform(job.destination, job.source, job.pixels(), job.output) : badSource;
    case OrvPixelLayoutBgr: return transformBgr(job);
    case OrvPixelLayoutRgba:
        return bits == 32 ? rgba8ImageTransform(job.destination, job.source, job.pixels(), job.output)
                          : transformRawPacked(job);
    case OrvPixelLayoutBgra:
        return bits == 32 ? bgra8ImageTransform(job.destination, job.source, job.pixels(), job.output)
                          : transformRawPacked(job);
    case OrvPixelLayoutYuv411:
        return width % 4 == 0 ? yuv411ImageTransform(job.destination, job.source, job.pixels(), job.output) : badSource;
    case OrvPixelLayoutYuv422:
        return width % 2 == 0 ? yuv422ImageTransform(job.destination, job.source, job.pixels(), job.output) : badSource;
    case OrvPixelLayoutYuv444: return yuv444ImageTransform(job.destination, job.source, job.pixels(), job.output);
    case OrvPixelLayoutRawPacked: return transformRawPacked(job);
    case OrvPixelLayoutRawP: return transformRawP(job);
    case OrvPixelLayoutRaw: return transformRaw(job);
    default: return badSource;
    }
}

} // namespace

} // namespace kel

OrvErrorType OrvImageTransform(const OrvImage* source, OrvImage* destination, const OrvTransformInfo* info,
                               uint32_t count) {
    if (!source || !destination || !source->Data || !destination->Data) return OrvErrorBadParameter;
    if (destination->ImageInfo.Height != source->ImageInfo.Height) return OrvErrorBadParameter;
    if (destination->ImageInfo.Width != source->ImageInfo.Width) return OrvErrorBadParameter;
    if (source->Size != sizeof(OrvImage) || destination->Size != sizeof(OrvImage)) return OrvErrorStructSize;

    const std::span<const OrvTransformInfo> options(info, info ? count : 0);
    if (const OrvTransformInfo* correction = kel::findOption(options, OrvTransformTypeColorCorrection))
        return kel::orv(kel::correctionTransform(*source, *destination, correction->Parameter.Matrix));

    kel::u32 output = 0;
    if (const kel::Result refusal = kel::outputOf(destination->ImageInfo.PixelInfo, output); !refusal.ok())
        return kel::orv(refusal);
    if (output == OrvOutputYuv422 && source->ImageInfo.Width % 2 != 0) return OrvErrorBadParameter;
    return kel::orv(kel::transform({destination->Data, source->Data, source->ImageInfo, output, options}));
}
