// Pixels of the 2x2 demosaic in 8 bits, as the blocks of samples they are made from. Some outputs need no separate colours:
// they take red and blue as they alternate.
//
// In every column one of the two rows holds red or blue and the other one green. In column x and in the next one these are
//
//     red is left     a = red, c = green      d = blue, b = green
//     blue is left    c = blue, a = green     b = red, d = green
#pragma once
#include "kernels/blocks2x2.h"

namespace kel {
namespace {

// What all blocks of an image have in common.
struct Phase2x2 {
    Bytes redLeft;
    int redIsEven; // 1: red stands in the even columns, 0: in the odd ones
    Bytes bgr[3];  // the positions that storeBgr looks up

    INLINE explicit Phase2x2(unsigned phase) : redLeft(columns<Bytes>(phase % 2 == 0)), redIsEven(phase % 2 == 0) {
        redIsEven ? setPositions<true>(Indices<N>()) : setPositions<false>(Indices<N>());
    }

private:
    template <bool redEven, int... i> INLINE void setPositions(std::integer_sequence<int, i...>) {
        bgr[0] = Bytes{position(redEven, 0, i % L)...};
        bgr[1] = Bytes{position(redEven, 1, i % L)...};
        bgr[2] = Bytes{position(redEven, 2, i % L)...};
    }
    static constexpr u8 position(bool redEven, int vector, int i) {
        const int byte = vector * L + i, pixel = byte / 3, channel = byte % 3;
        if (channel == 1) return static_cast<u8>(L + pixel);
        const bool redHere = (pixel % 2 == 0) == redEven, red = channel == 2;
        const int column = red == redHere ? pixel : pixel + 1;
        return static_cast<u8>(vector == 2 ? column - 1 : column);
    }
};

struct MosaicPixels {
    Blocks<Bytes> s; // the first row is the red one
    const Phase2x2& phase;

    INLINE operator Rgb() const {
        const Bytes redLeft = phase.redLeft;
        return {select(redLeft, s.a, s.b), mean(select(redLeft, s.b, s.a), select(redLeft, s.c, s.d)),
                select(redLeft, s.d, s.c)};
    }
};
INLINE Rgb to8(const MosaicPixels& p) { return p; }

struct Alternating {
    Bytes here, next; // red or blue of a pixel's own column, and of the one to the right
    Bytes green;
};
INLINE Alternating alternating(const MosaicPixels& p) {
    Blocks<Bytes> s = p.s;
    exchange(p.phase.redLeft, s.a, s.c);
    exchange(p.phase.redLeft, s.b, s.d);
    return {s.c, s.b, mean(s.a, s.d)};
}

// Byte pairs of `here` are the red and blue of the even pixels, those of `next` of the odd ones.
template <Weights k> INLINE Split weigh(const MosaicPixels& p) {
    if constexpr (splitPart(1) == 0) return weigh<k>(static_cast<Rgb>(p));
    const Alternating colours = alternating(p);
    const Split green = widen(colours.green);
    const int first = k.b + p.phase.redIsEven * (k.r - k.b), second = k.r + k.b - first;
    return {weighPairs(colours.here, fillBytePairs(first, second)) + times(green.a, k.g) + fill(k.add),
            weighPairs(colours.next, fillBytePairs(second, first)) + times(green.b, k.g) + fill(k.add)};
}

// As store3<1>, in two look-ups a vector.
INLINE void storeBgr(u8* d, const MosaicPixels& p) {
    const Alternating colours = alternating(p);
    storeLanes(d, 3 * L, lookUp(colours.here, colours.green, p.phase.bgr[0]));
    storeLanes(d + L, 3 * L, lookUp(colours.here, colours.green, p.phase.bgr[1]));
    storeLanes(d + 2 * L, 3 * L, lookUp(colours.next, colours.green, p.phase.bgr[2]));
}

// The writers for these pixels.
template <class W> struct MosaicWriter : W {};
template <> struct MosaicWriter<Rgb24Writer<Order::bgr>> : Rgb24Writer<Order::bgr> {
    static INLINE void put(u8* d, const MosaicPixels& p) {
        if constexpr (separatesAsItLoads)
            Rgb24Writer::put(d, static_cast<Rgb>(p));
        else
            storeBgr(d, p);
    }
    static INLINE void put(u8* d, const Rgb16& p) { Rgb24Writer::put(d, p); }
};

} // namespace
} // namespace kel
