#include "frames/pixel_formats.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "frames/names.h"

namespace frames {

namespace {

struct Name {
    std::string_view name;
    OrvPixelFormatType code;
};

constexpr Name names[] = {
    {"Mono8", OrvPixelFormatMono8},
    {"Mono10", OrvPixelFormatMono10},
    {"Mono12", OrvPixelFormatMono12},
    {"Mono14", OrvPixelFormatMono14},
    {"Mono16", OrvPixelFormatMono16},
    {"Mono12Packed", OrvPixelFormatMono12Packed},
    {"Mono10p", OrvPixelFormatMono10p},
    {"Mono12p", OrvPixelFormatMono12p},
    {"BayerRG8", OrvPixelFormatBayerRG8},
    {"BayerGR8", OrvPixelFormatBayerGR8},
    {"BayerGB8", OrvPixelFormatBayerGB8},
    {"BayerBG8", OrvPixelFormatBayerBG8},
    {"BayerRG10", OrvPixelFormatBayerRG10},
    {"BayerGR10", OrvPixelFormatBayerGR10},
    {"BayerGB10", OrvPixelFormatBayerGB10},
    {"BayerBG10", OrvPixelFormatBayerBG10},
    {"BayerRG12", OrvPixelFormatBayerRG12},
    {"BayerGR12", OrvPixelFormatBayerGR12},
    {"BayerGB12", OrvPixelFormatBayerGB12},
    {"BayerBG12", OrvPixelFormatBayerBG12},
    {"BayerRG16", OrvPixelFormatBayerRG16},
    {"BayerGR16", OrvPixelFormatBayerGR16},
    {"BayerGB16", OrvPixelFormatBayerGB16},
    {"BayerBG16", OrvPixelFormatBayerBG16},
    {"BayerRG12Packed", OrvPixelFormatBayerRG12Packed},
    {"BayerGR12Packed", OrvPixelFormatBayerGR12Packed},
    {"BayerGB12Packed", OrvPixelFormatBayerGB12Packed},
    {"BayerBG12Packed", OrvPixelFormatBayerBG12Packed},
    {"BayerRG10p", OrvPixelFormatBayerRG10p},
    {"BayerGR10p", OrvPixelFormatBayerGR10p},
    {"BayerGB10p", OrvPixelFormatBayerGB10p},
    {"BayerBG10p", OrvPixelFormatBayerBG10p},
    {"BayerRG12p", OrvPixelFormatBayerRG12p},
    {"BayerGR12p", OrvPixelFormatBayerGR12p},
    {"BayerGB12p", OrvPixelFormatBayerGB12p},
    {"BayerBG12p", OrvPixelFormatBayerBG12p},
    {"Rgb8", OrvPixelFormatRgb8},
    {"Bgr8", OrvPixelFormatBgr8},
    {"Rgba8", OrvPixelFormatRgba8},
    {"Argb8", OrvPixelFormatArgb8},
    {"Bgra8", OrvPixelFormatBgra8},
    {"Rgb12", OrvPixelFormatRgb12},
    {"Rgb16", OrvPixelFormatRgb16},
    {"Yuv411", OrvPixelFormatYuv411},
    {"Yuv422", OrvPixelFormatYuv422},
    {"Yuv444", OrvPixelFormatYuv444},
    {"YCbCr411_8_CbYYCrYY", OrvPixelFormatYCbCr411_8_CbYYCrYY},
    {"YCbCr422_8_CbYCrY", OrvPixelFormatYCbCr422_8_CbYCrY},
    {"YCbCr8_CbYCr", OrvPixelFormatYCbCr8_CbYCr},
};

// What PFNC, GigE Vision, raw files of the converter and V4L2 call the same bytes.
constexpr Name otherNames[] = {
    {"RGB8Packed", OrvPixelFormatRgb8},      {"BGR8Packed", OrvPixelFormatBgr8},
    {"RGBA8Packed", OrvPixelFormatRgba8},    {"BGRA8Packed", OrvPixelFormatBgra8},
    {"RGB12Packed", OrvPixelFormatRgb12},    {"RGB16Packed", OrvPixelFormatRgb16},
    {"YUV411Packed", OrvPixelFormatYuv411},  {"YUV422Packed", OrvPixelFormatYuv422},
    {"YUV444Packed", OrvPixelFormatYuv444},  {"YUV411_8_UYYVYY", OrvPixelFormatYuv411},
    {"YUV422_8_UYVY", OrvPixelFormatYuv422}, {"YUV8_UYV", OrvPixelFormatYuv444},
    {"IYU1", OrvPixelFormatYuv411},          {"UYVY", OrvPixelFormatYuv422},
    {"IYU2", OrvPixelFormatYuv444},          {"GREY", OrvPixelFormatMono8},
    {"RGGB", OrvPixelFormatBayerRG8},        {"GRBG", OrvPixelFormatBayerGR8},
    {"GBRG", OrvPixelFormatBayerGB8},        {"BGGR", OrvPixelFormatBayerBG8},
    {"RGB24", OrvPixelFormatRgb8},           {"BGR24", OrvPixelFormatBgr8},
    {"RGBA32", OrvPixelFormatRgba8},         {"BGRA32", OrvPixelFormatBgra8},
};

constexpr PixelFormat cygmFormat{"Cygm8", 0, Samples::cygm, 8, Packing::bytes};

OrvPixelInfo infoOf(OrvPixelFormatType code) {
    OrvImage image{};
    image.Size = sizeof image;
    OrvSetImageInfoFromPixelFormat(code, 4, 4, &image);
    return image.ImageInfo.PixelInfo;
}

Samples mosaicOf(OrvBayerPattern pattern) {
    switch (pattern) {
    case OrvBayerPatternGRBG: return Samples::grbg;
    case OrvBayerPatternGBRG: return Samples::gbrg;
    case OrvBayerPatternBGGR: return Samples::bggr;
    default: return Samples::rggb;
    }
}

Samples samplesOf(const OrvPixelInfo& info) {
    switch (info.PixelLayout) {
    case OrvPixelLayoutMono:
    case OrvPixelLayoutMonoPacked:
    case OrvPixelLayoutMonoP: return Samples::grey;
    case OrvPixelLayoutRgb: return Samples::rgb;
    case OrvPixelLayoutBgr: return Samples::bgr;
    case OrvPixelLayoutRgba: return Samples::rgba;
    case OrvPixelLayoutBgra: return Samples::bgra;
    case OrvPixelLayoutYuv411: return Samples::yuv411;
    case OrvPixelLayoutYuv422: return Samples::yuv422;
    case OrvPixelLayoutYuv444: return Samples::yuv444;
    default: return mosaicOf(info.BayerPattern);
    }
}

PixelFormat describe(const Name& name) {
    const OrvPixelInfo info = infoOf(name.code);
    const Samples samples = samplesOf(info);
    switch (info.PixelLayout) {
    case OrvPixelLayoutMonoPacked:
    case OrvPixelLayoutRawPacked: return {name.name, name.code, samples, info.BitsUsed, Packing::packed12};
    case OrvPixelLayoutMonoP:
    case OrvPixelLayoutRawP: return {name.name, name.code, samples, info.BitsUsed, Packing::bitStream};
    case OrvPixelLayoutMono:
    case OrvPixelLayoutRaw:
        return {name.name, name.code, samples, info.BitsUsed, info.BitsUsed > 8 ? Packing::words : Packing::bytes};
    case OrvPixelLayoutRgb:
        return {name.name, name.code, samples, info.BitsUsed / 3, info.BitsUsed > 24 ? Packing::words : Packing::bytes};
    default: return {name.name, name.code, samples, 8, Packing::bytes};
    }
}

std::string_view withoutPrefix(std::string_view name, std::string_view prefix) {
    return name.size() > prefix.size() && sameName(name.substr(0, prefix.size()), prefix) ? name.substr(prefix.size())
                                                                                          : name;
}
std::string_view withoutPrefixes(std::string_view name) {
    return withoutPrefix(withoutPrefix(name, "Orv"), "PixelFormat");
}

// "0x01080009", or the same in decimal digits.
const PixelFormat* findCode(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    OrvPixelFormatType code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code, hexadecimal ? 16 : 10);
    return error == std::errc{} && end == text.data() + text.size() ? pixelFormatWithCode(code) : nullptr;
}

const PixelFormat* findName(std::string_view name) {
    for (const PixelFormat& format : pixelFormats())
        if (sameName(format.name, name)) return &format;
    for (const Name& other : otherNames)
        if (sameName(other.name, name)) return pixelFormatWithCode(other.code);
    return sameName(name, cygmFormat.name) ? &cygmFormat : nullptr;
}

// "BayerRG14": the format of 16 bits, of which fewer are used.
std::optional<PixelFormat> findDepth(std::string_view name) {
    const std::size_t digits = std::min(name.find_last_not_of("0123456789") + 1, name.size());
    unsigned bits = 0;
    std::from_chars(name.data() + digits, name.data() + name.size(), bits);
    const PixelFormat* const whole = findName(std::string(name.substr(0, digits)) + "16");
    if (!whole || bits < 9 || bits > 16 || (whole->samples > Samples::bggr && !isDeepColour(*whole))) return {};
    PixelFormat format = *whole;
    format.bits = bits;
    return format;
}

} // namespace

