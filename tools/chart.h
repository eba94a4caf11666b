// A colour chart: patches, a grey ramp and fine lines, of any size.
#pragma once
#include <cstdint>
#include <vector>

#include "conversion.h"
#include "frame.h"

namespace tool {

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

// The chart as a perfect conversion would show it: grey for grey formats, and with 16 bits for samples of more than 8.
Image truthFor(const FrameFormat& frame, const Chart& chart);

} // namespace tool
