// x86-64 from SSSE3 and SSE4.1 on: AVX2, AVX-512 with VBMI and VNNI. And WebAssembly, by emscripten's headers for SSE.
#pragma once
#include <immintrin.h>

namespace kel {
namespace {
#if defined(__AVX512VBMI__)
constexpr int N = 64, L = 64;
using Register = __m512i;
#elif defined(__AVX2__)
#define KEL_AVX2
constexpr int N = 32, L = 16;
using Register = __m256i;
#else
constexpr int N = 16, L = 16;
using Register = __m128i;
#endif
} // namespace
} // namespace kel

#include "kernels/machine/permutes.h"
#include "kernels/machine/plain.h"
#if defined(KEL_AVX2)
#include "kernels/machine/avx2.h"
#endif

// The intrinsics for this N: KEL_X86(avg_epu8) is _mm_avg_epu8, _mm256_avg_epu8 or _mm512_avg_epu8.
#if defined(__AVX512VBMI__)
#define KEL_X86(name) _mm512_##name
#elif defined(__AVX2__)
#define KEL_X86(name) _mm256_##name
#else
#define KEL_X86(name) _mm_##name
#endif

namespace kel {
namespace {
namespace machine {

// ---- Pixels in memory

using permutes::load4;
INLINE void load4(const u8* s, Bytes (&v)[4]) { plain::load4(s, v); }
using permutes::wordsAt;
using plain::load2;
using plain::loadRow;
using plain::moveOn;
using plain::movesAsItLoads;
using plain::store2;
using plain::store4;
using plain::storeRow;
constexpr bool separatesAsItLoads = false;
using plain::pacesLoops;

#if defined(KEL_AVX2)
using avx2::load3;
using avx2::store3;
using avx2::store3of4;
#else
using permutes::load3;
using permutes::store3;
#if defined(__AVX512VBMI__)
INLINE void putQuarter(u8* d, Bytes v) { _mm512_mask_storeu_epi8(d, 0x7777777777777777u, as<Register>(v)); }
#else
INLINE void putQuarter(u8* d, Bytes v) { permutes::blendQuarter(d, v); }
#endif
INLINE void store3of4(u8* d, Bytes a, Bytes b, Bytes c) { permutes::store3of4(d, a, b, c, putQuarter); }
INLINE void store3of4(u8* d, Bytes v) { permutes::store3of4(d, v, putQuarter); }
#endif

#if defined(__AVX512VBMI__)
INLINE void storeQuads(u8* d, Bytes v) { putQuarter(d, v); }
#else
INLINE void storeQuads(u8* d, Bytes v) {
    store(d, (load(d) & maskWhere([](int i) { return i % 4 == 3; })) | v);
}
#endif

using plain::prefetch;
using plain::prefetchDistance;

// ---- Bytes and words

#if defined(__AVX512VBMI__)
template <class At, int... i> INLINE Bytes place(Bytes v, At, std::integer_sequence<int, i...>) {
    constexpr u64 wanted = ((u64{At()(i) >= 0} << i) | ...);
    const Bytes from{static_cast<u8>(At()(i) & (N - 1))...};
    return as<Bytes>(_mm512_maskz_permutexvar_epi8(wanted, as<Register>(from), as<Register>(v)));
}
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) {
    return as<Bytes>(_mm512_permutex2var_epi8(as<Register>(a), as<Register>(at), as<Register>(b)));
}
#else
template <class At, int... i> INLINE Bytes place(Bytes v, At at, std::integer_sequence<int, i...>) {
    return as<Bytes>(KEL_X86(shuffle_epi8)(as<Register>(v), as<Register>(kept(Bytes{static_cast<u8>(at(i % L))...}))));
}
INLINE Bytes lookUp(Bytes v, Bytes at) { return as<Bytes>(KEL_X86(shuffle_epi8)(as<Register>(v), as<Register>(at))); }
// Positions from 128 on give 0: those in b do for a, those in a (less 16) for b.
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) { return lookUp(a, at + (128 - L)) | lookUp(b, at - L); }
#endif

template <class At> INLINE Bytes place(Bytes v, At at) { return place(v, at, Indices<N>()); }

#if defined(KEL_AVX2)
// A blend takes two or three micro-operations in vectors of 32 bytes, and on Haswell all in the unit that permutes bytes.
INLINE void exchange(Bytes mask, Bytes& a, Bytes& b) {
    const Bytes difference = (a ^ b) & mask;
    a ^= difference, b ^= difference;
}
#else
using plain::exchange;
#endif

INLINE Bytes meanUp(Bytes a, Bytes b) { return as<Bytes>(KEL_X86(avg_epu8)(as<Register>(a), as<Register>(b))); }
INLINE Words meanUp(Words a, Words b) { return as<Words>(KEL_X86(avg_epu16)(as<Register>(a), as<Register>(b))); }
template <class V> INLINE V mean(V a, V b) { return meanUp(a, b) - ((a ^ b) & 1); }
// Without widening: the mean of two means, rounded up where both had dropped a half.
INLINE Bytes mean(Bytes a, Bytes b, Bytes c, Bytes d) {
    const Bytes halfAb = (a ^ b) & 1, halfCd = (c ^ d) & 1;
    const Bytes ab = mean(a, b), cd = mean(c, d);
    return meanUp(ab, cd) - ((ab ^ cd) & ~(halfAb & halfCd) & 1);
}

INLINE Bytes addSaturated(Bytes a, Bytes b) { return as<Bytes>(KEL_X86(adds_epu8)(as<Register>(a), as<Register>(b))); }

#if defined(__AVX512VBMI__)
INLINE u64 zeros(Bytes v) { return _mm512_testn_epi8_mask(as<Register>(v), as<Register>(v)); }
#else
INLINE u64 zeros(Bytes v) { return static_cast<u32>(KEL_X86(movemask_epi8)(as<Register>(v == 0))); }
#endif

INLINE Words swapped(Words w) {
    return as<Words>(permute(as<Bytes>(w), [](int i) { return i ^ 1; }));
}

// g++ would turn a product with a constant it sees into shifts and additions, which is slower.
INLINE Words times(Words v, int k) {
    Words factor = fill(k);
#if !defined(__wasm__)
    asm("" : "+x"(factor));
#endif
    return v * factor;
}

using plain::addPairSums;
using plain::addSigned;
using plain::addsSignedBytes;
using plain::meanSigned;
using plain::productDown;
INLINE Bytes highBytes(Bytes high, Bytes low, int by) { return plain::highBytes(high, low, by); }
// A shift by a variable count is two micro-operations.
INLINE Words shiftUp(Words w, int by) { return w * fill(1 << by); }

#if defined(__wasm__)
// Which has no such product, but that of word pairs; emscripten's header makes one of four wide products and a shuffle.
INLINE Ints mulHigh(Ints a, Ints b) {
    const auto high = [](Bytes p, Bytes q) {
        return _mm_srai_epi32(_mm_madd_epi16(as<Register>(p), as<Register>(q)), 16);
    };
    const Bytes x = as<Bytes>(a), y = as<Bytes>(b);
    return as<Ints>(_mm_packs_epi32(high(zip<2, 0>(x, Bytes{}), kept(zip<2, 0>(y, Bytes{}))),
                                    high(zip<2, 1>(x, Bytes{}), kept(zip<2, 1>(y, Bytes{})))));
}
using plain::eighths;
#else
INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(KEL_X86(mulhi_epi16)(as<Register>(a), as<Register>(b))); }
INLINE Bytes eighths(Halves h) { return plain::eighths(h); }
INLINE Ints eighths(Words w) { return as<Ints>(KEL_X86(mulhrs_epi16)(as<Register>(w), as<Register>(fill(1 << 12)))); }
#endif

