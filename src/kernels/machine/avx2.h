// Pixels in memory for AVX2, whose blends by bytes take two or three micro-operations: planes are put together by "or"
// and by double words instead.
#pragma once
#include "kernels/machine/permutes.h"

namespace kel {
namespace {
namespace avx2 {

template <class At, int... i> INLINE Bytes placeEach(Bytes v, At at, std::integer_sequence<int, i...>) {
    return as<Bytes>(_mm256_shuffle_epi8(as<__m256i>(v), as<__m256i>(Bytes{static_cast<u8>(at(i))...})));
}
// At each position of the vector a byte of the same lane; positions below 0 make 0.
template <class At> INLINE Bytes placeEach(Bytes v, At at) { return placeEach(v, at, Indices<N>()); }

// Double words of two vectors, in both lanes alike: 0 to 3 mean a, 4 to 7 b.
template <int i, int j, int k, int l> INLINE Bytes pick(Bytes a, Bytes b) {
    constexpr auto from = [](int lane, int at) { return at / 4 * 8 + lane * 4 + at % 4; };
    return as<Bytes>(__builtin_shufflevector(as<UnsignedWides>(a), as<UnsignedWides>(b), from(0, i), from(0, j),
                                             from(0, k), from(0, l), from(1, i), from(1, j), from(1, k), from(1, l)));
}

// ---- Triples

// Quarter q of a lane's 3 L bytes, plane by plane: a double word of each, and an empty one (-1), as listed.
template <int q, int... plane> INLINE Bytes quarter(const u8* s) {
    constexpr int before = q == 3 ? L / 4 : 0; // so that nothing behind is read
    return placeEach(loadLanes(s + q * (3 * L / 4) - before, 3 * L), [](int i) {
        constexpr int planes[] = {plane...};
        const int wanted = planes[i % L / 4];
        return wanted < 0 ? -1 : before + i % 4 * 3 + wanted;
    });
}
INLINE void load3(const u8* s, Bytes& x, Bytes& y, Bytes& z) {
    const Bytes q0 = quarter<0, 0, 2, 1, -1>(s), q1 = quarter<1, 2, 0, -1, 1>(s);
    const Bytes q2 = quarter<2, 1, -1, 0, 2>(s), q3 = quarter<3, -1, 1, 2, 0>(s);
    const Bytes ab = pick<0, 5, 2, 7>(q0, q1), ba = pick<0, 5, 2, 7>(q2, q3);   // a0 a1 b0 b1, b2 b3 a2 a3
    const Bytes c10 = pick<0, 5, 2, 7>(q1, q0), c32 = pick<0, 5, 2, 7>(q3, q2); // c1 c0 . ., . . c3 c2
    const Bytes c = pick<0, 1, 6, 7>(c10, c32);
    x = pick<0, 1, 6, 7>(ab, ba);
    y = pick<2, 3, 4, 5>(ab, ba);
    z = pick<1, 0, 3, 2>(c, c);
}

// One vector of triples. a: spread; bc: b and c by turns, from element `first` on.
template <int unit, int vector, int first> INLINE Bytes weave3(Bytes a, Bytes bc) {
    const auto isA = [](int i) { return permutes::planeAt(vector, i % L, unit) == 0; };
    const Bytes others = placeEach(bc, [=](int i) {
        const int p = i % L, element = (vector * L + p) / unit / 3, plane = permutes::planeAt(vector, p, unit);
        return isA(i) ? -1 : (2 * (element - first) + plane - 1) * unit + p % unit;
    });
    return (a & maskWhere(isA)) | others;
}
template <int unit> INLINE void store3(u8* d, size_t step, Bytes a, Bytes b, Bytes c) {
    constexpr int quarter = L / unit / 4; // elements
    const Bytes low = zip<unit, 0>(b, c), high = zip<unit, 1>(b, c);
    a = permutes::spread3<unit, 0>(a);
    storeLanes(d, step, weave3<unit, 0, 0>(a, low));
    storeLanes(d + L, step, weave3<unit, 1, quarter>(a, pick<2, 3, 4, 5>(low, high)));
    storeLanes(d + 2 * L, step, weave3<unit, 2, 2 * quarter>(a, high));
}

// The same for three equal planes. Bytes, whose lanes are stored side by side, take half the stores as whole vectors.
template <int vector> INLINE Bytes tripled(Bytes v) {
    return placeEach(v, [](int i) { return (vector * N + i) / 3 % L; });
}
template <int lane> INLINE Bytes twice(Bytes v) {
    return as<Bytes>(_mm256_permute4x64_epi64(as<__m256i>(v), lane == 0 ? 0x44 : 0xEE));
}
template <int unit> INLINE void store3(u8* d, size_t step, Bytes v) {
    if (unit > 1 || step != 3 * L) return permutes::store3<unit>(d, step, v);
    store(d, tripled<0>(twice<0>(v)));
    store(d + N, tripled<1>(v));
    store(d + 2 * N, tripled<2>(twice<1>(v)));
}

// ---- Quadruples. v: 0 at every fourth byte

INLINE Bytes withFourths(Bytes v, Bytes old) {
    return (old & maskWhere([](int i) { return i % 4 == 3; })) | v;
}

// Quads of bytes taken by turns into the first and the second lane: zip() of their halves is in the order of memory then.
INLINE Bytes quadsByTurns(Bytes v) {
    return as<Bytes>(_mm256_permutevar8x32_epi32(as<__m256i>(v), _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7)));
}
INLINE void store3of4(u8* d, Bytes a, Bytes b, Bytes c) {
    a = quadsByTurns(a), b = quadsByTurns(b), c = quadsByTurns(c);
    const auto put = [](u8* to, Bytes v) { store(to, withFourths(v, load(to))); };
    const Bytes ab0 = zip<1, 0>(a, b), c0 = zip<1, 0>(c, Bytes{}), ab1 = zip<1, 1>(a, b), c1 = zip<1, 1>(c, Bytes{});
    put(d, zip<2, 0>(ab0, c0));
    put(d + N, zip<2, 1>(ab0, c0));
    put(d + 2 * N, zip<2, 0>(ab1, c1));
    put(d + 3 * N, zip<2, 1>(ab1, c1));
}
INLINE void store3of4(u8* d, Bytes v) {
    const Bytes low = twice<0>(v), high = twice<1>(v);
    const auto put = [](u8* to, Bytes grey, auto half) {
        const Bytes thrice =
            placeEach(grey, [](int i) { return i % 4 == 3 ? -1 : decltype(half)::value * L / 2 + i / 4; });
        store(to, withFourths(thrice, load(to)));
    };
    put(d, low, std::integral_constant<int, 0>());
    put(d + N, low, std::integral_constant<int, 1>());
    put(d + 2 * N, high, std::integral_constant<int, 0>());
    put(d + 3 * N, high, std::integral_constant<int, 1>());
}

} // namespace avx2
} // namespace
} // namespace kel
