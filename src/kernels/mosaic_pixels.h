// Pixels of the 2x2 demosaic in bytes, as the blocks of samples they are made from. Some outputs need no separate colours:
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
    Bytes here, next;           // red or blue of a pixel's own column, and of the one to the right
    Bytes greenHere, greenNext; // green of both
};
INLINE Alternating alternating(Blocks<Bytes> s, const Phase2x2& phase) {
    exchange(phase.redLeft, s.a, s.c);
    exchange(phase.redLeft, s.b, s.d);
    return {s.c, s.b, s.a, s.d};
}

// Byte pairs of `here` are the red and blue of the even pixels, those of `next` of the odd ones.
template <Weights k> INLINE Split weighRedAndBlue(const Alternating& p, const Phase2x2& phase) {
    const int first = k.b + phase.redIsEven * (k.r - k.b), second = k.r + k.b - first;
    return {weighPairs(p.here, fillBytePairs(first, second)), weighPairs(p.next, fillBytePairs(second, first))};
}
INLINE Split times(Split s, int k) { return {times(s.a, k), times(s.b, k)}; }
template <Weights k> INLINE Split weigh(const Alternating& p, Split g, const Phase2x2& phase) {
    return weighRedAndBlue<k>(p, phase) + times(g, k.g) + k.add;
}
// So are those of `greenHere` and `greenNext` their two greens.
INLINE Split greenOf(const Alternating& p) {
    return {pairSums<1, 1>(p.greenHere) >> 1, pairSums<1, 1>(p.greenNext) >> 1};
}
template <Weights k> INLINE Split weigh(const MosaicPixels& p) {
    const Alternating colours = alternating(p.s, p.phase);
    return weigh<k>(colours, greenOf(colours), p.phase);
}

// For several sums of each pixel, with which no other unit is as busy as those that multiply: here AVX2 may blend bytes,
// which takes longer than exchange() on Haswell and Alder Lake elsewhere.
struct SummedPixels {
    Alternating colours;
    Split green;
    const Phase2x2& phase;

    INLINE explicit SummedPixels(const MosaicPixels& p)
        : colours(blended(p.s, p.phase.redLeft)), green(greenOf(colours)), phase(p.phase) {}

private:
    static INLINE Alternating blended(const Blocks<Bytes>& s, Bytes redLeft) {
        return {select(redLeft, s.a, s.c), select(redLeft, s.d, s.b), select(redLeft, s.c, s.a),
                select(redLeft, s.b, s.d)};
    }
};
template <Weights k> INLINE Split weigh(const SummedPixels& p) { return weigh<k>(p.colours, p.green, p.phase); }
template <Weights k> INLINE Split weighNegated(const SummedPixels& p) {
    return times(p.green, -k.g) - weighRedAndBlue<k>(p.colours, p.phase);
}

// As store3<1>, in two look-ups a vector.
INLINE void storeBgr(u8* d, const Alternating& p, Bytes green, const Phase2x2& phase) {
    storeLanes(d, 3 * L, lookUp(p.here, green, phase.bgr[0]));
    storeLanes(d + L, 3 * L, lookUp(p.here, green, phase.bgr[1]));
    storeLanes(d + 2 * L, 3 * L, lookUp(p.next, green, phase.bgr[2]));
}
INLINE void storeBgr(u8* d, const MosaicPixels& p) {
    const Alternating colours = alternating(p.s, p.phase);
    storeBgr(d, colours, mean(colours.greenHere, colours.greenNext), p.phase);
}

// ---- Of samples of up to 15 bits, MSB-aligned: their high and their low bytes

INLINE DeepBytes next(DeepBytes v) { return {next(v.high), next(v.low)}; }
// A sample reader of words, that much shallower than 16 bits.
template <class S> struct DeepSamples : S {
    template <int from> static INLINE DeepBytes samples(const u8* s) {
        const Halves words = S::template samples<from>(s);
        return {highBytes(words), lowBytes(words)};
    }
};