using plain::fillBytePairs;
INLINE Words weighPairs(Bytes v, Words factors) {
    return as<Words>(KEL_X86(maddubs_epi16)(as<Register>(v), as<Register>(factors)));
}

INLINE Words signedPairSums(Bytes v) { return weighPairs(Bytes{} + 1, as<Words>(v)); }
template <int l, int r> INLINE Words pairSums(Bytes v) { return weighPairs(v, fillBytePairs(l, r)); }

// 16 bytes by 16 bytes, the words of a before those of b.
INLINE Bytes pack(Ints a, Ints b) { return as<Bytes>(KEL_X86(packus_epi16)(as<Register>(a), as<Register>(b))); }
INLINE Bytes clampHalves(Ints a, Ints b) {
    return arrange(pack(a, b), [](int i) { return i / L * L + i % (L / 2) / 8 * 16 + i % L / (L / 2) * 8 + i % 8; });
}
INLINE Bytes clampPairs(Ints a, Ints b) {
    return arrange(pack(a, b), [](int i) { return i / 16 * 16 + i % 16 / 2 + i % 2 * 8; });
}

#if defined(__AVX512VBMI__)
INLINE Bytes lowBytes(Halves h) { return unzip<0>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Bytes highBytes(Halves h) { return unzip<1>(as<Bytes>(h.a), as<Bytes>(h.b)); }
#else
// Words below 256 as bytes.
INLINE Bytes packed(Words a, Words b) { return as<Bytes>(KEL_X86(packus_epi16)(as<Register>(a), as<Register>(b))); }
INLINE Bytes lowBytes(Halves h) { return packed(h.a & 0xFF, h.b & 0xFF); }
INLINE Bytes highBytes(Halves h) { return packed(h.a >> 8, h.b >> 8); }
#endif
using plain::highBytesByTurns;
#if defined(KEL_AVX2)
INLINE Bytes inRow(Bytes v) { return as<Bytes>(_mm256_permute4x64_epi64(as<Register>(v), 0xD8)); }
#else
INLINE Bytes inRow(Bytes v) { return v; }
#endif

// ---- The words of N bytes: those at even and at odd positions

using plain::forPairs;
using plain::inOrder;
using plain::pairMeans;
using plain::products;
using plain::splitIndex;
using plain::splitPart;

INLINE Bytes lowBytes(Split s) { return plain::lowBytes(s); }
INLINE Bytes highBytes(Split s) { return plain::highBytes(s); }
template <int shift = 0> INLINE Split widen(Bytes v) {
    if constexpr (shift == 0) return plain::widen(v);
    return {weighPairs(v, fillBytePairs(1 << shift, 0)), weighPairs(v, fillBytePairs(0, 1 << shift))};
}
template <int shift = 0> INLINE Bytes clamp(Split s) {
    return clampPairs(as<Ints>(s.a) >> shift, as<Ints>(s.b) >> shift);
}
using plain::differences;
using plain::sums;

// Packed planes are spread from where pack() leaves them.
#if defined(__AVX512VBMI__)
INLINE void store3(u8* d, size_t step, Split x, Split y, Split z) {
    const auto packed = [](Split s) { return pack(as<Ints>(s.a), as<Ints>(s.b)); };
    constexpr auto at = [](int i) { return i / 16 * 16 + i % 16 / 2 + i % 2 * 8; };
    const Bytes a = permutes::spread3<1, 0>(packed(x), at), b = permutes::spread3<1, 1>(packed(y), at);
    const Bytes c = permutes::spread3<1, 2>(packed(z), at);
    storeLanes(d, step, permutes::weave3<1, 0>(a, b, c));
    storeLanes(d + L, step, permutes::weave3<1, 1>(a, b, c));
    storeLanes(d + 2 * L, step, permutes::weave3<1, 2>(a, b, c));
}
#else
// Six bytes of two pixels are three words, x y, z x and y z: words blend faster than bytes.
template <int vector> INLINE Bytes weaveWords(Words a, Words b, Words c) {
    constexpr auto planeOf = [](int i) { return permutes::planeAt(vector, 2 * (i % (L / 2)), 2); };
    const Words others = blendWords([=](int i) { return planeOf(i) == 1; }, b, c);
    return as<Bytes>(blendWords([=](int i) { return planeOf(i) == 0; }, a, others));
}
INLINE void store3(u8* d, size_t step, Split x, Split y, Split z) {
    const auto packed = [](Words v, Words w) { return pack(as<Ints>(v), as<Ints>(w)); };
    constexpr auto ofHalves = [](int i) { return i / 2 + i % 2 * (L / 2); }; // a word of a byte of each half of a lane
    const Words a = as<Words>(permutes::spread3<2, 0>(packed(x.a, y.a), ofHalves));
    const Words b = as<Words>(permutes::spread3<2, 1>(packed(z.a, x.b), ofHalves));
    const Words c = as<Words>(permutes::spread3<2, 2>(packed(y.b, z.b), ofHalves));
    storeLanes(d, step, weaveWords<0>(a, b, c));
    storeLanes(d + L, step, weaveWords<1>(a, b, c));
    storeLanes(d + 2 * L, step, weaveWords<2>(a, b, c));
}
#endif

// Byte pairs of red and blue make one multiply-add, green a multiplication.
template <Weights k> INLINE Split weigh(Bytes red, Bytes green, Bytes blue) {
    const Words r = as<Words>(red), b = as<Words>(blue), factors = fillBytePairs(k.r, k.b);
    const Bytes even = as<Bytes>((r & 0xFF) | b << 8), odd = as<Bytes>(r >> 8 | (b & 0xFF00));
    const Split g = widen(green);
    return {weighPairs(even, factors) + times(g.a, k.g) + fill(k.add),
            weighPairs(odd, factors) + times(g.b, k.g) + fill(k.add)};
}

// With each channel = 256 h + l this is exactly H + (L >> 8), H and L being the sums over the high and the low bytes.
template <Weights k> INLINE Words weigh(Words r, Words g, Words b) {
    const Words factors = fillBytePairs(k.r, k.b);
    const Bytes low = as<Bytes>((r & 0xFF) | b << 8), high = as<Bytes>(r >> 8 | (b & 0xFF00));
    const Words sumLow = weighPairs(low, factors) + times(g & 0xFF, k.g) + fill(k.add);
    return weighPairs(high, factors) + times(g >> 8, k.g) + (sumLow >> 8);
}

#if defined(__AVX512VBMI__)
template <Weights k> INLINE Bytes luma(Bytes r, Bytes g, Bytes b) { return highBytes(weigh<k>(r, g, b)); }
#else
// Green is shared out between red and blue: the weights are signed bytes, and the products of two bytes signed words.
constexpr Weights redAndGreen(Weights k) { return {k.r, k.g < 128 - k.r ? k.g : 128 - k.r, 0, 0}; }
constexpr Weights greenAndBlue(Weights k) { return {0, k.g - redAndGreen(k).g, k.b, 0}; }
template <Weights k> INLINE Bytes luma(Bytes r, Bytes g, Bytes b) {
    const Words red = fillBytePairs(k.r, redAndGreen(k).g), blue = fillBytePairs(k.b, greenAndBlue(k).g);
    const auto half = [=](Bytes rg, Bytes bg) { return weighPairs(rg, red) + weighPairs(bg, blue) + fill(k.add); };
    return highBytes(Halves{half(zip<1, 0>(r, g), zip<1, 0>(b, g)), half(zip<1, 1>(r, g), zip<1, 1>(b, g))});
}
#endif

// ---- 32 bits: of the words at even and at odd positions

using plain::clampedWords;
using plain::clampSums;
using plain::wordsOf;

// Even word of v * even word of k + odd word of v * odd word of k, signed.
INLINE Wides wordPairSums(Words v, Words k) { return as<Wides>(KEL_X86(madd_epi16)(as<Register>(v), as<Register>(k))); }
INLINE Words fillWordPairs(int even, int odd) { return mix(fill(even), fill(odd)); }

// Words of a and b side by side: those of even positions, those of odd ones.
INLINE WordPairs pairUp(Words a, Words b) {
    return {mix(a, as<Words>(as<UnsignedWides>(b) << 16)), mix(as<Words>(as<UnsignedWides>(a) >> 16), b)};
}
struct PairFactors {
    Words factors;
    INLINE PairFactors(int j, int k) : factors(fillWordPairs(j, k)) {}
};
INLINE Sums weigh(WordPairs w, const PairFactors& f) {
    return {wordPairSums(w.a, f.factors), wordPairSums(w.b, f.factors)};
}

// The third words stay as they are, and meet a factor in every other word.
struct WordTriples {
    WordPairs ab;
    Words c;
};
INLINE WordTriples tripleUp(Words a, Words b, Words c) { return {pairUp(a, b), c}; }
struct TripleFactors {
    PairFactors ab;
    Words evenC, oddC;
    INLINE TripleFactors(int i, int j, int k) : ab(i, j), evenC(fillWordPairs(k, 0)), oddC(fillWordPairs(0, k)) {}
};
INLINE Sums weigh(const WordTriples& w, const TripleFactors& f) {
    return weigh(w.ab, f.ab) + Sums{wordPairSums(w.c, f.evenC), wordPairSums(w.c, f.oddC)};
}

// ---- Luma of pixels that stay interleaved

// L / 4 pixels a lane as quads: quarter q of the lane's pixels. The last bytes become green again.
template <int bytes, int q> INLINE Bytes quads(const u8* s) {
    if constexpr (bytes == 4 && N == 64) return load(s + q * N); // whose last bytes do not count there
    constexpr int before = bytes == 3 && q == 3 ? L / 4 : 0;     // so that nothing behind is read
    return permute(loadLanes(s + q * (bytes * L / 4) - before, bytes * L),
                   [](int i) { return before + i / 4 * bytes + (i % 4 == 3 ? 1 : i % 4); });
}
#if defined(__AVX512VBMI__)
// start + the sums of products: unsigned bytes of v times signed ones of w.
INLINE UnsignedWides quadSums(int start, Bytes v, Bytes w) {
    return as<UnsignedWides>(_mm512_dpbusd_epi32(as<Register>(Wides{} + start), as<Register>(v), as<Register>(w)));
}
template <Weights k> INLINE Bytes fillQuads() { return as<Bytes>(Wides{} + (k.r | k.g << 8 | k.b << 16)); }

// Green weighs more than a signed byte can say: the samples are signed, less 128.
template <int bytes, Weights k> INLINE Bytes luma(const u8* s) {
    const auto sums = [](Bytes quads) { return quadSums(k.add + (1 << 15), fillQuads<k>(), quads ^ 0x80); };
    const UnsignedWides s0 = sums(quads<bytes, 0>(s)), s1 = sums(quads<bytes, 1>(s));
    const UnsignedWides s2 = sums(quads<bytes, 2>(s)), s3 = sums(quads<bytes, 3>(s));
    const UnsignedWides mixed = (s0 >> 8 & 0xFF) | (s1 & 0xFF00) | (s2 << 8 & 0xFF0000) | (s3 << 16 & 0xFF000000);
    return arrange(as<Bytes>(mixed), [](int i) { return i % (N / 4) * 4 + i / (N / 4); });
}
template <int bytes, Weights k> INLINE Halves weigh(const u8* s) {
    static_assert(k.g < 128);
    const auto words = [](Bytes a, Bytes b) {
        const UnsignedWides x = quadSums(k.add, a, fillQuads<k>()), y = quadSums(k.add, b, fillQuads<k>());
        return as<Words>(shuffle(as<Bytes>(x), as<Bytes>(y), [](int i) { return i / 2 * 4 + i % 2; }));
    };
    return {words(quads<bytes, 0>(s), quads<bytes, 1>(s)), words(quads<bytes, 2>(s), quads<bytes, 3>(s))};
}
#else
template <Weights k> INLINE Words weighQuads(Bytes a, Bytes b) {
    constexpr Weights red = redAndGreen(k), blue = greenAndBlue(k);
    const Words weights = mix(fillBytePairs(red.r, red.g), fillBytePairs(blue.b, blue.g));
    const auto low = as<Register>(wordPairSums(weighPairs(a, weights), fill(1)));
    const auto high = as<Register>(wordPairSums(weighPairs(b, weights), fill(1)));
    return as<Words>(KEL_X86(packus_epi32)(low, high)) + fill(k.add);
}
template <int bytes, Weights k> INLINE Halves weigh(const u8* s) {
    return {weighQuads<k>(quads<bytes, 0>(s), quads<bytes, 1>(s)),
            weighQuads<k>(quads<bytes, 2>(s), quads<bytes, 3>(s))};
}
template <int bytes, Weights k> INLINE Bytes luma(const u8* s) { return highBytes(weigh<bytes, k>(s)); }
#endif

#if defined(KEL_AVX2)
// Two lanes of quads that lie side by side in memory take one load: the first one's pixels are at its end.
template <int bytes> INLINE Bytes quadsInRow(const u8* s) {
    return avx2::placeEach(load(s - (L - bytes * L / 4)), [](int i) {
        return (i < L ? L - bytes * L / 4 : 0) + i % L / 4 * bytes + (i % 4 == 3 ? 1 : i % 4);
    });
}
template <int bytes, Weights k> INLINE Quarters weighWithin(const u8* s) {
    const auto quads = [=](int q) { return quadsInRow<bytes>(s + q * bytes * (N / 4)); };
    return {weighQuads<k>(quads(0), quads(1)), weighQuads<k>(quads(2), quads(3))};
}
constexpr int quartersPart(int i) { return i / (N / 2); }
constexpr int quartersIndex(int i) { return i % 8 / 4 * 8 + i % (N / 2) / 8 * 4 + i % 4; }
INLINE Bytes clamp(Quarters q) {
    const Register packed = as<Register>(pack(as<Ints>(q.a), as<Ints>(q.b)));
    return as<Bytes>(_mm256_permutevar8x32_epi32(packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
}
#else
template <int bytes, Weights k> INLINE Quarters weighWithin(const u8* s) {
    const Halves h = weigh<bytes, k>(s);
    return {h.a, h.b};
}
using plain::quartersIndex;
using plain::quartersPart;
INLINE Bytes clamp(Quarters q) { return clampHalves(as<Ints>(q.a), as<Ints>(q.b)); }
#endif

} // namespace machine
} // namespace
} // namespace kel
