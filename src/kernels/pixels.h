// Blocks: N pixels in registers, between a reader and a writer.
#pragma once
#include "kernels/machine/machine.h"

namespace kel {
namespace {

INLINE Halves loadHalves(const u8* s) { return {as<Words>(loadLanes(s, 2 * L)), as<Words>(loadLanes(s + L, 2 * L))}; }
INLINE void storeHalves(u8* d, Halves h) {
    storeLanes(d, 2 * L, as<Bytes>(h.a));
    storeLanes(d + L, 2 * L, as<Bytes>(h.b));
}
INLINE Halves inOrder(Halves h) { return h; }
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
// N samples, their high and their low bytes.
struct DeepBytes {
    Bytes high, low;
};
// Signed words that are still to be clamped to 0..255.
struct RgbSums {
    Split r, g, b;
};
// Grey of 16 bits as it lies in memory, whatever the lanes are: the first N / 2 pixels, then the others.
struct GreyRow16 {
    Words a, b;
};

// Half as many as Rgb16 has.
struct RgbWords {
    Words r, g, b;
};

// Samples or pixels of an even column with the next but one and so on, those of the odd columns apart from them. Machines
// that separate as they load have it for mosaics.
template <class Block> struct Apart { Block even, odd; };
template <class Block> Apart(Block, Block) -> Apart<Block>;
template <class Block> constexpr bool isApart = false;
template <class Block> constexpr bool isApart<Apart<Block>> = true;

// Of a mosaic, where the even and the odd pixel of a pair take one colour from the same sample, in the odd column: blue
// if red stands in the even ones, else red.
template <bool redIsEven> struct MosaicPair : Apart<Rgb> {
    INLINE Bytes common() const { return redIsEven ? even.b : even.r; }
    static INLINE Bytes other(const Rgb& p) { return redIsEven ? p.r : p.b; }
};

template <class Block> constexpr int pixelsIn = N;
template <> constexpr int pixelsIn<Words> = N / 2;
template <> constexpr int pixelsIn<RgbWords> = N / 2;
template <class Block> constexpr int pixelsIn<Apart<Block>> = 2 * pixelsIn<Block>;
template <bool redIsEven> constexpr int pixelsIn<MosaicPair<redIsEven>> = 2 * N;

// In a row again: half of them, or all.
template <int half> INLINE Grey inRow(const Apart<Grey>& p) { return {byTurns<half>(p.even.v, p.odd.v)}; }
template <int half> INLINE Rgb inRow(const Apart<Rgb>& p) {
    return {byTurns<half>(p.even.r, p.odd.r), byTurns<half>(p.even.g, p.odd.g), byTurns<half>(p.even.b, p.odd.b)};
}
INLINE Halves inRow(Words even, Words odd) { return {byTurns<0>(even, odd), byTurns<1>(even, odd)}; }
INLINE Rgb16 inRow(const Apart<RgbWords>& p) {
    return {inRow(p.even.r, p.odd.r), inRow(p.even.g, p.odd.g), inRow(p.even.b, p.odd.b)};
}

// What an 8-bit colour output makes of a block.
INLINE Grey to8(Grey p) { return p; }
INLINE Rgb to8(Rgb p) { return p; }
INLINE Rgb to8(const RgbSums& p) { return {clamp(p.r), clamp(p.g), clamp(p.b)}; }
INLINE Grey to8(Grey16 p) { return {highBytes(p.v)}; }
INLINE Grey to8(GreyRow16 p) { return {inRow(highBytes(Halves{p.a, p.b}))}; }
INLINE Rgb to8(Rgb16 p) { return {highBytes(p.r), highBytes(p.g), highBytes(p.b)}; }
INLINE Rgb to8(const Apart<RgbWords>& p) {
    return {highBytesByTurns(p.even.r, p.odd.r), highBytesByTurns(p.even.g, p.odd.g),
            highBytesByTurns(p.even.b, p.odd.b)};
}

// ---- Luma and chroma: weighted sums

constexpr Weights bt601{77, 150, 29, 0};   // ITU-R BT.601 in 1/256, truncated
constexpr Weights bt709{54, 184, 18, 128}; // ITU-R BT.709 in 1/256, rounded

template <Weights k> INLINE Split weigh(const Rgb& p) { return weigh<k>(p.r, p.g, p.b); }
template <Weights k> INLINE Split weighNegated(const Rgb& p) { return Split{} - weigh<k>(p); } // k.add is 0
template <Weights k> INLINE Split weigh(const RgbSums& p) { return weigh<k>(to8(p)); }

// The sums of 16-bit channels, >> 8.
template <Weights k> INLINE Halves weigh(const Rgb16& p) {
    return {weigh<k>(p.r.a, p.g.a, p.b.a), weigh<k>(p.r.b, p.g.b, p.b.b)};
}

// The sums of both pixels: the common colour is weighed once, and then added to the others.
template <Weights k, bool redIsEven> INLINE Apart<Split> weighInParts(const MosaicPair<redIsEven>& p) {
    constexpr int sign = k.g < 0 ? -1 : 1, common = redIsEven ? k.b : k.r, other = redIsEven ? k.r : k.b;
    constexpr int size = common < 0 ? -common : common;
    const Split product = products<size>(p.common());
    const Split part = (common < 0 ? Split{} - product : product) + k.add;
    const auto sum = [&](const Rgb& q) {
        const Split others = products<sign * k.g, sign * other>(q.g, p.other(q));
        return sign > 0 ? part + others : part - others;
    };
    return {sum(p.even), sum(p.odd)};
}
// Where nothing is to be added, it takes no more instructions to weigh it twice, and less registers.
template <Weights k, bool redIsEven> INLINE Apart<Split> weigh(const MosaicPair<redIsEven>& p) {
    if constexpr (k.add != 0) return weighInParts<k>(p);
    constexpr int common = redIsEven ? k.b : k.r, other = redIsEven ? k.r : k.b;
    const auto sum = [&](const Rgb& q) { return products<k.g, other, common>(q.g, p.other(q), p.common()); };
    return {sum(p.even), sum(p.odd)};
}
template <Weights k> INLINE Words weigh(const RgbWords& p) { return weigh<k>(p.r, p.g, p.b); }

} // namespace
} // namespace kel
