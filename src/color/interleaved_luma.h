// Luma of pixels that stay packed: their bytes are weighed where they lie.
#pragma once
#include "color/rgb_readers.h"

namespace kel {
namespace {

// Three bytes become four, the last being any of the vector's.
struct Pixels24Reader : Reader<24> {
    static INLINE Pixels32 get(const u8* s) { return {{quarter<0>(s), quarter<1>(s), quarter<2>(s), quarter<3>(s)}}; }

private:
    // The last one is read from a little before, to end with the pixels.
    template <int q> static INLINE Bytes quarter(const u8* s) {
        constexpr int before = q == 3 ? L / 4 : 0;
        const Bytes v = loadLanes(s + q * (3 * N / 4) - before, 3 * L / 4);
        return permute(v, [](int i) { return (before + i / 4 * 3 + i % 4) % L; });
    }
};

// The weights add up to 256 and the samples are taken less 128: the sum of the products is -2^15 to 2^15 - 1.
template <Order order, Weights k> struct InterleavedLuma {
    static_assert(k.r + k.g + k.b == 256 && k.r >= 0 && k.b >= 0 && k.add % 2 == 0);
    static constexpr int bytes = 1;
    static constexpr bool keeps = false;

    static INLINE void put(u8* d, const Pixels32& p) {
        constexpr int first = order == Order::rgb ? k.r : k.b, third = order == Order::rgb ? k.b : k.r;
        const Bytes weights = as<Bytes>(UnsignedWides{} + static_cast<u32>(first | k.g << 8 | third << 16));
        const auto sums = [=](int q) { return quadSums(weights, p.quarters[q] ^ 0x80, k.add); };
        const UnsignedWides mixed =
            (sums(0) >> 8 & 0xFF) | (sums(1) & 0xFF00) | (sums(2) << 8 & 0xFF0000) | (sums(3) << 16 & 0xFF000000);
        store(d, arrange(as<Bytes>(mixed), [](int i) { return i % (N / 4) * 4 + i / (N / 4); }));
    }
};

// WholePixels reads pixels that stay interleaved, Separated colours.
template <class WholePixels, class Separated, Order order> constexpr ByOutput<Run> lumas() {
    if constexpr (separatesAsItLoads) return runs<Separated>(mono8);
    ByOutput<Run> table;
    table.set(OrvOutputMono8, runKernel<WholePixels, InterleavedLuma<order, bt601>>);
    table.set(OrvOutputMono8Rec709, runKernel<WholePixels, InterleavedLuma<order, bt709>>);
    return table;
}

} // namespace
} // namespace kel
