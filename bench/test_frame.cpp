#include "bench/test_frame.h"

#include <algorithm>

#include "frames/names.h"
#include "frames/pack.h"

namespace bench {

namespace {

// Red rises from left to right, blue falls, green rises from top to bottom.
frames::Chart scene(Size size) {
    frames::Chart chart{{size.width, size.height}, {}};
    const auto ramp = [](std::uint32_t position, std::uint32_t length) {
        return static_cast<std::uint16_t>(10000 + std::uint64_t{45000} * position / length);
    };
    for (std::uint32_t y = 0; y < size.height; ++y)
        for (std::uint32_t x = 0; x < size.width; ++x)
            chart.pixels.push_back({ramp(x, size.width), ramp(y, size.height), ramp(size.width - x, size.width)});
    return chart;
}

// "YUV 4:2:2" is Yuv422, and mosaics begin with red: "Bayer12p" is BayerRG12p. Null where it is no camera's format.
const frames::PixelFormat* formatOf(std::string source) {
    std::erase_if(source, [](char c) { return c == ' ' || c == ':'; });
    if (source.starts_with("Bayer")) source.insert(5, "RG");
    if (frames::sameName(source, frames::cygm8().name)) return &frames::cygm8();
    const auto found = std::ranges::find_if(frames::pixelFormats(), [&](const frames::PixelFormat& format) {
        return frames::sameName(format.name, source);
    });
    return found == frames::pixelFormats().end() ? nullptr : &*found;
}

// Pixels of any kind, whose bytes rise from left to right.
std::vector<std::uint8_t> ramps(const catalogue::Conversion& conversion, Size size) {
    std::vector<std::uint8_t> bytes(conversion.sourceSize(size.width, size.height));
    const std::size_t pitch = conversion.sourceSize(size.width, 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i % pitch * 200 / pitch);
    return bytes;
}

} // namespace

std::vector<std::uint8_t> testFrame(const catalogue::Conversion& conversion, Size size) {
    constexpr std::string_view bigEndian = " big-endian";
    std::string name = conversion.source;
    const bool swapped = name.ends_with(bigEndian);
    if (swapped) name.resize(name.size() - bigEndian.size());

    const frames::PixelFormat* format = formatOf(name);
    std::vector<std::uint8_t> frame =
        format ? frames::pack(scene(size), {*format, {size.width, size.height}, false, swapped})
               : ramps(conversion, size);
    frame.resize(frame.size() + conversion.beyond);
    return frame;
}

} // namespace bench
