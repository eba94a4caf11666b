// The older general transform: raw buffers and a PFNC code instead of image records, mosaics by 2x2 only.
#include "bayer/bayer.h"
#include "color/color.h"
#include "mono/mono.h"
#include "support/faces.h"

namespace kel {

namespace {

struct Call {
    void* destination;
    const void* source;
    u32 output;
    u32 width, height;
    u32 bits, bitsUsed;

    RunCall run() const { return {destination, source, u64{width} * height, output}; }
};

Refusal transformColour(const RunCall& call, OrvPixelFormatType format) {
    switch (format) {
    case OrvPixelFormatYuv411: return convert(yuv411, call);
    case OrvPixelFormatYuv422: return convert(yuv422, call);
    case OrvPixelFormatYuv444: return convert(yuv444, call);
    case OrvPixelFormatRgb8: return convert(rgb8, call);
    case OrvPixelFormatBgr8: return convert(bgr8, call);
    case OrvPixelFormatRgba8: return convert(rgba8, call);
    case OrvPixelFormatBgra8: return convert(bgra8, call);
    default: return Refusal::format; // Rgb16 and the YCbCr names
    }
}

// 12 bits are read as 12Packed, Mono12p as well; 16 used bits as big-endian.
Refusal transformMono(const Call& call) {
    const OrvShiftRecord shift{0, 1, call.bitsUsed, 0, 0};
    switch (call.bits) {
    case 8: return convert(y8, call.run());
    case 12: return convert(y12Packed, call.run());
    case 16: return call.bitsUsed == 16 ? convert(y16BigEndian, call.run()) : convertY16(call.run(), &shift);
    default: return Refusal::format;
    }
}

// The same for mosaics.
Refusal transformMosaic(const Call& call, u32 pattern) {
    const OrvShiftRecord shift{0, 1, call.bitsUsed, 0, pattern};
    const MosaicCall mosaic{call.destination, call.source, call.width,
                            call.height,      call.output, static_cast<i32>(pattern)};
    switch (call.bits) {
    case 8: return convert(raw8, mosaic);
    case 12: return convert(raw12Packed, mosaic);
    case 16:
        return call.bitsUsed == 16
                   ? convert(raw16, mosaic)
                   : convertRaw16(call.destination, call.source, call.width, call.height, call.output, &shift);
    default: return Refusal::format;
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
    kel::Call call{destination, source, output, width, height, 0, 0};
    OrvBitsPerPixel(&call.bits, format);
    OrvBitsPerPixelUsed(&call.bitsUsed, format);
    uint32_t pattern = OrvBayerPatternNone;
    OrvGetBayerPattern(&pattern, format);

    if (isColour) return kel::orv(kel::transformColour(call.run(), format));
    return kel::orv(pattern == OrvBayerPatternNone ? kel::transformMono(call) : kel::transformMosaic(call, pattern));
}
