#include "fitting.h"

#include <algorithm>
#include <vector>

#include "transform.h"

namespace tool {

namespace {

constexpr Size usual[] = {
    {320, 240},   {512, 512},   {640, 480},   {640, 512},   {659, 494},   {720, 540},   {728, 544},   {752, 480},
    {768, 512},   {768, 576},   {800, 600},   {808, 608},   {1024, 768},  {1024, 1024}, {1032, 776},  {1280, 720},
    {1280, 800},  {1280, 960},  {1280, 1024}, {1292, 964},  {1296, 966},  {1384, 1032}, {1440, 1080}, {1456, 1088},
    {1600, 1200}, {1624, 1232}, {1624, 1240}, {1920, 1080}, {1920, 1200}, {1936, 1216}, {1936, 1464}, {1944, 1472},
    {2040, 1080}, {2040, 2040}, {2048, 1024}, {2048, 1088}, {2048, 1536}, {2048, 2048}, {2064, 1544}, {2448, 2048},
    {2464, 2056}, {2592, 1944}, {2592, 2048}, {2840, 2840}, {3088, 2064}, {3088, 2076}, {3840, 2160}, {3840, 2748},
    {4000, 3000}, {4024, 3036}, {4096, 2160}, {4096, 3000}, {4112, 2176}, {4112, 3008}, {4504, 4504}, {5120, 5120},
    {5320, 3032}, {5320, 4600}, {5328, 3040}, {5328, 4608}, {5472, 3648}, {5496, 3672}, {6576, 4384}, {8192, 5460},
};

// One name for all that have the same bits for a pixel.
struct Storage {
    const char* formats;
    const char* example;
};
constexpr Storage storages[] = {
    {"8-bit grey or mosaics", "Mono8"},        {"10p", "Mono10p"},
    {"12p or 12Packed, YUV 4:1:1", "Mono12p"}, {"10 to 16 bits in words, YUV 4:2:2", "Mono16"},
    {"RGB8, BGR8 or YUV 4:4:4", "Rgb8"},       {"RGBA8 or BGRA8", "Rgba8"},
};

} // namespace

std::span<const Size> usualSizes() { return usual; }

std::string fitting(const FrameFormat& expected, std::uint64_t expectedBytes, std::uint64_t fileBytes) {
    std::vector<std::string> fits;
    if (expectedBytes > 0 && fileBytes > expectedBytes && fileBytes % expectedBytes == 0)
        fits.push_back(std::to_string(fileBytes / expectedBytes) + " such frames (--frame all)");
    for (const Storage& storage : storages) {
        FrameFormat frame{*findPixelFormat(storage.example), expected.size};
        if (byteCount(frame) == fileBytes) fits.push_back(std::string(storage.formats) + " at " + text(expected.size));
    }
    const auto addSize = [&](Size size) {
        FrameFormat frame = expected;
        frame.size = size;
        const bool known = std::find(fits.begin(), fits.end(), text(frame)) != fits.end();
        if (fits.size() < 6 && !known && byteCount(frame) == fileBytes) fits.push_back(text(frame));
    };
    for (const Size& size : usual) addSize(size);
    const auto [width, height] = expected.size;
    const std::uint64_t pixels = expectedBytes == 0 ? 0 : fileBytes * expected.size.pixels() / expectedBytes;
    if (pixels > 0 && pixels % width == 0) addSize({width, static_cast<std::uint32_t>(pixels / width)});
    if (pixels > 0 && pixels % height == 0) addSize({static_cast<std::uint32_t>(pixels / height), height});
    if (fits.empty() && fileBytes > expectedBytes && fileBytes - expectedBytes <= 65536)
        fits.push_back("a header of " + std::to_string(fileBytes - expectedBytes) + " bytes (--skip)");
    std::string list;
    for (const std::string& fit : fits) list.append(list.empty() ? "; that fits " : ", ").append(fit);
    return list;
}

} // namespace tool
