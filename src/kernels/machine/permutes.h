// Pixels in memory for machines that permute bytes with one instruction, but do not interleave them as they load and
// store.
#pragma once
#include "kernels/vector.h"

namespace kel {
namespace {
namespace permutes {

template <class At> INLINE Words wordsAt(const u8* s, size_t step, At at) {
    return as<Words>(permute(loadLanes(s, step), [=](int i) { return at(i / 2) + i % 2; }));
}

// ---- Triples: three planes <-> x y z x y z ...
//
// Element e of a run of triples belongs to plane e % 3. The number of elements in a lane (L / unit) is no multiple of
// 3, so over the three vectors of a run every position of a lane is held once by each plane. One permute per plane
// therefore puts its elements where all three vectors want them, and the rest is blending.

constexpr int planeAt(int vector, int position, int unit) { return (vector * L + position) / unit % 3; }

// at: where an element's bytes are, if not in order.
template <int unit, int plane, class At> INLINE Bytes spread3(Bytes v, At at) {
    return permute(v, [=](int p) {
        int vector = 0;
        while (planeAt(vector, p, unit) != plane) ++vector;
        return at((vector * L + p) / unit / 3 * unit + p % unit);
    });
}
template <int unit, int plane> INLINE Bytes spread3(Bytes v) {
    return spread3<unit, plane>(v, [](int i) { return i; });
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

// ---- Quadruples

// putQuarter(d, v) stores a vector but for every fourth byte.
template <class PutQuarter> INLINE void store3of4(u8* d, Bytes a, Bytes b, Bytes c, const PutQuarter& putQuarter) {
    const Bytes low = zip<1, 0>(a, b), low3 = zip<1, 0>(c, c), high = zip<1, 1>(a, b), high3 = zip<1, 1>(c, c);
    putQuarter(d, zip<2, 0>(low, low3));
    putQuarter(d + L, zip<2, 1>(low, low3));
    putQuarter(d + 2 * L, zip<2, 0>(high, high3));
    putQuarter(d + 3 * L, zip<2, 1>(high, high3));
}
template <class PutQuarter> INLINE void store3of4(u8* d, Bytes v, const PutQuarter& putQuarter) {
    putQuarter(d, permute(v, [](int i) { return i / 4; }));
    putQuarter(d + L, permute(v, [](int i) { return (L + i) / 4; }));
    putQuarter(d + 2 * L, permute(v, [](int i) { return (2 * L + i) / 4; }));
    putQuarter(d + 3 * L, permute(v, [](int i) { return (3 * L + i) / 4; }));
}
INLINE void blendQuarter(u8* d, Bytes v) {
    storeLanes(d, 4 * L, blend([](int i) { return i % 4 == 3; }, loadLanes(d, 4 * L), v));
}

} // namespace permutes
} // namespace
} // namespace kel
