// A colour chart: patches, a grey ramp and fine lines, of any size.
#pragma once
#include <cstdint>
#include <vector>

#include "frames/frame.h"

namespace frames {

struct Rgb16 {
    std::uint16_t red = 0, green = 0, blue = 0;
};

struct Chart {
    Size size;
    std::vector<Rgb16> pixels; // row by row

    const Rgb16& at(std::uint32_t x, std::uint32_t y) const { return pixels[std::size_t{y} * size.width + x]; }
};

Chart makeChart(Size size);

// (77 R + 150 G + 29 B) >> 8, what a grey camera sees of the chart.
std::uint16_t luma(const Rgb16& pixel);

} // namespace frames
