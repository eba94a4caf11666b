// Vectors of N bytes, in the compilers' own vector arithmetic. The same source is compiled once per instruction-set
// level.
//
// A vector is N / L lanes of L bytes, L being the width in which a level permutes bytes with one instruction:
//
//     level       N   L
//     baseline   16  16   (has no byte permute: correct everywhere, fast nowhere)
//     sse4       16  16
//     avx2       32  16
//     avx512     64  64
//
// Each lane works on L pixels of its own, so no level moves bytes across lanes in its main loop: memory is read and
// written lane by lane (loadLanes, storeLanes).
//
// Everything in the kernel headers has internal linkage: a function shared between levels would let the linker keep the
// one copy that was compiled for a newer machine. For the same reason nothing of std:: is used but memcpy and integer
// sequences.
#pragma once
#include <cstring>
#include <immintrin.h>
#include <utility>

#include "support/integers.h"

#define INLINE inline __attribute__((always_inline))

namespace kel {
namespace {

#if defined(__AVX512VBMI__)
constexpr int N = 64, L = 64;
#elif defined(__AVX2__)
constexpr int N = 32, L = 16;
#else
constexpr int N = 16, L = 16;
#endif

template <class Element, int bytes> struct VectorOf { typedef Element type __attribute__((vector_size(bytes))); };
using Bytes = VectorOf<u8, N>::type;
using Words = VectorOf<u16, N>::type;
using Ints = VectorOf<i16, N>::type;

template <class To, class From> INLINE To as(From v) {
    static_assert(sizeof(To) == sizeof(From));
    return reinterpret_cast<To>(v);
}

template <int count> using Indices = std::make_integer_sequence<int, count>;

// ---- Memory

template <class V = Bytes> INLINE V load(const void* p) {
    V v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class V> INLINE void store(void* p, V v) { std::memcpy(p, &v, sizeof v); }

template <class V, int... i> INLINE auto join(V low, V high, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(low, high, i...);
}
template <int from, class V, int... i> INLINE auto part(V v, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(v, v, (from + i)...);
}

// Lane k comes from p + k * step.
template <int size = N> INLINE auto loadLanes(const u8* p, size_t step) {
    if constexpr (size == L)
        return load<typename VectorOf<u8, L>::type>(p);
    else
        return join(loadLanes<size / 2>(p, step), loadLanes<size / 2>(p + size / 2 / L * step, step), Indices<size>());
}
// Lane k goes to p + k * step.
template <int size = N> INLINE void storeLanes(u8* p, size_t step, typename VectorOf<u8, size>::type v) {
    if constexpr (size == L) {
        store(p, v);
    } else {
        storeLanes<size / 2>(p, step, part<0>(v, Indices<size / 2>()));
        storeLanes<size / 2>(p + size / 2 / L * step, step, part<size / 2>(v, Indices<size / 2>()));
    }
}

// Asks for what a loop at p reads or writes some blocks later: `bytes` bytes, 1 KiB on. The hardware alone comes late
// where an image does not fit the caches: loops that write much gain up to a third. It is no access to memory, so the
// address may lie behind the buffer.
template <int bytes, bool forWriting> INLINE void prefetch(const u8* p) {
    constexpr std::uintptr_t ahead = 1024, line = 64;
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p) + ahead;
    for (std::uintptr_t i = 0; i < bytes; i += line)
        __builtin_prefetch(reinterpret_cast<const void*>(address + i), forWriting);
}

// ---- Moving bytes. `at` is a constexpr function from a position to the position that its byte comes from.

template <class At, int... i> INLINE Bytes arrange(Bytes v, At at, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(v, v, at(i)...);
}
// Anywhere in the vector: slow where N > L.
template <class At> INLINE Bytes arrange(Bytes v, At at) { return arrange(v, at, Indices<N>()); }

// Within each lane.
template <class At> INLINE Bytes permute(Bytes v, At at) {
    return arrange(v, [=](int i) { return i / L * L + at(i % L); });
}

template <class At, int... i> INLINE Bytes shuffle(Bytes a, Bytes b, At at, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(a, b, (i / L * L + at(i % L) % L + at(i % L) / L * N)...);
}
// Within each lane, from two vectors: positions from L on mean b.
template <class At> INLINE Bytes shuffle(Bytes a, Bytes b, At at) { return shuffle(a, b, at, Indices<N>()); }

template <class Is, int... i> INLINE Bytes maskWhere(Is is, std::integer_sequence<int, i...>) {
    return Bytes{static_cast<u8>(is(i % L) ? 255 : 0)...};
}
template <class Is> INLINE Bytes maskWhere(Is is) { return maskWhere(is, Indices<N>()); }
INLINE Bytes select(Bytes mask, Bytes a, Bytes b) { return mask ? a : b; }
INLINE Words select(Words mask, Words a, Words b) { return mask ? a : b; }
// a where `is` says so, else b.
template <class Is> INLINE Bytes blend(Is is, Bytes a, Bytes b) { return select(maskWhere(is), a, b); }

// a0 b0 a1 b1 ... in units of `unit` bytes, from the first or second half of each lane.
template <int unit, int half> INLINE Bytes zip(Bytes a, Bytes b) {
    return shuffle(a, b, [](int i) { return half * L / 2 + i / (2 * unit) * unit + i % unit + i / unit % 2 * L; });
}
// The even or odd bytes of a lane of a, then those of b.
template <int odd> INLINE Bytes unzip(Bytes a, Bytes b) {
    return shuffle(a, b, [](int i) { return 2 * i + odd; });
}

// Within each lane, from two vectors, at positions that only run time knows; those from L on mean b.
#if defined(__AVX512VBMI__)
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) {
    return as<Bytes>(_mm512_permutex2var_epi8(as<__m512i>(a), as<__m512i>(at), as<__m512i>(b)));
}
#elif defined(__SSSE3__)
#if defined(__AVX2__)
INLINE Bytes lookUp(Bytes v, Bytes at) { return as<Bytes>(_mm256_shuffle_epi8(as<__m256i>(v), as<__m256i>(at))); }
#else
INLINE Bytes lookUp(Bytes v, Bytes at) { return as<Bytes>(_mm_shuffle_epi8(as<__m128i>(v), as<__m128i>(at))); }
#endif
// Positions from 128 on give 0: those in b do for a, those in a (less 16) for b.
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) { return lookUp(a, at + (128 - L)) | lookUp(b, at - L); }
#else
INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) {
    u8 table[2 * N], bytes[N];
    store(table, a), store(table + N, b), store(bytes, at);
    for (u8& byte : bytes) byte = table[byte];
    return load(bytes);
}
#endif

