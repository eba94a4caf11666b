// The older general transform: raw buffers and a PFNC code instead of image records, mosaics by 2x2 only.
#include "bayer/bayer.h"
#include "color/color.h"
#include "mono/mono.h"
#include "support/faces.h"

namespace kel {

namespace {

struct Job {
    void* destination;
    const void* source;
    u32 output;
    u32 width, height;
    OrvPixelFormatType format;
    u32 bits, bitsUsed;

    u64 pixels() const { return u64{width} * height; }
};

Result transformColour(const Job& job) {
    const auto by = [&job](auto family) { return family(job.destination, job.source, job.pixels(), job.output); };
    switch (job.format) {
    case OrvPixelFormatYuv411: return by(yuv411ImageTransform);
    case OrvPixelFormatYuv422: return by(yuv422ImageTransform);
    case OrvPixelFormatYuv444: return by(yuv444ImageTransform);
    case OrvPixelFormatRgb8: return by(rgb8ImageTransform);
    case OrvPixelFormatBgr8: return by(bgr8ImageTransform);
    case OrvPixelFormatRgba8: return by(rgba8ImageTransform);
    case OrvPixelFormatBgra8: return by(bgra8ImageTransform);
    default: return badArgument(7); // Rgb16 and the YCbCr names
    }
}

// 12 bits are read as 12Packed, Mono12p as well; 16 used bits as big-endian.
Result transformMono(const Job& job) {
    const OrvShiftRecord shift{0, 1, job.bitsUsed, 0, 0};
    switch (job.bits) {
    case 8: return y8ImageTransform(job.destination, job.source, job.pixels(), job.output);
    case 12: return y12ImageTransform(job.destination, job.source, job.pixels(), job.output);
    case 16:
        return job.bitsUsed == 16 ? y16BigEndianImageTransform(job.destination, job.source, job.pixels(), job.output)
                                  : y16ImageTransformEx(job.destination, job.source, job.pixels(), job.output, &shift);
    default: return badArgument(7);
    }
}

// The same for mosaics.
Result transformMosaic(const Job& job, u32 pattern) {
    const OrvShiftRecord shift{0, 1, job.bitsUsed, 0, pattern};
    const auto by = [&](auto family) {
        return family(job.destination, job.source, job.width, job.height, job.output, static_cast<i32>(pattern));
    };
    switch (job.bits) {
    case 8: return by(raw8ImageTransform);
    case 12: return by(raw12ImageTransform);
    case 16:
        return job.bitsUsed == 16
                   ? by(raw16ImageTransform)
                   : raw16ImageTransformEx(job.destination, job.source, job.width, job.height, job.output, &shift);
    default: return badArgument(7);
    }
}

} // namespace

} // namespace kel

OrvErrorType OrvTransformOLD(void* destination, OrvOutputCode output, const void* source, uint32_t width,
                             uint32_t height, int32_t, OrvPixelFormatType format) {
    if (!destination || !source) return OrvErrorBadParameter;
    uint8_t isColour = 0;
    if (const OrvErrorType refusal = OrvIsColor(&isColour, format)) return refusal;

    // A format that OrvIsColor knows the other queries know as well.
    kel::Job job{destination, source, output, width, height, format, 0, 0};
    OrvBitsPerPixel(&job.bits, format);
    OrvBitsPerPixelUsed(&job.bitsUsed, format);
    uint32_t pattern = OrvBayerPatternNone;
    OrvGetBayerPattern(&pattern, format);

    if (isColour) return kel::orv(kel::transformColour(job));
    return kel::orv(pattern == OrvBayerPatternNone ? kel::transformMono(job) : kel::transformMosaic(job, pattern));
}
