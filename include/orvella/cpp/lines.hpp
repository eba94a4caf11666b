// Lines read from right to left.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "orvella/cpp/formats.hpp"

namespace orvella::detail {

template <std::size_t bytes> void mirrorPixels(std::byte* destination, const std::byte* source, std::size_t width) {
    for (std::size_t x = 0; x < width; ++x)
        std::memcpy(destination + x * bytes, source + (width - 1 - x) * bytes, bytes);
}

// Groups of bytes from right to left; what happens within one is the caller's.
template <std::size_t bytes, class Turn>
void mirrorGroups(std::byte* destination, const std::byte* source, std::size_t groups, Turn turn) {
    for (std::size_t g = 0; g < groups; ++g) turn(destination + g * bytes, source + (groups - 1 - g) * bytes);
}

// Little-endian samples that fill a group of bytes.
template <std::size_t bytes, unsigned bits> void turnSamples(std::byte* destination, const std::byte* source) {
    std::uint64_t in = 0, out = 0;
    for (std::size_t i = bytes; i-- > 0;) in = in << 8 | std::to_integer<std::uint64_t>(source[i]);
    for (std::size_t i = 0; i < bytes * 8 / bits; ++i) {
        out = out << bits | (in & ((1u << bits) - 1));
        in >>= bits;
    }
    for (std::size_t i = 0; i < bytes; ++i) destination[i] = static_cast<std::byte>(out >> 8 * i & 0xFF);
}

inline void turnPacked(std::byte* d, const std::byte* s) { // the low nibbles in the middle byte
    d[0] = s[2];
    d[1] = s[1] << 4 | s[1] >> 4;
    d[2] = s[0];
}

inline void turnYuv422(std::byte* d, const std::byte* s) {
    constexpr std::size_t from[] = {0, 3, 2, 1}; // U Y1 V Y0
    for (std::size_t i = 0; i < 4; ++i) d[i] = s[from[i]];
}

inline void turnYuv411(std::byte* d, const std::byte* s) {
    constexpr std::size_t from[] = {0, 5, 4, 3, 2, 1}; // U Y3 Y2 V Y1 Y0
    for (std::size_t i = 0; i < 6; ++i) d[i] = s[from[i]];
}

// The width is a multiple of the format's group.
inline void mirror(std::byte* destination, const std::byte* source, std::size_t width, const FormatInfo& info) {
    switch (info.layout) {
    case OrvPixelLayoutMonoP:
    case OrvPixelLayoutRawP:
        if (info.bits() == 10) return mirrorGroups<5>(destination, source, width / 4, turnSamples<5, 10>);
        return mirrorGroups<3>(destination, source, width / 2, turnSamples<3, 12>);
    case OrvPixelLayoutMonoPacked:
    case OrvPixelLayoutRawPacked: return mirrorGroups<3>(destination, source, width / 2, turnPacked);
    case OrvPixelLayoutYuv422: return mirrorGroups<4>(destination, source, width / 2, turnYuv422);
    case OrvPixelLayoutYuv411: return mirrorGroups<6>(destination, source, width / 4, turnYuv411);
    default: break;
    }
    switch (info.bits()) {
    case 8: return mirrorPixels<1>(destination, source, width);
    case 16: return mirrorPixels<2>(destination, source, width);
    case 24: return mirrorPixels<3>(destination, source, width);
    case 32: return mirrorPixels<4>(destination, source, width);
    default: return mirrorPixels<6>(destination, source, width);
    }
}

} // namespace orvella::detail