// ---- Triples: three planes <-> x y z x y z ...
//
// Element e of a run of triples belongs to plane e % 3. The number of elements in a lane (L / unit) is no multiple of
// 3, so over the three vectors of a run every position of a lane is held once by each plane. One permute per plane
// therefore puts its elements where all three vectors want them, and the rest is blending.

constexpr int planeAt(int vector, int position, int unit) { return (vector * L + position) / unit % 3; }

template <int unit, int plane> INLINE Bytes spread3(Bytes v) {
    return permute(v, [](int p) {
        int vector = 0;
        while (planeAt(vector, p, unit) != plane) ++vector;
        return (vector * L + p) / unit / 3 * unit + p % unit;
    });
}
template <int unit, int vector> INLINE Bytes weave3(Bytes a, Bytes b, Bytes c) {
    return blend([](int p) { return planeAt(vector, p, unit) == 0; }, a,
                 blend([](int p) { return planeAt(vector, p, unit) == 1; }, b, c));
}
// Three vectors of triples a lane, lanes `step` apart.
template <int unit> INLINE void store3(u8* d, size_t step, Bytes a, Bytes b, Bytes c) {
    a = spread3<unit, 0>(a), b = spread3<unit, 1>(b), c = spread3<unit, 2>(c);
    storeLanes(d, step, weave3<unit, 0>(a, b, c));
    storeLanes(d + L, step, weave3<unit, 1>(a, b, c));
    storeLanes(d + 2 * L, step, weave3<unit, 2>(a, b, c));
}
// The same for three equal planes.
template <int unit> INLINE void store3(u8* d, size_t step, Bytes v) {
    storeLanes(d, step, permute(v, [](int p) { return p / unit / 3 * unit + p % unit; }));
    storeLanes(d + L, step, permute(v, [](int p) { return (L + p) / unit / 3 * unit + p % unit; }));
    storeLanes(d + 2 * L, step, permute(v, [](int p) { return (2 * L + p) / unit / 3 * unit + p % unit; }));
}

template <int plane> INLINE Bytes collect3(Bytes v0, Bytes v1, Bytes v2) {
    const Bytes gathered = blend([](int p) { return planeAt(0, p, 1) == plane; }, v0,
                                 blend([](int p) { return planeAt(1, p, 1) == plane; }, v1, v2));
    return permute(gathered, [](int i) { return (3 * i + plane) % L; });
}
// Three planes of bytes out of 3 L bytes a lane.
INLINE void load3(const u8* s, Bytes& a, Bytes& b, Bytes& c) {
    const Bytes v0 = loadLanes(s, 3 * L), v1 = loadLanes(s + L, 3 * L), v2 = loadLanes(s + 2 * L, 3 * L);
    a = collect3<0>(v0, v1, v2), b = collect3<1>(v0, v1, v2), c = collect3<2>(v0, v1, v2);
}

// Planes 0, 1 and 2 of four out of 4 L bytes a lane.
INLINE void load4(const u8* s, Bytes& a, Bytes& b, Bytes& c) {
    const Bytes v0 = loadLanes(s, 4 * L), v1 = loadLanes(s + L, 4 * L);
    const Bytes v2 = loadLanes(s + 2 * L, 4 * L), v3 = loadLanes(s + 3 * L, 4 * L);
    const Bytes ac0 = unzip<0>(v0, v1), ac1 = unzip<0>(v2, v3);
    a = unzip<0>(ac0, ac1), c = unzip<1>(ac0, ac1);
    b = unzip<0>(unzip<1>(v0, v1), unzip<1>(v2, v3));
}

