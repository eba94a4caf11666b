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
constexpr bool separatesAsItLoads = false;

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

using plain::prefetch;

// ---- Bytes and words

#if defined(__AVX512VBMI__)
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) {
    return as<Bytes>(_mm512_permutex2var_epi8(as<Register>(a), as<Register>(at), as<Register>(b)));
}
#else
INLINE Bytes lookUp(Bytes v, Bytes at) { return as<Bytes>(KEL_X86(shuffle_epi8)(as<Register>(v), as<Register>(at))); }
// Positions from 128 on give 0: those in b do for a, those in a (less 16) for b.
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) { return lookUp(a, at + (128 - L)) | lookUp(b, at - L); }
#endif

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

INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(KEL_X86(mulhi_epi16)(as<Register>(a), as<Register>(b))); }

using plain::fillBytePairs;
INLINE Words weighPairs(Bytes v, Words factors) {
    return as<Words>(KEL_X86(maddubs_epi16)(as<Register>(v), as<Register>(factors)));
}

template <int l, int r> INLINE Words pairSums(Bytes v) { return weighPairs(v, fillBytePairs(l, r)); }

INLINE Bytes clampPairs(Ints a, Ints b) {
    const Bytes packed = as<Bytes>(KEL_X86(packus_epi16)(as<Register>(a), as<Register>(b)));
    return arrange(packed, [](int i) { return i / 16 * 16 + i % 16 / 2 + i % 2 * 8; });
}

// ---- The words of N bytes: those at even and at odd positions

using plain::forPairs;
using plain::highBytes;
using plain::inOrder;
using plain::lowBytes;
using plain::pairMeans;
using plain::splitIndex;
using plain::splitPart;

template <int shift = 0> INLINE Split widen(Bytes v) {
    if constexpr (shift == 0) return plain::widen(v);
    return {weighPairs(v, fillBytePairs(1 << shift, 0)), weighPairs(v, fillBytePairs(0, 1 << shift))};
}
INLINE Bytes clamp(Split s) { return clampPairs(as<Ints>(s.a), as<Ints>(s.b)); }

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

// ---- 32 bits: of the words at even and at odd positions

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

INLINE UnsignedWides quadSums(Bytes weights, Bytes samples, int add) {
#if defined(__AVX512VNNI__)
    const Wides start = Wides{} + (add + (1 << 15));
    return as<UnsignedWides>(_mm512_dpbusd_epi32(as<Register>(start), as<Register>(weights), as<Register>(samples)));
#else
    const Words pairs = weighPairs(weights, as<Words>(samples)) + fill(add / 2 + (1 << 14));
    return as<UnsignedWides>(pairs) + (as<UnsignedWides>(pairs) >> 16);
#endif
}

} // namespace machine
} // namespace
} // namespace kel
