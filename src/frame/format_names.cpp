// Images described by name. The names stand in constant tables, so nothing here allocates or has to be set up.
#include <string_view>

#include "frame/pixel_formats.h"
#include "orvella/orv.h"

namespace kel {

namespace {

struct OutputName {
    std::string_view name;
    OrvOutputCode output;
};
constexpr OutputName outputNames[] = {
    {"MONO8", OrvOutputMono8},   {"MONO8_REC601", OrvOutputMono8},   {"BGR8", OrvOutputBgr24},
    {"BGR24", OrvOutputBgr24},   {"BGRA32", OrvOutputBgra32},        {"RGB8", OrvOutputRgb24},
    {"RGB24", OrvOutputRgb24},   {"RGBA32", OrvOutputRgba32},        {"MONO8_REC709", OrvOutputMono8Rec709},
    {"UYVY", OrvOutputYuv422},   {"YUV422", OrvOutputYuv422},        {"YCBCR422", OrvOutputYuv422},
    {"MONO16", OrvOutputMono16}, {"MONO16_REC601", OrvOutputMono16}, {"MONO16_REC709", OrvOutputMono16Rec709},
    {"BGR48", OrvOutputBgr48},   {"RGB48", OrvOutputRgb48},
};

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr bool startsWith(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i)
        if (upper(text[i]) != upper(prefix[i])) return false;
    return true;
}
constexpr bool same(std::string_view a, std::string_view b) { return a.size() == b.size() && startsWith(a, b); }

} // namespace

} // namespace kel

OrvErrorType OrvSetImageInfoFromString(const char* name, uint32_t length, uint32_t width, uint32_t height,
                                       OrvImage* image) {
    if (!name || !image) return OrvErrorBadParameter;
    if (image->Size != sizeof(OrvImage)) return OrvErrorStructSize;

    std::string_view text = name;
    if (length > 3 && kel::startsWith(text, "Orv")) text.remove_prefix(3);

    for (const auto& [known, output] : kel::outputNames)
        if (kel::same(text, known)) return OrvSetImageInfoOutput(output, width, height, image);

    constexpr std::string_view prefix = "PixelFormat";
    if (!kel::startsWith(text, prefix)) return OrvErrorBadParameter;
    text.remove_prefix(prefix.size());
    for (const kel::PixelFormat& format : kel::pixelFormats())
        if (kel::same(text, format.name)) return OrvSetImageInfoFromPixelFormat(format.code, width, height, image);
    return OrvErrorBadParameter;
}