// ---- Arithmetic

// Bytes widened to words as even and odd positions: masks and shifts, no shuffles.
struct Split {
    Words even, odd;
};
INLINE Split widen(Bytes v) { return {as<Words>(v) & 0xFF, as<Words>(v) >> 8}; }
INLINE Bytes lowBytes(Split s) { return as<Bytes>((s.even & 0xFF) | s.odd << 8); }
INLINE Bytes highBytes(Split s) { return as<Bytes>(s.even >> 8 | (s.odd & 0xFF00)); }

INLINE Words fill(int k) { return Words{} + static_cast<u16>(k); }

// g++ would turn a product with a constant it sees into shifts and additions, which is slower.
INLINE Words times(Words v, int k) {
    Words factor = fill(k);
#if !defined(__EMSCRIPTEN__)
    asm("" : "+x"(factor));
#endif
    return v * factor;
}

#if defined(__AVX512BW__)
INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(_mm512_mulhi_epi16(as<__m512i>(a), as<__m512i>(b))); }
INLINE Bytes saturate(Ints a, Ints b) { return as<Bytes>(_mm512_packus_epi16(as<__m512i>(a), as<__m512i>(b))); }
INLINE Words pairSums(Bytes v, Words k) { return as<Words>(_mm512_maddubs_epi16(as<__m512i>(v), as<__m512i>(k))); }
INLINE Bytes meanUp(Bytes a, Bytes b) { return as<Bytes>(_mm512_avg_epu8(as<__m512i>(a), as<__m512i>(b))); }
INLINE Words meanUp(Words a, Words b) { return as<Words>(_mm512_avg_epu16(as<__m512i>(a), as<__m512i>(b))); }
#elif defined(__AVX2__)
INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(_mm256_mulhi_epi16(as<__m256i>(a), as<__m256i>(b))); }
INLINE Bytes saturate(Ints a, Ints b) { return as<Bytes>(_mm256_packus_epi16(as<__m256i>(a), as<__m256i>(b))); }
INLINE Words pairSums(Bytes v, Words k) { return as<Words>(_mm256_maddubs_epi16(as<__m256i>(v), as<__m256i>(k))); }
INLINE Bytes meanUp(Bytes a, Bytes b) { return as<Bytes>(_mm256_avg_epu8(as<__m256i>(a), as<__m256i>(b))); }
INLINE Words meanUp(Words a, Words b) { return as<Words>(_mm256_avg_epu16(as<__m256i>(a), as<__m256i>(b))); }
#else
INLINE Ints mulHigh(Ints a, Ints b) { return as<Ints>(_mm_mulhi_epi16(as<__m128i>(a), as<__m128i>(b))); }
INLINE Bytes saturate(Ints a, Ints b) { return as<Bytes>(_mm_packus_epi16(as<__m128i>(a), as<__m128i>(b))); }
INLINE Bytes meanUp(Bytes a, Bytes b) { return as<Bytes>(_mm_avg_epu8(as<__m128i>(a), as<__m128i>(b))); }
INLINE Words meanUp(Words a, Words b) { return as<Words>(_mm_avg_epu16(as<__m128i>(a), as<__m128i>(b))); }
#if defined(__SSSE3__)
INLINE Words pairSums(Bytes v, Words k) { return as<Words>(_mm_maddubs_epi16(as<__m128i>(v), as<__m128i>(k))); }
#else
INLINE Words pairSums(Bytes v, Words k) {
    const Split s = widen(v);
    const Ints low = as<Ints>(k << 8) >> 8, high = as<Ints>(k) >> 8;
    return s.even * as<Words>(low) + s.odd * as<Words>(high);
}
#endif
#endif
// mulHigh:  the high words of signed products.
// saturate: words clamped to 0..255, a then b, 16 bytes at a time.
// pairSums: for each word, low byte of v * low byte of k + high byte of v * high byte of k; v unsigned, k signed.
// meanUp:   (a + b + 1) >> 1.

// (a + b) >> 1
template <class V> INLINE V mean(V a, V b) { return meanUp(a, b) - ((a ^ b) & 1); }

// (a + b + c + d) >> 2, without widening: the mean of two means, rounded up where both had dropped a half.
INLINE Bytes mean(Bytes a, Bytes b, Bytes c, Bytes d) {
    const Bytes halfAb = (a ^ b) & 1, halfCd = (c ^ d) & 1;
    const Bytes ab = meanUp(a, b) - halfAb, cd = meanUp(c, d) - halfCd;
    return meanUp(ab, cd) - ((ab ^ cd) & ~(halfAb & halfCd) & 1);
}

// Both halves clamped to 0..255, bytes back in order.
INLINE Bytes clamp(Ints even, Ints odd) {
    return arrange(saturate(even, odd), [](int i) { return i / 16 * 16 + i % 16 / 2 + i % 2 * 8; });
}

} // namespace
} // namespace kel
