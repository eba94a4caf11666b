#include "pixel_formats.h"

#include <algorithm>
#include <vector>

#include "errors.h"
#include "names.h"

namespace tool {

namespace {

using enum Samples;
using enum Packing;

constexpr PixelFormat formatTable[] = {
    {"Mono8", OrvPixelFormatMono8, grey, 8, bytes},
    {"Mono10", OrvPixelFormatMono10, grey, 10, words},
    {"Mono12", OrvPixelFormatMono12, grey, 12, words},
    {"Mono14", OrvPixelFormatMono14, grey, 14, words},
    {"Mono16", OrvPixelFormatMono16, grey, 16, words},
    {"Mono12Packed", OrvPixelFormatMono12Packed, grey, 12, packed12},
    {"Mono10p", OrvPixelFormatMono10p, grey, 10, bitStream},
    {"Mono12p", OrvPixelFormatMono12p, grey, 12, bitStream},
    {"BayerRG8", OrvPixelFormatBayerRG8, rggb, 8, bytes},
    {"BayerGR8", OrvPixelFormatBayerGR8, grbg, 8, bytes},
    {"BayerGB8", OrvPixelFormatBayerGB8, gbrg, 8, bytes},
    {"BayerBG8", OrvPixelFormatBayerBG8, bggr, 8, bytes},
    {"BayerRG10", OrvPixelFormatBayerRG10, rggb, 10, words},
    {"BayerGR10", OrvPixelFormatBayerGR10, grbg, 10, words},
    {"BayerGB10", OrvPixelFormatBayerGB10, gbrg, 10, words},
    {"BayerBG10", OrvPixelFormatBayerBG10, bggr, 10, words},
    {"BayerRG12", OrvPixelFormatBayerRG12, rggb, 12, words},
    {"BayerGR12", OrvPixelFormatBayerGR12, grbg, 12, words},
    {"BayerGB12", OrvPixelFormatBayerGB12, gbrg, 12, words},
    {"BayerBG12", OrvPixelFormatBayerBG12, bggr, 12, words},
    {"BayerRG16", OrvPixelFormatBayerRG16, rggb, 16, words},
    {"BayerGR16", OrvPixelFormatBayerGR16, grbg, 16, words},
    {"BayerGB16", OrvPixelFormatBayerGB16, gbrg, 16, words},
    {"BayerBG16", OrvPixelFormatBayerBG16, bggr, 16, words},
    {"BayerRG12Packed", OrvPixelFormatBayerRG12Packed, rggb, 12, packed12},
    {"BayerGR12Packed", OrvPixelFormatBayerGR12Packed, grbg, 12, packed12},
    {"BayerGB12Packed", OrvPixelFormatBayerGB12Packed, gbrg, 12, packed12},
    {"BayerBG12Packed", OrvPixelFormatBayerBG12Packed, bggr, 12, packed12},
    {"BayerRG10p", OrvPixelFormatBayerRG10p, rggb, 10, bitStream},
    {"BayerGR10p", OrvPixelFormatBayerGR10p, grbg, 10, bitStream},
    {"BayerGB10p", OrvPixelFormatBayerGB10p, gbrg, 10, bitStream},
    {"BayerBG10p", OrvPixelFormatBayerBG10p, bggr, 10, bitStream},
    {"BayerRG12p", OrvPixelFormatBayerRG12p, rggb, 12, bitStream},
    {"BayerGR12p", OrvPixelFormatBayerGR12p, grbg, 12, bitStream},
    {"BayerGB12p", OrvPixelFormatBayerGB12p, gbrg, 12, bitStream},
    {"BayerBG12p", OrvPixelFormatBayerBG12p, bggr, 12, bitStream},
    {"Rgb8", OrvPixelFormatRgb8, rgb, 8, bytes},
    {"Bgr8", OrvPixelFormatBgr8, bgr, 8, bytes},
    {"Rgba8", OrvPixelFormatRgba8, rgba, 8, bytes},
    {"Argb8", OrvPixelFormatArgb8, rgba, 8, bytes},
    {"Bgra8", OrvPixelFormatBgra8, bgra, 8, bytes},
    {"Rgb12", OrvPixelFormatRgb12, rgb, 12, words},
    {"Rgb16", OrvPixelFormatRgb16, rgb, 16, words},
    {"Yuv411", OrvPixelFormatYuv411, yuv411, 8, bytes},
    {"Yuv422", OrvPixelFormatYuv422, yuv422, 8, bytes},
    {"Yuv444", OrvPixelFormatYuv444, yuv444, 8, bytes},
    {"YCbCr411_8_CbYYCrYY", OrvPixelFormatYCbCr411_8_CbYYCrYY, yuv411, 8, bytes},
    {"YCbCr422_8_CbYCrY", OrvPixelFormatYCbCr422_8_CbYCrY, yuv422, 8, bytes},
    {"YCbCr8_CbYCr", OrvPixelFormatYCbCr8_CbYCr, yuv444, 8, bytes},
    {"Cygm8", 0, cygm, 8, bytes}, // the only one without a PFNC code
};

constexpr Output outputTable[] = {
    {{"Mono8", "Mono8_Rec601"}, OrvOutputMono8, "grey, 8 bits, luma weights of ITU-R BT.601"},
    {{"BGR24", "BGR8"}, OrvOutputBgr24, "blue, green, red, 8 bits each"},
    {{"BGRA32"}, OrvOutputBgra32, "blue, green, red, alpha, 8 bits each"},
    {{"RGB24", "RGB8"}, OrvOutputRgb24, "red, green, blue, 8 bits each"},
    {{"RGBA32"}, OrvOutputRgba32, "red, green, blue, alpha, 8 bits each"},
    {{"Mono8_Rec709"}, OrvOutputMono8Rec709, "grey, 8 bits, luma weights of ITU-R BT.709"},
    {{"YUV422", "UYVY", "YCbCr422"}, OrvOutputYuv422, "U Y V Y for two pixels, 8 bits each (raw files only)"},
    {{"Mono16", "Mono16_Rec601"}, OrvOutputMono16, "grey, 16 bits, luma weights of ITU-R BT.601"},
    {{"Mono16_Rec709"}, OrvOutputMono16Rec709, "grey, 16 bits, luma weights of ITU-R BT.709"},
    {{"BGR48"}, OrvOutputBgr48, "blue, green, red, 16 bits each"},
    {{"RGB48"}, OrvOutputRgb48, "red, green, blue, 16 bits each"},
    {{"planes"}, OrvOutputMono8, "red, green and blue as grey pictures: NAME.r.png, NAME.g.png, NAME.b.png", "rgb"},
    {{"planes-y"}, OrvOutputMono8, "the same and luma: NAME.y.png", "rgby"},
};
constexpr std::size_t planeOutputCount = 2; // at the end

std::string_view withoutPrefix(std::string_view name, std::string_view prefix) {
    return name.size() > prefix.size() && sameName(name.substr(0, prefix.size()), prefix) ? name.substr(prefix.size())
                                                                                          : name;
}

} // namespace

std::span<const PixelFormat> pixelFormats() { return std::span(formatTable).first(std::size(formatTable) - 1); }
const PixelFormat& cygm8() { return formatTable[std::size(formatTable) - 1]; }
std::span<const Output> outputs() { return std::span(outputTable).first(std::size(outputTable) - planeOutputCount); }
std::span<const Output> planeOutputs() { return std::span(outputTable).last(planeOutputCount); }

const PixelFormat& pixelFormatNamed(std::string_view name) {
    const auto wanted = withoutPrefix(withoutPrefix(name, "Orv"), "PixelFormat");
    std::vector<std::string_view> known;
    for (const PixelFormat& format : formatTable) {
        if (sameName(format.name, wanted)) return format;
        known.push_back(format.name);
    }
    throw Error("unknown pixel format '" + std::string(name) + "'; " + suggestion(wanted, known) +
                "'orvella formats' lists them all");
}

const Output& outputNamed(std::string_view name) {
    std::vector<std::string_view> known;
    for (const Output& output : outputTable) {
        for (const auto candidate : output.names) {
            if (!candidate.empty() && sameName(candidate, name)) return output;
            known.push_back(candidate);
        }
    }
    std::erase(known, "");
    throw Error("unknown output '" + std::string(name) + "'; " + suggestion(name, known) +
                "'orvella formats' lists them all");
}

const PixelFormat* pixelFormatWithCode(OrvPixelFormatType code) {
    const auto found = std::ranges::find(pixelFormats(), code, &PixelFormat::code);
    return found == pixelFormats().end() ? nullptr : &*found;
}

} // namespace tool
