// The camera pixel formats: one row per name.
#pragma once
#include <string_view>

#include "orvella/orv.h"
#include "support/integers.h"

namespace kel {

enum class Answer : u8 { no, yes, unknown }; // unknown: the query refuses the format

struct PixelFormat {
    std::string_view name; // behind "PixelFormat"
    OrvPixelFormatType code;
    u32 bitsUsed;
    OrvPixelLayout layout;
    OrvBayerPattern pattern;
    OrvColorSpace colorSpace;
    Answer hasBayerPattern, isColor;
};

// clang-format off
constexpr PixelFormat pixelFormats[] = {
    {"Mono8",               OrvPixelFormatMono8,               8,  OrvPixelLayoutMono,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono10",              OrvPixelFormatMono10,              10, OrvPixelLayoutMono,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono12",              OrvPixelFormatMono12,              12, OrvPixelLayoutMono,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono12Packed",        OrvPixelFormatMono12Packed,        12, OrvPixelLayoutMonoPacked, OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono10p",             OrvPixelFormatMono10p,             10, OrvPixelLayoutMonoP,      OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::unknown},
    {"Mono12p",             OrvPixelFormatMono12p,             12, OrvPixelLayoutMonoP,      OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono14",              OrvPixelFormatMono14,              14, OrvPixelLayoutMono,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"Mono16",              OrvPixelFormatMono16,              16, OrvPixelLayoutMono,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::no},
    {"BayerGR8",            OrvPixelFormatBayerGR8,            8,  OrvPixelLayoutRaw,        OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG8",            OrvPixelFormatBayerRG8,            8,  OrvPixelLayoutRaw,        OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB8",            OrvPixelFormatBayerGB8,            8,  OrvPixelLayoutRaw,        OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG8",            OrvPixelFormatBayerBG8,            8,  OrvPixelLayoutRaw,        OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR10",           OrvPixelFormatBayerGR10,           10, OrvPixelLayoutRaw,        OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG10",           OrvPixelFormatBayerRG10,           10, OrvPixelLayoutRaw,        OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB10",           OrvPixelFormatBayerGB10,           10, OrvPixelLayoutRaw,        OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG10",           OrvPixelFormatBayerBG10,           10, OrvPixelLayoutRaw,        OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR12",           OrvPixelFormatBayerGR12,           12, OrvPixelLayoutRaw,        OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG12",           OrvPixelFormatBayerRG12,           12, OrvPixelLayoutRaw,        OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB12",           OrvPixelFormatBayerGB12,           12, OrvPixelLayoutRaw,        OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG12",           OrvPixelFormatBayerBG12,           12, OrvPixelLayoutRaw,        OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR12Packed",     OrvPixelFormatBayerGR12Packed,     12, OrvPixelLayoutRawPacked,  OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG12Packed",     OrvPixelFormatBayerRG12Packed,     12, OrvPixelLayoutRawPacked,  OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB12Packed",     OrvPixelFormatBayerGB12Packed,     12, OrvPixelLayoutRawPacked,  OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG12Packed",     OrvPixelFormatBayerBG12Packed,     12, OrvPixelLayoutRawPacked,  OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR10p",          OrvPixelFormatBayerGR10p,          10, OrvPixelLayoutRawP,       OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG10p",          OrvPixelFormatBayerRG10p,          10, OrvPixelLayoutRawP,       OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB10p",          OrvPixelFormatBayerGB10p,          10, OrvPixelLayoutRawP,       OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG10p",          OrvPixelFormatBayerBG10p,          10, OrvPixelLayoutRawP,       OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR12p",          OrvPixelFormatBayerGR12p,          12, OrvPixelLayoutRawP,       OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG12p",          OrvPixelFormatBayerRG12p,          12, OrvPixelLayoutRawP,       OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB12p",          OrvPixelFormatBayerGB12p,          12, OrvPixelLayoutRawP,       OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG12p",          OrvPixelFormatBayerBG12p,          12, OrvPixelLayoutRawP,       OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGR16",           OrvPixelFormatBayerGR16,           16, OrvPixelLayoutRaw,        OrvBayerPatternGRBG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerRG16",           OrvPixelFormatBayerRG16,           16, OrvPixelLayoutRaw,        OrvBayerPatternRGGB, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerGB16",           OrvPixelFormatBayerGB16,           16, OrvPixelLayoutRaw,        OrvBayerPatternGBRG, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"BayerBG16",           OrvPixelFormatBayerBG16,           16, OrvPixelLayoutRaw,        OrvBayerPatternBGGR, OrvColorSpaceNone,   Answer::yes,     Answer::no},
    {"Rgb8",                OrvPixelFormatRgb8,                24, OrvPixelLayoutRgb,        OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Bgr8",                OrvPixelFormatBgr8,                24, OrvPixelLayoutBgr,        OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Argb8",               OrvPixelFormatArgb8,               32, OrvPixelLayoutRgba,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Rgba8",               OrvPixelFormatRgba8,               32, OrvPixelLayoutRgba,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Bgra8",               OrvPixelFormatBgra8,               32, OrvPixelLayoutBgra,       OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Rgb12",               OrvPixelFormatRgb12,               36, OrvPixelLayoutRgb,        OrvBayerPatternNone, OrvColorSpaceNone,   Answer::unknown, Answer::unknown},
    {"Rgb16",               OrvPixelFormatRgb16,               48, OrvPixelLayoutRgb,        OrvBayerPatternNone, OrvColorSpaceNone,   Answer::no,      Answer::yes},
    {"Yuv411",              OrvPixelFormatYuv411,              12, OrvPixelLayoutYuv411,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
    {"Yuv422",              OrvPixelFormatYuv422,              16, OrvPixelLayoutYuv422,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
    {"Yuv444",              OrvPixelFormatYuv444,              24, OrvPixelLayoutYuv444,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
    {"YCbCr411_8_CbYYCrYY", OrvPixelFormatYCbCr411_8_CbYYCrYY, 12, OrvPixelLayoutYuv411,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
    {"YCbCr422_8_CbYCrY",   OrvPixelFormatYCbCr422_8_CbYCrY,   16, OrvPixelLayoutYuv422,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
    {"YCbCr8_CbYCr",        OrvPixelFormatYCbCr8_CbYCr,        24, OrvPixelLayoutYuv444,     OrvBayerPatternNone, OrvColorSpaceRec601, Answer::no,      Answer::yes},
};
// clang-format on

// The row of a code; null if unknown.
constexpr const PixelFormat* findPixelFormat(OrvPixelFormatType code) {
    for (const PixelFormat& format : pixelFormats)
        if (format.code == code) return &format;
    return nullptr;
}

} // namespace kel
