// Luma of pixels that stay packed: their bytes are weighed where they lie.
#pragma once
#include "color/rgb_readers.h"
#include "kernels/wide.h"

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

// In the low word of every four bytes: the sum of their products with the weights, + 2^15 + add. The weights add up to
// 256 and the samples are taken less 128, so the sum of the products is -2^15 to 2^15 - 1.
INLINE UnsignedWides quadSums(Bytes weights, Bytes samples, int add) {
    const Bytes less = samples ^ 0x80;
#if defined(__AVX512VNNI__)
    const Wides start = Wides{} + (add + (1 << 15));
    return as<UnsignedWides>(_mm512_dpbusd_epi32(as<__m512i>(start), as<__m512i>(weights), as<__m512i>(less)));
#else
    const Words pairs = pairSums(weights, as<Words>(less)) + fill(add / 2 + (1 << 14));
    return as<UnsignedWides>(pairs) + (as<UnsignedWides>(pairs) >> 16);
#endif
}

template <Order order, Weights k> struct InterleavedLuma {
    static_assert(k.r + k.g + k.b == 256 && k.r >= 0 && k.b >= 0 && k.add % 2 == 0);
    static constexpr int bytes = 1;
    static constexpr bool keeps = false;

    static INLINE void put(u8* d, const Pixels32& p) {
        constexpr int first = order == Order::rgb ? k.r : k.b, third = order == Order::rgb ? k.b : k.r;
        const Bytes weights = as<Bytes>(UnsignedWides{} + static_cast<u32>(first | k.g << 8 | third << 16));
        const auto sums = [=](int q) { return quadSums(weights, p.quarters[q], k.add); };
        const UnsignedWides mixed =
            (sums(0) >> 8 & 0xFF) | (sums(1) & 0xFF00) | (sums(2) << 8 & 0xFF0000) | (sums(3) << 16 & 0xFF000000);
        store(d, arrange(as<Bytes>(mixed), [](int i) { return i % (N / 4) * 4 + i / (N / 4); }));
    }
};

template <class R, Order order> constexpr ByOutput<Run> interleavedLumas() {
    ByOutput<Run> table;
    table.set(OrvOutputMono8, runKernel<R, InterleavedLuma<order, bt601>>);
    table.set(OrvOutputMono8Rec709, runKernel<R, InterleavedLuma<order, bt709>>);
    return table;
}

} // namespace
} // namespace kel
