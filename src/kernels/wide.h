// Sums of products of signed words, 32 bits wide. A vector of words makes two vectors of them: from its even positions
// and from its odd ones.
#pragma once
#include "kernels/vector.h"

namespace kel {
namespace {

using Wides = VectorOf<i32, N>::type;
using UnsignedWides = VectorOf<u32, N>::type;

struct Sums {
    Wides even, odd;
};
INLINE Sums operator+(Sums s, i32 k) { return {s.even + k, s.odd + k}; }

// ---- Words at even and at odd positions

template <int... i> INLINE Words mix(Words a, Words b, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(a, b, (i % 2 ? i + N / 2 : i)...);
}
// The even words of a, the odd ones of b.
INLINE Words mix(Words a, Words b) { return mix(a, b, Indices<N / 2>()); }

// Everywhere the words (even, odd).
INLINE Words fillPairs(int even, int odd) { return mix(fill(even), fill(odd)); }

// Words of a and b side by side: those of even positions, those of odd ones.
struct WordPairs {
    Words even, odd;
};
INLINE WordPairs pairUp(Words a, Words b) {
    return {mix(a, as<Words>(as<UnsignedWides>(b) << 16)), mix(as<Words>(as<UnsignedWides>(a) >> 16), b)};
}

// ---- Sums

// even word of v * even word of k + odd word of v * odd word of k
#if defined(__AVX512BW__)
INLINE Wides pairSums(Words v, Words k) { return as<Wides>(_mm512_madd_epi16(as<__m512i>(v), as<__m512i>(k))); }
#elif defined(__AVX2__)
INLINE Wides pairSums(Words v, Words k) { return as<Wides>(_mm256_madd_epi16(as<__m256i>(v), as<__m256i>(k))); }
#else
INLINE Wides pairSums(Words v, Words k) { return as<Wides>(_mm_madd_epi16(as<__m128i>(v), as<__m128i>(k))); }
#endif
INLINE Sums pairSums(WordPairs v, Words k) { return {pairSums(v.even, k), pairSums(v.odd, k)}; }

// Of each sum, 16 bits from bit `from` on.
template <int from> INLINE Words wordsOf(Sums s) {
    const UnsignedWides even = as<UnsignedWides>(s.even) >> from, odd = as<UnsignedWides>(s.odd) << (16 - from);
    return mix(as<Words>(even), as<Words>(odd));
}

INLINE Wides clamp(Wides v, i32 low, i32 high) {
    v = v > low ? v : Wides{} + low;
    return v < high ? v : Wides{} + high;
}

} // namespace
} // namespace kel
