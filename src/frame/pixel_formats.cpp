#include "frame/pixel_formats.h"

namespace kel {

namespace {

constexpr PixelFormat mono(std::string_view name, OrvPixelFormatType code, u32 bitsUsed, OrvPixelLayout layout,
                           Answer isColor = Answer::no) {
    return {name, code, bitsUsed, layout, OrvBayerPatternNone, OrvColorSpaceNone, Answer::no, isColor};
}
constexpr PixelFormat mosaic(std::string_view name, OrvPixelFormatType code, u32 bitsUsed, OrvPixelLayout layout,
                             OrvBayerPattern pattern) {
    return {name, code, bitsUsed, layout, pattern, OrvColorSpaceNone, Answer::yes, Answer::no};
}
constexpr PixelFormat rgb(std::string_view name, OrvPixelFormatType code, u32 bitsUsed, OrvPixelLayout layout,
                          Answer hasBayerPattern = Answer::no, Answer isColor = Answer::yes) {
    return {name, code, bitsUsed, layout, OrvBayerPatternNone, OrvColorSpaceNone, hasBayerPattern, isColor};
}
constexpr PixelFormat yuv(std::string_view name, OrvPixelFormatType code, u32 bitsUsed, OrvPixelLayout layout) {
    return {name, code, bitsUsed, layout, OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no, Answer::yes};
}

// OrvIsColor does not know Mono10p, and neither it nor OrvHasBayerPattern knows Rgb12: callers rely on it.
constexpr PixelFormat table[] = {
    mono("Mono8", OrvPixelFormatMono8, 8, OrvPixelLayoutMono),
    mono("Mono10", OrvPixelFormatMono10, 10, OrvPixelLayoutMono),
    mono("Mono12", OrvPixelFormatMono12, 12, OrvPixelLayoutMono),
    mono("Mono12Packed", OrvPixelFormatMono12Packed, 12, OrvPixelLayoutMonoPacked),
    mono("Mono10p", OrvPixelFormatMono10p, 10, OrvPixelLayoutMonoP, Answer::unknown),
    mono("Mono12p", OrvPixelFormatMono12p, 12, OrvPixelLayoutMonoP),
    mono("Mono14", OrvPixelFormatMono14, 14, OrvPixelLayoutMono),
    mono("Mono16", OrvPixelFormatMono16, 16, OrvPixelLayoutMono),
    mosaic("BayerGR8", OrvPixelFormatBayerGR8, 8, OrvPixelLayoutRaw, OrvBayerPatternGRBG),
    mosaic("BayerRG8", OrvPixelFormatBayerRG8, 8, OrvPixelLayoutRaw, OrvBayerPatternRGGB),
    mosaic("BayerGB8", OrvPixelFormatBayerGB8, 8, OrvPixelLayoutRaw, OrvBayerPatternGBRG),
    mosaic("BayerBG8", OrvPixelFormatBayerBG8, 8, OrvPixelLayoutRaw, OrvBayerPatternBGGR),
    mosaic("BayerGR10", OrvPixelFormatBayerGR10, 10, OrvPixelLayoutRaw, OrvBayerPatternGRBG),
    mosaic("BayerRG10", OrvPixelFormatBayerRG10, 10, OrvPixelLayoutRaw, OrvBayerPatternRGGB),
    mosaic("BayerGB10", OrvPixelFormatBayerGB10, 10, OrvPixelLayoutRaw, OrvBayerPatternGBRG),
    mosaic("BayerBG10", OrvPixelFormatBayerBG10, 10, OrvPixelLayoutRaw, OrvBayerPatternBGGR),
    mosaic("BayerGR12", OrvPixelFormatBayerGR12, 12, OrvPixelLayoutRaw, OrvBayerPatternGRBG),
    mosaic("BayerRG12", OrvPixelFormatBayerRG12, 12, OrvPixelLayoutRaw, OrvBayerPatternRGGB),
    mosaic("BayerGB12", OrvPixelFormatBayerGB12, 12, OrvPixelLayoutRaw, OrvBayerPatternGBRG),
    mosaic("BayerBG12", OrvPixelFormatBayerBG12, 12, OrvPixelLayoutRaw, OrvBayerPatternBGGR),
    mosaic("BayerGR12Packed", OrvPixelFormatBayerGR12Packed, 12, OrvPixelLayoutRawPacked, OrvBayerPatternGRBG),
    mosaic("BayerRG12Packed", OrvPixelFormatBayerRG12Packed, 12, OrvPixelLayoutRawPacked, OrvBayerPatternRGGB),
    mosaic("BayerGB12Packed", OrvPixelFormatBayerGB12Packed, 12, OrvPixelLayoutRawPacked, OrvBayerPatternGBRG),
    mosaic("BayerBG12Packed", OrvPixelFormatBayerBG12Packed, 12, OrvPixelLayoutRawPacked, OrvBayerPatternBGGR),
    mosaic("BayerGR10p", OrvPixelFormatBayerGR10p, 10, OrvPixelLayoutRawP, OrvBayerPatternGRBG),
    mosaic("BayerRG10p", OrvPixelFormatBayerRG10p, 10, OrvPixelLayoutRawP, OrvBayerPatternRGGB),
    mosaic("BayerGB10p", OrvPixelFormatBayerGB10p, 10, OrvPixelLayoutRawP, OrvBayerPatternGBRG),
    mosaic("BayerBG10p", OrvPixelFormatBayerBG10p, 10, OrvPixelLayoutRawP, OrvBayerPatternBGGR),
    mosaic("BayerGR12p", OrvPixelFormatBayerGR12p, 12, OrvPixelLayoutRawP, OrvBayerPatternGRBG),
    mosaic("BayerRG12p", OrvPixelFormatBayerRG12p, 12, OrvPixelLayoutRawP, OrvBayerPatternRGGB),
    mosaic("BayerGB12p", OrvPixelFormatBayerGB12p, 12, OrvPixelLayoutRawP, OrvBayerPatternGBRG),
    mosaic("BayerBG12p", OrvPixelFormatBayerBG12p, 12, OrvPixelLayoutRawP, OrvBayerPatternBGGR),
    mosaic("BayerGR16", OrvPixelFormatBayerGR16, 16, OrvPixelLayoutRaw, OrvBayerPatternGRBG),
    mosaic("BayerRG16", OrvPixelFormatBayerRG16, 16, OrvPixelLayoutRaw, OrvBayerPatternRGGB),
    mosaic("BayerGB16", OrvPixelFormatBayerGB16, 16, OrvPixelLayoutRaw, OrvBayerPatternGBRG),
    mosaic("BayerBG16", OrvPixelFormatBayerBG16, 16, OrvPixelLayoutRaw, OrvBayerPatternBGGR),
    rgb("Rgb8", OrvPixelFormatRgb8, 24, OrvPixelLayoutRgb),
    rgb("Bgr8", OrvPixelFormatBgr8, 24, OrvPixelLayoutBgr),
    rgb("Argb8", OrvPixelFormatArgb8, 32, OrvPixelLayoutRgba),
    rgb("Rgba8", OrvPixelFormatRgba8, 32, OrvPixelLayoutRgba),
    rgb("Bgra8", OrvPixelFormatBgra8, 32, OrvPixelLayoutBgra),
    rgb("Rgb12", OrvPixelFormatRgb12, 36, OrvPixelLayoutRgb, Answer::unknown, Answer::unknown),
    rgb("Rgb16", OrvPixelFormatRgb16, 48, OrvPixelLayoutRgb),
    yuv("Yuv411", OrvPixelFormatYuv411, 12, OrvPixelLayoutYuv411),
    yuv("Yuv422", OrvPixelFormatYuv422, 16, OrvPixelLayoutYuv422),
    yuv("Yuv444", OrvPixelFormatYuv444, 24, OrvPixelLayoutYuv444),
    yuv("YCbCr411_8_CbYYCrYY", OrvPixelFormatYCbCr411_8_CbYYCrYY, 12, OrvPixelLayoutYuv411),
    yuv("YCbCr422_8_CbYCrY", OrvPixelFormatYCbCr422_8_CbYCrY, 16, OrvPixelLayoutYuv422),
    yuv("YCbCr8_CbYCr", OrvPixelFormatYCbCr8_CbYCr, 24, OrvPixelLayoutYuv444),
};

// Storage bits from the byte of effective bits in a PFNC code; 0 for a byte that no format has.
constexpr u32 storageBits(OrvPixelFormatType code) {
    const u32 bits = code >> 16 & 0xFF;
    switch (bits) {
    case 8:
    case 10:
    case 12:
    case 14:
    case 16:
    case 24:
    case 32:
    case 48: return bits;
    default: return 0;
    }
}

OrvErrorType answer(uint8_t* out, OrvPixelFormatType code, Answer PixelFormat::*column) {
    const PixelFormat* format = findPixelFormat(code);
    if (!out || !format || format->*column == Answer::unknown) return OrvErrorBadParameter;
    *out = format->*column == Answer::yes;
    return OrvErrorSuccess;
}

OrvErrorType answer(uint32_t* out, OrvPixelFormatType code, u32 PixelFormat::*column) {
    const PixelFormat* format = findPixelFormat(code);
    if (!out || !format) return OrvErrorBadParameter;
    *out = format->*column;
    return OrvErrorSuccess;
}

} // namespace

std::span<const PixelFormat> pixelFormats() { return table; }

const PixelFormat* findPixelFormat(OrvPixelFormatType code) {
    for (const PixelFormat& row : table)
        if (row.code == code) return &row;
    return nullptr;
}

} // namespace kel

