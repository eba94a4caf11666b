#include "frames/chart.h"

#include <cstring>

namespace frames {

namespace {

constexpr std::uint16_t wide(unsigned value8) { return static_cast<std::uint16_t>(value8 * 257); }
constexpr Rgb16 grey(std::uint16_t value) { return {value, value, value}; }

constexpr Rgb16 white = grey(0xFFFF), black = grey(0);

constexpr unsigned patchRows = 3, patchColumns = 8;
constexpr unsigned patchColours[patchRows][patchColumns] = {
    {0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF, 0xFFFFFF, 0x000000},
    {0xC03030, 0xD08020, 0x80A030, 0x308050, 0x3070B0, 0x504090, 0xA04080, 0x808080},
    {0xF0C8A0, 0xB07850, 0x704828, 0x506838, 0x80B0D8, 0x284070, 0xE0D0E0, 0x404040},
};

// Which of `parts` equal parts a position lies in.
unsigned part(std::uint32_t position, std::uint32_t length, unsigned parts) {
    return static_cast<unsigned>(std::uint64_t{position} * parts / length);
}

Rgb16 patch(std::uint32_t x, std::uint32_t y, Size size) {
    const unsigned colour = patchColours[part(y, size.height, patchRows)][part(x, size.width, patchColumns)];
    return {wide(colour >> 16), wide(colour >> 8 & 0xFF), wide(colour & 0xFF)};
}

// Black to white from left to right.
Rgb16 ramp(std::uint32_t x, std::uint32_t width) {
    return grey(width == 1 ? std::uint16_t{0} : static_cast<std::uint16_t>(std::uint64_t{0xFFFF} * x / (width - 1)));
}

// Eight fields of black and white lines: upright ones of 1, 2, 3 and 4 pixels, lying ones of 1 and 2, slanted ones of 2
// in both directions.
Rgb16 lines(std::uint32_t x, std::uint32_t y, std::uint32_t width) {
    const auto striped = [](std::uint32_t position, unsigned thickness) {
        return position / thickness % 2 == 0 ? white : black;
    };
    switch (part(x, width, 8)) {
    case 0: return striped(x, 1);
    case 1: return striped(x, 2);
    case 2: return striped(x, 3);
    case 3: return striped(x, 4);
    case 4: return striped(y, 1);
    case 5: return striped(y, 2);
    case 6: return striped(x + y, 2);
    default: return striped(x - y, 2);
    }
}

// From top to bottom: five eighths patches, an eighth ramp, an eighth steps of grey, an eighth lines.
Rgb16 pixelAt(std::uint32_t x, std::uint32_t y, Size size) {
    constexpr unsigned steps = 16;
    switch (part(y, size.height, 8)) {
    case 5: return ramp(x, size.width);
    case 6: return grey(wide(part(x, size.width, steps) * 17));
    case 7: return lines(x, y, size.width);
    default: return patch(x, y, {size.width, size.height - size.height * 3 / 8});
    }
}

} // namespace

Chart makeChart(Size size) {
    Chart chart{size, {}};
    chart.pixels.reserve(size.pixels());
    for (std::uint32_t y = 0; y < size.height; ++y) {
        for (std::uint32_t x = 0; x < size.width; ++x) chart.pixels.push_back(pixelAt(x, y, size));
    }
    return chart;
}

std::uint16_t luma(const Rgb16& pixel) {
    return static_cast<std::uint16_t>((77u * pixel.red + 150u * pixel.green + 29u * pixel.blue) >> 8);
}

} // namespace frames
