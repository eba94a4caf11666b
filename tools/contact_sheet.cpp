#include "contact_sheet.h"

#include <algorithm>
#include <string>

namespace tool {

namespace {

constexpr std::size_t columns = 3, tileWidth = 320, tileHeight = 260, gap = 8, digitScale = 4;

// Three by five dots for each digit, row by row from the top.
constexpr unsigned digits[10] = {0b111101101101111, 0b010110010010111, 0b111001111100111, 0b111001111001111,
                                 0b101101111001001, 0b111100111001111, 0b111100111101111, 0b111001010010010,
                                 0b111101111101111, 0b111101111001111};

} // namespace

ContactSheet::ContactSheet(std::size_t pictures) : sheet_{outputNamed("RGB24"), {}, {}} {
    const std::size_t rows = (pictures + columns - 1) / columns;
    sheet_.size = {static_cast<std::uint32_t>(std::min(pictures, columns) * (tileWidth + gap) + gap),
                   static_cast<std::uint32_t>(rows * (tileHeight + gap) + gap)};
    sheet_.bytes.assign(sheet_.size.pixels() * 3, 0x20);
}

void ContactSheet::set(std::size_t x, std::size_t y, const std::uint8_t* rgb) {
    std::copy_n(rgb, 3, &sheet_.bytes[(y * sheet_.size.width + x) * 3]);
}

// The nearest pixels, in the middle of the tile.
void ContactSheet::add(const Image& picture) {
    const std::size_t left = gap + count_ % columns * (tileWidth + gap),
                      top = gap + count_ / columns * (tileHeight + gap);
    const auto [width, height] = picture.size;
    const double scale = std::min(static_cast<double>(tileWidth) / width, static_cast<double>(tileHeight) / height);
    const auto scaled = [&](std::uint32_t side) {
        return std::max<std::size_t>(1, static_cast<std::size_t>(side * scale));
    };
    const std::size_t shownWidth = scaled(width), shownHeight = scaled(height);
    const std::size_t x0 = left + (tileWidth - shownWidth) / 2, y0 = top + (tileHeight - shownHeight) / 2;
    for (std::size_t y = 0; y < shownHeight; ++y) {
        const std::size_t fromY = y * height / shownHeight;
        for (std::size_t x = 0; x < shownWidth; ++x)
            set(x0 + x, y0 + y, &picture.bytes[(fromY * width + x * width / shownWidth) * 3]);
    }
    writeNumber(left, top, ++count_);
}

// White on black.
void ContactSheet::writeNumber(std::size_t left, std::size_t top, std::size_t number) {
    constexpr std::uint8_t white[] = {255, 255, 255}, black[] = {0, 0, 0};
    for (const char digit : std::to_string(number)) {
        for (std::size_t y = 0; y < 7 * digitScale; ++y) {
            for (std::size_t x = 0; x < 5 * digitScale; ++x) {
                const std::size_t column = x / digitScale, row = y / digitScale;
                const bool inside = column >= 1 && column <= 3 && row >= 1 && row <= 5;
                const bool dot = inside && digits[digit - '0'] >> (14 - (row - 1) * 3 - (column - 1)) & 1;
                set(left + x, top + y, dot ? white : black);
            }
        }
        left += 4 * digitScale;
    }
}

} // namespace tool
