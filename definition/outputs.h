// The outputs: what a pixel becomes in memory.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "orvella/orv.h"

namespace definition {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using i16 = std::int16_t;
using i32 = std::int32_t;
using std::size_t;

// By OrvOutputCode.
struct Output {
    const char* name;
    unsigned bytes; // per pixel
};
constexpr Output outputs[] = {{"Mono8", 1},         {"BGR24", 3},        {"BGRA32", 4}, {"RGB24", 3},
                              {"RGBA32", 4},        {"Mono8 BT.709", 1}, {"UYVY", 2},   {"Mono16", 2},
                              {"Mono16 BT.709", 2}, {"BGR48", 6},        {"RGB48", 6}};

// The loop over a row: everything in it is inlined, but not the row itself, which would lose its __restrict.
#define ROW __attribute__((noinline, flatten)) void

namespace {

// ---- Pixels

struct Grey8 {
    u8 v;
};
struct Grey16 { // 16-bit samples are MSB-aligned
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

inline u8 clamp(int v) { return static_cast<u8>(v < 0 ? 0 : v > 255 ? 255 : v); }
inline u8 top(u16 v) { return static_cast<u8>(v >> 8); }

// Colour outputs of 8 bits take the top byte of a deep sample. Grey is three equal channels.
inline Rgb8 colour8(Rgb8 p) { return p; }
inline Rgb8 colour8(Rgba8 p) { return {p.r, p.g, p.b}; }
inline Rgb8 colour8(Grey8 p) { return {p.v, p.v, p.v}; }
inline Rgb8 colour8(Grey16 p) { return {top(p.v), top(p.v), top(p.v)}; }
inline Rgb8 colour8(Rgb16 p) { return {top(p.r), top(p.g), top(p.b)}; }

inline Rgb16 colour16(Rgb16 p) { return p; }
inline Rgb16 colour16(Grey16 p) { return {p.v, p.v, p.v}; }

// ---- Luma. BT.601 is truncated, BT.709 rounded. Mono16 of 8-bit channels is the sum as it is, of 16-bit channels its
// upper 16 bits; Mono8 is the top byte of that. Grey sources keep their value.

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

// ---- Memory: words are little-endian

template <class Word> Word getWord(const u8* s) {
    Word word;
    std::memcpy(&word, s, sizeof word);
    return word;
}
template <class Word> void putWord(u8* d, Word word) { std::memcpy(d, &word, sizeof word); }

// The fourth byte keeps what it was, unless the source has one.
template <class Pixel> void put32(u8* d, u8 first, u8 second, u8 third, Pixel) {
    putWord<u32>(d, first | u32{second} << 8 | u32{third} << 16 | (getWord<u32>(d) & 0xFF000000));
}
inline void put32(u8* d, u8 first, u8 second, u8 third, Rgba8 p) {
    d[0] = first, d[1] = second, d[2] = third, d[3] = p.a;
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
    if constexpr (output == OrvOutputYuv422) d[0] = 0, d[1] = p.v; // grey has zero chroma, not a neutral one
}

// Two neighbours. As UYVY (limited range) they share the truncated mean of their chroma.
template <OrvOutputCode output, class Pixel> void putTwo(u8* d, Pixel p, Pixel q) {
    if constexpr (output == OrvOutputYuv422) {
        const auto y = [](Rgb8 c) { return static_cast<u8>(((66 * c.r + 129 * c.g + 25 * c.b + 128) >> 8) + 16); };
        const auto u = [](Rgb8 c) { return ((-38 * c.r - 74 * c.g + 112 * c.b + 128) >> 8) + 128; };
        const auto v = [](Rgb8 c) { return ((112 * c.r - 94 * c.g - 18 * c.b + 128) >> 8) + 128; };
        d[0] = static_cast<u8>((u(p) + u(q)) >> 1), d[1] = y(p);
        d[2] = static_cast<u8>((v(p) + v(q)) >> 1), d[3] = y(q);
    } else {
        put<output>(d, p);
        put<output>(d + outputs[output].bytes, q);
    }
}

} // namespace
} // namespace definition
