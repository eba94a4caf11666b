// What the plain loops put into a destination: one pixel at a time, as any program would.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "orvella/orv.h"

namespace bench {
namespace {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using std::size_t;

struct Grey8 {
    u8 v;
};
struct Grey16 { // MSB-aligned, as are all 16-bit samples here
    u16 v;
};
struct Rgb8 {
    u8 r, g, b;
};
struct Rgb16 {
    u16 r, g, b;
};
struct Rgba8 {
    u8 r, g, b, a;
};

inline u8 top(u16 v) { return static_cast<u8>(v >> 8); }

inline Rgb8 colour8(Rgb8 p) { return p; }
inline Rgb8 colour8(Rgba8 p) { return {p.r, p.g, p.b}; }
inline Rgb8 colour8(Grey8 p) { return {p.v, p.v, p.v}; }
inline Rgb8 colour8(Grey16 p) { return {top(p.v), top(p.v), top(p.v)}; }
inline Rgb8 colour8(Rgb16 p) { return {top(p.r), top(p.g), top(p.b)}; }

inline Rgb16 colour16(Rgb16 p) { return p; }
inline Rgb16 colour16(Grey16 p) { return {p.v, p.v, p.v}; }

struct Weights {
    int r, g, b, add;
};
constexpr Weights bt601{77, 150, 29, 0}, bt709{54, 184, 18, 128};

template <Weights k> u16 luma16(Rgb8 p) { return static_cast<u16>(k.r * p.r + k.g * p.g + k.b * p.b + k.add); }
template <Weights k> u16 luma16(Rgba8 p) { return luma16<k>(colour8(p)); }
template <Weights k> u16 luma16(Rgb16 p) { return static_cast<u16>((k.r * p.r + k.g * p.g + k.b * p.b + k.add) >> 8); }
template <Weights k> u16 luma16(Grey16 p) { return p.v; }

template <Weights k, class Pixel> u8 luma8(Pixel p) { return top(luma16<k>(p)); }
template <Weights k> u8 luma8(Grey8 p) { return p.v; }

template <class Word> Word getWord(const u8* s) {
    Word word;
    std::memcpy(&word, s, sizeof word);
    return word;
}
template <class Word> void putWord(u8* d, Word word) { std::memcpy(d, &word, sizeof word); }

// The fourth byte keeps its value, unless the source has one.
template <class Pixel> void put32(u8* d, u8 first, u8 second, u8 third, Pixel) {
    putWord<u32>(d, first | u32{second} << 8 | u32{third} << 16 | (getWord<u32>(d) & 0xFF000000));
}
inline void put32(u8* d, u8 first, u8 second, u8 third, Rgba8 p) {
    d[0] = first, d[1] = second, d[2] = third, d[3] = p.a;
}

constexpr size_t bytesPerPixel(OrvOutputCode output) {
    constexpr size_t bytes[] = {1, 3, 4, 3, 4, 1, 2, 2, 2, 6, 6};
    return bytes[output];
}

template <OrvOutputCode output, class Pixel> void put(u8* d, Pixel p) {
    if constexpr (output == OrvOutputMono8) *d = luma8<bt601>(p);
    if constexpr (output == OrvOutputMono8Rec709) *d = luma8<bt709>(p);
    if constexpr (output == OrvOutputMono16) putWord(d, luma16<bt601>(p));
    if constexpr (output == OrvOutputMono16Rec709) putWord(d, luma16<bt709>(p));
    if constexpr (output == OrvOutputBgr24 || output == OrvOutputRgb24) {
        const Rgb8 c = colour8(p);
        const bool bgr = output == OrvOutputBgr24;
        d[0] = bgr ? c.b : c.r, d[1] = c.g, d[2] = bgr ? c.r : c.b;
    }
    if constexpr (output == OrvOutputBgra32 || output == OrvOutputRgba32) {
        const Rgb8 c = colour8(p);
        const bool bgr = output == OrvOutputBgra32;
        put32(d, bgr ? c.b : c.r, c.g, bgr ? c.r : c.b, p);
    }
    if constexpr (output == OrvOutputBgr48) {
        const Rgb16 c = colour16(p);
        putWord(d, c.b), putWord(d + 2, c.g), putWord(d + 4, c.r);
    }
    if constexpr (output == OrvOutputYuv422) d[0] = 0, d[1] = p.v; // grey
}

// U Y V Y of two neighbours.
inline void putPair(u8* d, Rgb8 p, Rgb8 q) {
    const auto y = [](Rgb8 c) { return static_cast<u8>(((66 * c.r + 129 * c.g + 25 * c.b + 128) >> 8) + 16); };
    const auto u = [](Rgb8 c) { return ((-38 * c.r - 74 * c.g + 112 * c.b + 128) >> 8) + 128; };
    const auto v = [](Rgb8 c) { return ((112 * c.r - 94 * c.g - 18 * c.b + 128) >> 8) + 128; };
    d[0] = static_cast<u8>((u(p) + u(q)) >> 1), d[1] = y(p);
    d[2] = static_cast<u8>((v(p) + v(q)) >> 1), d[3] = y(q);
}

inline u8 clamp(int v) { return static_cast<u8>(v < 0 ? 0 : v > 255 ? 255 : v); }

// Full-range YUV in steps of 1/65536; division truncates as the products of the formula do.
inline Rgb8 fromYuv(int y, int u, int v) {
    const int blue = (u - 128) * 116064 / 65536, red = (v - 128) * 91895 / 65536;
    const int green = (u - 128) * 22656 / 65536 + (v - 128) * 46819 / 65536;
    return {clamp(y + red), clamp(y - green), clamp(y + blue)};
}

} // namespace
} // namespace bench
