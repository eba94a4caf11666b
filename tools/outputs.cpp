#include "outputs.h"

#include <vector>

#include "errors.h"
#include "frames/names.h"

namespace tool {

namespace {

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

} // namespace

Shape shapeOf(const Output& output) {
    switch (output.code) {
    case OrvOutputMono8:
    case OrvOutputMono8Rec709: return {1, 8};
    case OrvOutputMono16:
    case OrvOutputMono16Rec709: return {1, 16};
    case OrvOutputBgr24:
    case OrvOutputRgb24: return {3, 8};
    case OrvOutputBgr48:
    case OrvOutputRgb48: return {3, 16};
    case OrvOutputBgra32:
    case OrvOutputRgba32: return {4, 8};
    default: return {0, 8};
    }
}

std::span<const Output> outputs() { return std::span(outputTable).first(std::size(outputTable) - planeOutputCount); }
std::span<const Output> planeOutputs() { return std::span(outputTable).last(planeOutputCount); }

const Output& outputNamed(std::string_view name) {
    std::vector<std::string_view> known;
    for (const Output& output : outputTable) {
        for (const auto candidate : output.names) {
            if (candidate.empty()) continue;
            if (sameName(candidate, name)) return output;
            known.push_back(candidate);
        }
    }
    throw UsageError("unknown output '" + std::string(name) + "'; " + suggestion(name, known) +
                     "'orvella formats' lists them all");
}

} // namespace tool
