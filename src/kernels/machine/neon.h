// aarch64, which separates and interleaves pixels as it loads and stores, and whose products widen and add.
// (clang has macros for many of the intrinsics: no braces in their arguments.)
#pragma once
#include <arm_neon.h>

namespace kel {
namespace {
constexpr int N = 16, L = 16;
} // namespace
} // namespace kel

#include "kernels/machine/plain.h"

namespace kel {
namespace {
namespace machine {

INLINE uint8x16_t u8x16(Bytes v) { return as<uint8x16_t>(v); }
INLINE uint16x8_t u16x8(Words v) { return as<uint16x8_t>(v); }
INLINE int16x8_t s16x8(Words v) { return as<int16x8_t>(v); }
INLINE int16x8_t s16x8(Ints v) { return as<int16x8_t>(v); }

// ---- Pixels in memory

INLINE void load2(const u8* s, Bytes& a, Bytes& b) {
    const uint8x16x2_t v = vld2q_u8(s);
    a = as<Bytes>(v.val[0]), b = as<Bytes>(v.val[1]);
}
INLINE void load2(const u8* s, Words& a, Words& b) {
    const uint16x8x2_t v = vld2q_u16(reinterpret_cast<const u16*>(s));
    a = as<Words>(v.val[0]), b = as<Words>(v.val[1]);
}
INLINE void store2(u8* d, Bytes a, Bytes b) {
    const uint8x16x2_t pairs{{u8x16(a), u8x16(b)}};
    vst2q_u8(d, pairs);
}
INLINE void store2(u8* d, Words a, Words b) {
    const uint16x8x2_t pairs{{u16x8(a), u16x8(b)}};
    vst2q_u16(reinterpret_cast<u16*>(d), pairs);
}
INLINE void load3(const u8* s, Bytes& a, Bytes& b, Bytes& c) {
    const uint8x16x3_t v = vld3q_u8(s);
    a = as<Bytes>(v.val[0]), b = as<Bytes>(v.val[1]), c = as<Bytes>(v.val[2]);
}
INLINE void load4(const u8* s, Bytes& a, Bytes& b, Bytes& c) {
    const uint8x16x4_t v = vld4q_u8(s);
    a = as<Bytes>(v.val[0]), b = as<Bytes>(v.val[1]), c = as<Bytes>(v.val[2]);
}
INLINE void load4(const u8* s, Bytes (&v)[4]) {
    const uint8x16x4_t quads = vld4q_u8(s);
    for (int i = 0; i < 4; ++i) v[i] = as<Bytes>(quads.val[i]);
}
template <int unit> INLINE void store3(u8* d, size_t, Bytes a, Bytes b, Bytes c) {
    const uint8x16x3_t bytes{{u8x16(a), u8x16(b), u8x16(c)}};
    const uint16x8x3_t words{{as<uint16x8_t>(a), as<uint16x8_t>(b), as<uint16x8_t>(c)}};
    if constexpr (unit == 1)
        vst3q_u8(d, bytes);
    else
        vst3q_u16(reinterpret_cast<u16*>(d), words);
}
template <int unit> INLINE void store3(u8* d, size_t step, Bytes v) { store3<unit>(d, step, v, v, v); }
INLINE void store3of4(u8* d, Bytes a, Bytes b, Bytes c) {
    const uint8x16x4_t pixels{{u8x16(a), u8x16(b), u8x16(c), vld4q_u8(d).val[3]}};
    vst4q_u8(d, pixels);
}
INLINE void store3of4(u8* d, Bytes v) { store3of4(d, v, v, v); }
INLINE void store4(u8* d, Bytes v, Bytes w, Bytes x, Bytes y) {
    const uint8x16x4_t quads{{u8x16(v), u8x16(w), u8x16(x), u8x16(y)}};
    vst4q_u8(d, quads);
}
INLINE void loadRow(const u8* s, Bytes (&v)[4]) {
    const uint8x16x4_t row = vld1q_u8_x4(s);
    for (int i = 0; i < 4; ++i) v[i] = as<Bytes>(row.val[i]);
}
INLINE void storeRow(u8* d, const Bytes (&v)[4]) {
    const uint8x16x4_t row{{u8x16(v[0]), u8x16(v[1]), u8x16(v[2]), u8x16(v[3])}};
    vst1q_u8_x4(d, row);
}
constexpr bool separatesAsItLoads = true;
constexpr bool pacesLoops = false; // not measured
constexpr bool movesAsItLoads = true;
constexpr bool addsSignedBytes = true;

// Loads that separate and stores that weave take no offset, but move their address on for nothing. Where g++ sees through
// a few steps of a loop, it makes an address for each of them instead.
template <bool pixelwise, class Byte> INLINE void moveOn(Byte*& p, size_t bytes) {
    p += bytes;
    if constexpr (pixelwise) asm("" : "+r"(p));
}

using permutes::wordsAt;
using plain::storeQuads;
// These cores prefetch streams by themselves; whether ours would help was not measured.
INLINE std::uintptr_t prefetchDistance() { return 0; }
template <size_t bytes, bool forWriting> INLINE void prefetch(const u8*, std::uintptr_t = 0) {}

// ---- Bytes and words

template <class At, int... i> INLINE Bytes place(Bytes v, At at, std::integer_sequence<int, i...>) {
    return as<Bytes>(vqtbl1q_u8(u8x16(v), u8x16(Bytes{static_cast<u8>(at(i))...})));
}
template <class At> INLINE Bytes place(Bytes v, At at) { return place(v, at, Indices<N>()); }

INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) { return as<Bytes>(vqtbl2q_u8({{u8x16(a), u8x16(b)}}, u8x16(at))); }

using plain::exchange;

INLINE Bytes meanUp(Bytes a, Bytes b) { return as<Bytes>(vrhaddq_u8(u8x16(a), u8x16(b))); }
INLINE Words meanUp(Words a, Words b) { return as<Words>(vrhaddq_u16(u16x8(a), u16x8(b))); }
INLINE Bytes mean(Bytes a, Bytes b) { return as<Bytes>(vhaddq_u8(u8x16(a), u8x16(b))); }
INLINE Words mean(Words a, Words b) { return as<Words>(vhaddq_u16(u16x8(a), u16x8(b))); }

INLINE Bytes mean(Bytes a, Bytes b, Bytes c, Bytes d) {
    // A half that a mean loses counts only if the other one loses a half as well.
    return as<Bytes>(vminq_u8(u8x16(mean(meanUp(a, b), mean(c, d))), u8x16(mean(mean(a, b), meanUp(c, d)))));
}

INLINE Bytes addSaturated(Bytes a, Bytes b) { return as<Bytes>(vqaddq_u8(u8x16(a), u8x16(b))); }

INLINE Bytes addSigned(Bytes v, Bytes s) { return as<Bytes>(vsqaddq_u8(u8x16(v), as<int8x16_t>(s))); }
INLINE Bytes meanSigned(Bytes a, Bytes b) { return as<Bytes>(vhaddq_s8(as<int8x16_t>(a), as<int8x16_t>(b))); }
INLINE Bytes meanSigned(Bytes a, Bytes b, Bytes c, Bytes d) { // as mean()
    const auto up = [](Bytes x, Bytes y) { return as<Bytes>(vrhaddq_s8(as<int8x16_t>(x), as<int8x16_t>(y))); };
    return as<Bytes>(vminq_s8(as<int8x16_t>(meanSigned(up(a, b), meanSigned(c, d))),
                              as<int8x16_t>(meanSigned(meanSigned(a, b), up(c, d)))));
}
template <int k> INLINE Bytes productDown(Bytes s) { // half of the doubled products' upper words, then their sign bit
    const int8x16_t v = as<int8x16_t>(s);
    const Bytes low = as<Bytes>(vqdmulhq_n_s16(vmovl_s8(vget_low_s8(v)), k));
    const Bytes high = as<Bytes>(vqdmulhq_n_s16(vmovl_high_s8(v), k));
    return as<Bytes>(vsraq_n_u8(u8x16(unzip<0>(low, high)), u8x16(s), 7));
}

INLINE u64 zeros(Bytes v) {
    constexpr Bytes weights{1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    uint8x16_t sums = vandq_u8(vceqzq_u8(u8x16(v)), u8x16(weights));
    for (int i = 0; i < 3; ++i) sums = vpaddq_u8(sums, sums);
    return vgetq_lane_u16(vreinterpretq_u16_u8(sums), 0);
}

INLINE Words swapped(Words w) { return as<Words>(vrev16q_u8(as<uint8x16_t>(w))); }

using plain::shiftUp;
// Of a constant that it sees g++ makes shifts and additions, and none of them adds the product as it is made.
INLINE Words times(Words w, int k) {
    uint16x8_t factor = vdupq_n_u16(static_cast<u16>(k));
    asm("" : "+w"(factor));
    return w * as<Words>(factor);
}
INLINE Bytes highBytes(Bytes high, Bytes low, int by) {
    const auto shifted = [](Bytes v, int left) {
        return vshlq_u8(u8x16(v), vdupq_n_s8(static_cast<signed char>(left)));
    };
    return as<Bytes>(vorrq_u8(shifted(high, by), shifted(low, by - 8)));
}

// Half of the doubled product.
INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(vqdmulhq_s16(s16x8(a), s16x8(b))) >> 1; }

using plain::fillBytePairs;
using plain::weighPairs;
template <int l, int r> INLINE Words pairSums(Bytes v) {
    if constexpr (l == 1 && r == 1) return as<Words>(vpaddlq_u8(u8x16(v)));
    return plain::pairSums<l, r>(v);
}
INLINE Words signedPairSums(Bytes v) { return as<Words>(vpaddlq_s8(as<int8x16_t>(v))); }
INLINE Words addPairSums(Words w, Bytes v) { return as<Words>(vpadalq_s8(s16x8(w), as<int8x16_t>(v))); }
INLINE Ints eighths(Words w) { return as<Ints>(vrshrq_n_s16(s16x8(w), 3)); }
INLINE Bytes eighths(Halves h) { return as<Bytes>(vrshrn_high_n_s16(vrshrn_n_s16(s16x8(h.a), 3), s16x8(h.b), 3)); }
INLINE Bytes clampHalves(Ints a, Ints b) { return as<Bytes>(vqmovun_high_s16(vqmovun_s16(s16x8(a)), s16x8(b))); }
INLINE Bytes clampPairs(Ints a, Ints b) {
    return arrange(clampHalves(a, b), [](int i) { return i / 2 + i % 2 * (N / 2); });
}

INLINE Bytes lowBytes(Halves h) { return unzip<0>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Bytes highBytes(Halves h) { return unzip<1>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Bytes highBytesByTurns(Words even, Words odd) {
    return as<Bytes>(vtrn2q_u8(as<uint8x16_t>(even), as<uint8x16_t>(odd)));
}
INLINE Bytes inRow(Bytes v) { return v; }

// ---- The words of N bytes: those of the first half and of the second

constexpr int splitPart(int i) { return i / (N / 2); }
constexpr int splitIndex(int i) { return i % (N / 2); }

template <int shift = 0> INLINE Split widen(Bytes v) {
    return {as<Words>(vshll_n_u8(vget_low_u8(u8x16(v)), shift)), as<Words>(vshll_high_n_u8(u8x16(v), shift))};
}
INLINE Split sums(Bytes a, Bytes b) {
    const uint8x16_t x = u8x16(a), y = u8x16(b);
    return {as<Words>(vaddl_u8(vget_low_u8(x), vget_low_u8(y))), as<Words>(vaddl_high_u8(x, y))};
}
INLINE Split differences(Bytes a, Bytes b) {
    const uint8x16_t x = u8x16(a), y = u8x16(b);
    return {as<Words>(vsubl_u8(vget_low_u8(x), vget_low_u8(y))), as<Words>(vsubl_high_u8(x, y))};
}
INLINE Words sums(Words a, Words b) { return a + b; }
INLINE Words differences(Words a, Words b) { return a - b; }
template <int k> INLINE Words sums(Words a, Words b, Words c) { return a + c + times(b, k); }
INLINE Bytes lowBytes(Split s) { return unzip<0>(as<Bytes>(s.a), as<Bytes>(s.b)); }
INLINE Bytes highBytes(Split s) { return unzip<1>(as<Bytes>(s.a), as<Bytes>(s.b)); }
template <int shift = 0> INLINE Bytes clamp(Split s) {
    const int16x8_t low = s16x8(s.a), high = s16x8(s.b);
    if constexpr (shift > 0) return as<Bytes>(vqshrun_high_n_s16(vqshrun_n_s16(low, shift), high, shift));
    return clampHalves(as<Ints>(s.a), as<Ints>(s.b));
}
INLINE void store3(u8* d, size_t step, Split a, Split b, Split c) { store3<1>(d, step, clamp(a), clamp(b), clamp(c)); }
INLINE Halves inOrder(Split s) { return {s.a, s.b}; }
INLINE Split forPairs(Words w) {
    const uint16x8x2_t pairs = vzipq_u16(u16x8(w), u16x8(w));
    return {as<Words>(pairs.val[0]), as<Words>(pairs.val[1])};
}
INLINE Words pairMeans(Split s) { return pairSums<1, 1>(highBytes(s)) >> 1; }

// Of a constant that it sees g++ makes two, for the low halves and for the high ones.
template <int k> INLINE uint8x16_t fillFactor() {
    uint8x16_t factor = vdupq_n_u8(static_cast<u8>(k < 0 ? -k : k));
    asm("" : "+w"(factor));
    return factor;
}
template <int k> INLINE uint16x8_t addLow(uint16x8_t sum, Bytes v) {
    const uint8x8_t factor = vget_low_u8(fillFactor<k>()), low = vget_low_u8(u8x16(v));
    return k < 0 ? vmlsl_u8(sum, low, factor) : vmlal_u8(sum, low, factor);
}
template <int k> INLINE uint16x8_t addHigh(uint16x8_t sum, Bytes v) {
    const uint8x16_t factor = fillFactor<k>();
    return k < 0 ? vmlsl_high_u8(sum, u8x16(v), factor) : vmlal_high_u8(sum, u8x16(v), factor);
}
template <int k> INLINE Split sums(Bytes a, Bytes b, Bytes c) {
    const Split outer = sums(a, c);
    return {as<Words>(addLow<k>(u16x8(outer.a), b)), as<Words>(addHigh<k>(u16x8(outer.b), b))};
}
template <int j> INLINE Split products(Bytes v) {
    return {as<Words>(vmull_u8(vget_low_u8(u8x16(v)), vget_low_u8(fillFactor<j>()))),
            as<Words>(vmull_high_u8(u8x16(v), fillFactor<j>()))};
}
template <int j, int k> INLINE Split products(Bytes v, Bytes w) {
    const Split x = products<j>(v);
    return {as<Words>(addLow<k>(u16x8(x.a), w)), as<Words>(addHigh<k>(u16x8(x.b), w))};
}
template <int j, int k, int l> INLINE Split products(Bytes v, Bytes w, Bytes x) {
    const Split s = products<j, k>(v, w);
    return {as<Words>(addLow<l>(u16x8(s.a), x)), as<Words>(addHigh<l>(u16x8(s.b), x))};
}
template <Weights k> INLINE Split weigh(Bytes r, Bytes g, Bytes b) {
    const uint16x8_t add = vdupq_n_u16(static_cast<u16>(k.add));
    return {as<Words>(addLow<k.b>(addLow<k.g>(addLow<k.r>(add, r), g), b)),
            as<Words>(addHigh<k.b>(addHigh<k.g>(addHigh<k.r>(add, r), g), b))};
}

template <Weights k> INLINE Bytes luma(Bytes r, Bytes g, Bytes b) {
    constexpr bool rounded = k.add == 128; // by what narrows, then
    const Split sums = weigh<Weights{k.r, k.g, k.b, rounded ? 0 : k.add}>(r, g, b);
    const uint16x8_t low = u16x8(sums.a), high = u16x8(sums.b);
    return as<Bytes>(rounded ? vrshrn_high_n_u16(vrshrn_n_u16(low, 8), high, 8)
                             : vshrn_high_n_u16(vshrn_n_u16(low, 8), high, 8));
}
template <int bytes, Weights k> INLINE Bytes luma(const u8* s) {
    Bytes r, g, b;
    bytes == 3 ? load3(s, r, g, b) : load4(s, r, g, b);
    return luma<k>(r, g, b);
}
template <int bytes, Weights k> INLINE Halves weigh(const u8* s) {
    Bytes r, g, b;
    bytes == 3 ? load3(s, r, g, b) : load4(s, r, g, b);
    return inOrder(weigh<k>(r, g, b));
}

template <int bytes, Weights k> INLINE Quarters weighWithin(const u8* s) {
    const Halves h = weigh<bytes, k>(s);
    return {h.a, h.b};
}
using plain::quartersIndex;
using plain::quartersPart;
INLINE Bytes clamp(Quarters q) { return clampHalves(as<Ints>(q.a), as<Ints>(q.b)); }

// ---- 32 bits: of the words of the first half and of the second

using plain::wordPairSums;

INLINE Sums clampSums(Sums s, i32 low, i32 high) {
    const auto clamped = [=](Wides v) {
        return as<Wides>(vminq_s32(vmaxq_s32(as<int32x4_t>(v), vdupq_n_s32(low)), vdupq_n_s32(high)));
    };
    return {clamped(s.a), clamped(s.b)};
}

template <int from> INLINE Words wordsOf(Sums s) {
    return as<Words>(vshrn_high_n_s32(vshrn_n_s32(as<int32x4_t>(s.a), from), as<int32x4_t>(s.b), from));
}

template <int from> INLINE Words clampedWords(Sums s) {
    return as<Words>(vqshrun_high_n_s32(vqshrun_n_s32(as<int32x4_t>(s.a), from), as<int32x4_t>(s.b), from));
}

template <Weights k> INLINE Words weigh(Words r, Words g, Words b) {
    const uint32x4_t add = vdupq_n_u32(static_cast<u32>(k.add));
    const auto addLow = [](uint32x4_t sum, Words v, int factor) {
        return vmlal_n_u16(sum, vget_low_u16(u16x8(v)), static_cast<u16>(factor));
    };
    const auto addHigh = [](uint32x4_t sum, Words v, int factor) {
        return vmlal_high_n_u16(sum, u16x8(v), static_cast<u16>(factor));
    };
    const uint32x4_t low = addLow(addLow(addLow(add, r, k.r), g, k.g), b, k.b);
    const uint32x4_t high = addHigh(addHigh(addHigh(add, r, k.r), g, k.g), b, k.b);
    return as<Words>(vshrn_high_n_u32(vshrn_n_u32(low, 8), high, 8));
}

// All factors in one register, because a call holds many: a product takes the one it wants.
struct PairFactors {
    int16x4_t factors;
    INLINE PairFactors(int j, int k) : factors{static_cast<i16>(j), static_cast<i16>(k)} {}
};
struct TripleFactors {
    int16x4_t factors;
    INLINE TripleFactors(int i, int j, int k)
        : factors{static_cast<i16>(i), static_cast<i16>(j), static_cast<i16>(k)} {}
};
struct WordTriples {
    Words a, b, c;
};
INLINE WordPairs pairUp(Words a, Words b) { return {a, b}; }
INLINE WordTriples tripleUp(Words a, Words b, Words c) { return {a, b, c}; }

INLINE Sums multiply(Words w, int16x4_t factors) { // by the first
    return {as<Wides>(vmull_lane_s16(vget_low_s16(s16x8(w)), factors, 0)),
            as<Wides>(vmull_high_lane_s16(s16x8(w), factors, 0))};
}
template <int index> INLINE Sums addProducts(Sums sum, Words w, int16x4_t factors) {
    return {as<Wides>(vmlal_lane_s16(as<int32x4_t>(sum.a), vget_low_s16(s16x8(w)), factors, index)),
            as<Wides>(vmlal_high_lane_s16(as<int32x4_t>(sum.b), s16x8(w), factors, index))};
}
INLINE Sums weigh(WordPairs w, PairFactors f) { return addProducts<1>(multiply(w.a, f.factors), w.b, f.factors); }
INLINE Sums weigh(const WordTriples& w, const TripleFactors& f) {
    return addProducts<2>(addProducts<1>(multiply(w.a, f.factors), w.b, f.factors), w.c, f.factors);
}

} // namespace machine
} // namespace
} // namespace kel