struct DeepMosaicPixels {
    Blocks<Bytes> high, low;
    const Phase2x2& phase;
};

// The truncated mean. Low bytes are even, so half their sum is a byte; its top bit, which is worth half a high byte, makes
// up for the half that an odd sum of high bytes loses.
INLINE DeepBytes mean(DeepBytes x, DeepBytes y) {
    const Bytes odd = (x.high ^ y.high) & 1, low = meanUp(x.low, y.low);
    return {meanUp(x.high, y.high) - (odd & ~as<Bytes>(as<Words>(low) >> 7)), low ^ as<Bytes>(as<Words>(odd) << 7)};
}

struct DeepRgb {
    Rgb high, low;
};
INLINE DeepRgb separated(const DeepMosaicPixels& p) {
    const auto either = [&](Bytes Blocks<Bytes>::*left, Bytes Blocks<Bytes>::*right) { // left where red is left
        return DeepBytes{select(p.phase.redLeft, p.high.*left, p.high.*right),
                         select(p.phase.redLeft, p.low.*left, p.low.*right)};
    };
    using B = Blocks<Bytes>;
    const DeepBytes r = either(&B::a, &B::b), g = mean(either(&B::b, &B::a), either(&B::c, &B::d));
    const DeepBytes b = either(&B::d, &B::c);
    return {{r.high, g.high, b.high}, {r.low, g.low, b.low}};
}
INLINE Rgb to8(const DeepMosaicPixels& p) { return separated(p).high; }

// With each channel = 256 h + l this is exactly H + (L >> 8), H and L being the sums over the high and the low bytes.
template <Weights k> INLINE Split weigh(const DeepMosaicPixels& p) {
    constexpr Weights ofHigh{k.r, k.g, k.b, 0};
    const auto sum = [](Split high, Split low) { return Split{high.a + (low.a >> 8), high.b + (low.b >> 8)}; };
    const Alternating high = alternating(p.high, p.phase), low = alternating(p.low, p.phase);
    const DeepBytes green = mean(DeepBytes{high.greenHere, low.greenHere}, DeepBytes{high.greenNext, low.greenNext});
    return sum(weigh<ofHigh>(high, widen(green.high), p.phase), weigh<k>(low, widen(green.low), p.phase));
}

INLINE void storeBgr(u8* d, const DeepMosaicPixels& p) {
    const Alternating h = alternating(p.high, p.phase), l = alternating(p.low, p.phase);
    const DeepBytes green = mean(DeepBytes{h.greenHere, l.greenHere}, DeepBytes{h.greenNext, l.greenNext});
    storeBgr(d, h, green.high, p.phase);
}

// The writers for these pixels.
template <class W> struct AlternatingWriter : W {};
template <> struct AlternatingWriter<Rgb24Writer<Order::bgr>> : Rgb24Writer<Order::bgr> {
    template <class Pixels> static INLINE void put(u8* d, const Pixels& p) { storeBgr(d, p); }
    static INLINE void put(u8* d, const Rgb16& p) { Rgb24Writer::put(d, p); }
};

// ---- Where columns are kept apart, there is nothing of all this: the sample readers and writers of this machine's mosaics

template <class S> struct ApartReader { using Type = S; };
template <> struct ApartReader<PlainSamples<Bytes>> { using Type = PlainSamples<Apart<Bytes>>; };
template <class S>
requires requires { typename S::WithColumnsApart; }
struct ApartReader<S> {
    using Type = typename S::WithColumnsApart;
};
template <class S> struct ApartReader<DeepSamples<S>> { using Type = S; };

template <class S> using MosaicReader = std::conditional_t<separatesAsItLoads, typename ApartReader<S>::Type, S>;
template <class W> using MosaicWriter = std::conditional_t<separatesAsItLoads, W, AlternatingWriter<W>>;

} // namespace
} // namespace kel