std::span<const PixelFormat> pixelFormats() {
    static const std::vector<PixelFormat> formats = [] {
        std::vector<PixelFormat> list;
        for (const Name& name : names) list.push_back(describe(name));
        return list;
    }();
    return formats;
}

const PixelFormat& cygm8() { return cygmFormat; }

const PixelFormat* pixelFormatWithCode(OrvPixelFormatType code) {
    for (const PixelFormat& format : pixelFormats())
        if (format.code == code) return &format;
    return nullptr;
}

std::optional<PixelFormat> findPixelFormat(std::string_view name) {
    const std::string_view plain = withoutPrefixes(name);
    if (const PixelFormat* const format = findName(plain)) return *format;
    if (const PixelFormat* const format = findCode(plain)) return *format;
    return findDepth(plain);
}

std::string hintFor(std::string_view name) {
    const std::string_view plain = withoutPrefixes(name);
    const auto begins = [&](std::string_view with) { return sameName(plain.substr(0, with.size()), with); };
    // Similar names of these have another byte order.
    if (begins("YU") || begins("YCbCr")) {
        return "known by the order of their bytes are Yuv411 (U Y Y V Y Y), Yuv422 (U Y V Y), Yuv444 (U Y V) and their "
               "YCbCr names; ";
    }
    if (plain.size() > 8 && sameName(plain.substr(plain.size() - 8), "10Packed"))
        return "10Packed is neither 10p nor 12Packed, and is not converted; ";
    std::vector<std::string_view> known;
    for (const PixelFormat& format : pixelFormats())
        if (format.samples < Samples::yuv411) known.push_back(format.name);
    return suggestion(plain, known);
}

} // namespace frames
