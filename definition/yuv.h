// YUV sources: 8 bits, full range, chroma centred on 128.
#pragma once
#include "definition/samples.h"

namespace definition {
namespace {

struct Yuv {
    u8 y, u, v;
};
struct Yuv411 : Groups<4, 6> { // U Y Y V Y Y
    template <int k> static Yuv pixel(const u8* s) { return {s[1 + k + k / 2], s[0], s[3]}; }
};
struct Yuv422 : Groups<2, 4> { // U Y V Y
    template <int k> static Yuv pixel(const u8* s) { return {s[1 + 2 * k], s[0], s[2]}; }
};
struct Yuv444 : Groups<1, 3> { // U Y V
    template <int> static Yuv pixel(const u8* s) { return {s[1], s[0], s[2]}; }
};

// chroma * factor / 10000, truncated toward zero. Steps of 1/65536 come to the same, and are what a loop divides by.
template <int factor> constexpr int product(int chroma) {
    constexpr int steps = (factor * 65536 + (factor < 0 ? -5000 : 5000)) / 10000;
    return chroma * steps / 65536;
}
template <int... factors> constexpr bool areExact() {
    for (int x = -128; x < 128; ++x)
        if (((product<factors>(x) != x * factors / 10000) || ...)) return false;
    return true;
}
static_assert(areExact<14022, -3457, -7144, 17710>());

// Each product is truncated by itself.
inline Rgb8 byProducts(Yuv p) {
    const int u = p.u - 128, v = p.v - 128;
    return {clamp(p.y + product<14022>(v)), clamp(p.y + product<-3457>(u) + product<-7144>(v)),
            clamp(p.y + product<17710>(u))};
}

template <class Source> struct Coloured : Source {
    template <int k> static Rgb8 pixel(const u8* s) { return byProducts(Source::template pixel<k>(s)); }
};

} // namespace
} // namespace definition
