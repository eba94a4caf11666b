// A frame as single pixels, read and written one by one: what crops and flips are checked against.
#pragma once
#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "orvella/orvella.hpp"
#include "support/fill.h"

namespace naive {

using support::Bytes;
using Pixel = std::uint64_t;

inline bool isPacked12(const orvella::FormatInfo& info) {
    return info.layout == OrvPixelLayoutMonoPacked || info.layout == OrvPixelLayoutRawPacked;
}
inline bool isStream(const orvella::FormatInfo& info) {
    return info.layout == OrvPixelLayoutMonoP || info.layout == OrvPixelLayoutRawP;
}

// The bytes (or, of bit streams, the bits) of pixel x of a line: U, Y, V of YUV.
inline std::vector<std::size_t> places(const orvella::FormatInfo& info, std::size_t x) {
    std::vector<std::size_t> at;
    if (info.layout == OrvPixelLayoutYuv422) return {x / 2 * 4, x / 2 * 4 + 1 + x % 2 * 2, x / 2 * 4 + 2};
    if (info.layout == OrvPixelLayoutYuv411) {
        constexpr std::size_t lumas[] = {1, 2, 4, 5};
        return {x / 4 * 6, x / 4 * 6 + lumas[x % 4], x / 4 * 6 + 3};
    }
    const std::size_t unit = isStream(info) ? info.bits() : info.bits() / 8;
    for (std::size_t i = 0; i < unit; ++i) at.push_back(x * unit + i);
    return at;
}

inline Pixel get(const std::uint8_t* line, const orvella::FormatInfo& info, std::size_t x) {
    if (isPacked12(info)) {
        const std::uint8_t* group = line + x / 2 * 3;
        return x % 2 == 0 ? Pixel{group[0]} << 4 | (group[1] & 15u) : Pixel{group[2]} << 4 | group[1] >> 4;
    }
    Pixel pixel = 0;
    unsigned shift = 0;
    for (const std::size_t at : places(info, x)) {
        pixel |= isStream(info) ? Pixel{line[at / 8] >> at % 8 & 1u} << shift : Pixel{line[at]} << shift;
        shift += isStream(info) ? 1 : 8;
    }
    return pixel;
}

inline void put(std::uint8_t* line, const orvella::FormatInfo& info, std::size_t x, Pixel pixel) {
    if (isPacked12(info)) {
        std::uint8_t* group = line + x / 2 * 3;
        group[x % 2 * 2] = static_cast<std::uint8_t>(pixel >> 4);
        group[1] = static_cast<std::uint8_t>(x % 2 == 0 ? (group[1] & 0xF0u) | (pixel & 15)
                                                        : (group[1] & 15u) | (pixel & 15) << 4);
        return;
    }
    for (const std::size_t at : places(info, x)) {
        if (isStream(info)) {
            line[at / 8] = static_cast<std::uint8_t>(line[at / 8] | (pixel & 1) << at % 8);
            pixel >>= 1;
        } else {
            line[at] = static_cast<std::uint8_t>(pixel);
            pixel >>= 8;
        }
    }
}

struct Image {
    const orvella::FormatInfo* info;
    std::size_t width = 0, height = 0;
    std::string colours{}; // of the mosaic's first two lines
    std::vector<Pixel> pixels{};

    Pixel at(std::size_t x, std::size_t y) const { return pixels[y * width + x]; }
    char colourAt(std::size_t x, std::size_t y) const { return colours[y % 2 * 2 + x % 2]; }

    // Pixels from wherever `from` says; the colours come along.
    template <class From> Image moved(std::size_t newWidth, std::size_t newHeight, From from) const {
        Image image{info, newWidth, newHeight};
        for (std::size_t y = 0; y < newHeight; ++y)
            for (std::size_t x = 0; x < newWidth; ++x) {
                const auto [oldX, oldY] = from(x, y);
                image.pixels.push_back(at(oldX, oldY));
            }
        for (std::size_t i = 0; !colours.empty() && i < 4; ++i) {
            // Sizes of one line or column go on as the mosaic does: in steps of two.
            const auto [oldX, oldY] = from(i % 2, i / 2);
            image.colours += colourAt(oldX + 2 * width, oldY + 2 * height);
        }
        return image;
    }

    // Without padding; the whole image is one stream of bits where lines do not end on whole bytes.
    Bytes dense() const {
        Bytes bytes(orvella::imageBytes(info->format, {width, height}) + 1); // and the byte that is read beyond
        const bool isOneStream = isStream(*info) || isPacked12(*info);
        const std::size_t line = isOneStream ? 0 : orvella::imageBytes(info->format, {width, 1});
        for (std::size_t i = 0; i < pixels.size(); ++i)
            put(bytes.data() + i / width * line, *info, isOneStream ? i : i % width, pixels[i]);
        return bytes;
    }
};

// A mosaic of 8 bits.
inline Image topBits(Image image, const orvella::Options& options) {
    const orvella::FormatInfo& info = *image.info;
    const unsigned used = info.hasWords() ? options.bitsUsed.value_or(info.bitsUsed) : info.bits();
    for (Pixel& pixel : image.pixels) {
        if (options.byteOrder == orvella::ByteOrder::Big) pixel = (pixel >> 8 | pixel << 8) & 0xFFFF;
        const bool isHigh = info.hasWords() && options.alignment == orvella::Alignment::High;
        pixel = (isHigh ? pixel : pixel << (16 - used)) >> 8 & 0xFF;
    }
    image.info = &orvella::infoOf(orvella::PixelFormat::BayerRG8);
    return image;
}

// A mosaic of 16 bits.
inline Image inWords(Image image) {
    for (Pixel& pixel : image.pixels) pixel <<= 16 - image.info->bits();
    image.info = &orvella::infoOf(orvella::PixelFormat::BayerRG16);
    return image;
}

inline std::string coloursOf(const orvella::FormatInfo& info) {
    constexpr const char* names[] = {"RGGB", "GBRG", "GRBG", "BGGR"};
    return info.isMosaic() ? names[info.bayer] : "";
}

} // namespace naive
