// Blocks: N pixels in registers, between a reader and a writer.
#pragma once
#include "kernels/vector.h"

namespace kel {
namespace {

// N words. In each lane, `a` holds the first half of the lane's pixels and `b` the second.
struct Halves {
    Words a, b;
};
INLINE Halves loadHalves(const u8* s) { return {as<Words>(loadLanes(s, 2 * L)), as<Words>(loadLanes(s + L, 2 * L))}; }
INLINE void storeHalves(u8* d, Halves h) {
    storeLanes(d, 2 * L, as<Bytes>(h.a));
    storeLanes(d + L, 2 * L, as<Bytes>(h.b));
}
INLINE Bytes highBytes(Halves h) { return unzip<1>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Bytes lowBytes(Halves h) { return unzip<0>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Halves select(Halves mask, Halves x, Halves y) { return {select(mask.a, x.a, y.a), select(mask.b, x.b, y.b)}; }
INLINE Halves mean(Halves x, Halves y) { return {mean(x.a, y.a), mean(x.b, y.b)}; }

// 8 bits a channel.
struct Grey {
    Bytes v;
};
struct Rgb {
    Bytes r, g, b;
};
// 16 bits a channel, MSB-aligned.
struct Grey16 {
    Halves v;
};
struct Rgb16 {
    Halves r, g, b;
};

// What an 8-bit colour output makes of a block.
INLINE Grey to8(Grey p) { return p; }
INLINE Rgb to8(Rgb p) { return p; }
INLINE Grey to8(Grey16 p) { return {highBytes(p.v)}; }
INLINE Rgb to8(Rgb16 p) { return {highBytes(p.r), highBytes(p.g), highBytes(p.b)}; }

// ---- Weighted sums r R + g G + b B + add, modulo 2^16. The weights of R and B are signed bytes.

struct Weights {
    int r, g, b, add;
};
constexpr Weights bt601{77, 150, 29, 0};   // ITU-R BT.601 in 1/256, truncated
constexpr Weights bt709{54, 184, 18, 128}; // ITU-R BT.709 in 1/256, rounded

// Words of (r, b) byte pairs, for pairSums.
INLINE Words redAndBlue(Weights k) { return fill((k.r & 255) | (k.b & 255) << 8); }

template <Weights k> INLINE Split weigh(Rgb p) {
    const Words r = as<Words>(p.r), b = as<Words>(p.b);
    const Bytes even = as<Bytes>((r & 0xFF) | b << 8), odd = as<Bytes>(r >> 8 | (b & 0xFF00));
    const Split g = widen(p.g);
    return {pairSums(even, redAndBlue(k)) + times(g.even, k.g) + fill(k.add),
            pairSums(odd, redAndBlue(k)) + times(g.odd, k.g) + fill(k.add)};
}

// The sum of 16-bit channels, >> 8. With each channel = 256 h + l this is exactly H + (L >> 8), H and L being the sums
// over the high and the low bytes.
template <Weights k> INLINE Words weigh(Words r, Words g, Words b) {
    const Bytes low = as<Bytes>((r & 0xFF) | b << 8), high = as<Bytes>(r >> 8 | (b & 0xFF00));
    const Words sumLow = pairSums(low, redAndBlue(k)) + times(g & 0xFF, k.g) + fill(k.add);
    return pairSums(high, redAndBlue(k)) + times(g >> 8, k.g) + (sumLow >> 8);
}
template <Weights k> INLINE Halves weigh(Rgb16 p) {
    return {weigh<k>(p.r.a, p.g.a, p.b.a), weigh<k>(p.r.b, p.g.b, p.b.b)};
}

} // namespace
} // namespace kel