using kel::PixelFormat;

OrvErrorType OrvBitsPerPixel(uint32_t* bits, OrvPixelFormatType format) {
    const kel::u32 found = kel::storageBits(format);
    if (!bits || found == 0) return OrvErrorBadParameter;
    *bits = found;
    return OrvErrorSuccess;
}

OrvErrorType OrvBitsPerPixelUsed(uint32_t* bits, OrvPixelFormatType format) {
    return kel::answer(bits, format, &PixelFormat::bitsUsed);
}

OrvErrorType OrvGetBayerPattern(OrvBayerPattern* pattern, OrvPixelFormatType format) {
    return kel::answer(pattern, format, &PixelFormat::pattern);
}

OrvErrorType OrvHasBayerPattern(uint8_t* has, OrvPixelFormatType format) {
    return kel::answer(has, format, &PixelFormat::hasBayerPattern);
}

OrvErrorType OrvIsColor(uint8_t* is, OrvPixelFormatType format) {
    return kel::answer(is, format, &PixelFormat::isColor);
}

OrvErrorType OrvGetPixelLayout(OrvPixelLayout* layout, OrvPixelFormatType format) {
    const PixelFormat* row = kel::findPixelFormat(format);
    if (!row) return OrvErrorBadParameter;
    *layout = row->layout;
    return OrvErrorSuccess;
}

OrvErrorType OrvGetColorSpace(OrvColorSpace* space, OrvPixelFormatType format) {
    const PixelFormat* row = kel::findPixelFormat(format);
    *space = row ? row->colorSpace : OrvColorSpace{OrvColorSpaceNone};
    return OrvErrorSuccess;
}
