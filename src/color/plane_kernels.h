// Packed colour split into planes.
//
// A splitter gets N pixels as colours and, if wanted, luma.
#pragma once
#include "color/color_kernels.h"
#include "color/double_luma.h"
#include "color/rgb_readers.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

struct PlaneBlock {
    Rgb colours;
    Bytes luma;
};

struct RgbSplitter : Reader<24> {
    template <bool withLuma> static INLINE PlaneBlock get(const u8* s) {
        static_assert(!withLuma, "rgbPlanesWithLuma() is for that");
        return {Rgb24Reader<Order::rgb>::get(s), Bytes{}};
    }
};

template <class Layout, class Rule> struct YuvSplitter : Reader<Layout::bits> {
    template <bool withLuma> static INLINE PlaneBlock get(const u8* s) {
        const auto samples = Layout::samples(s);
        return {to8(coloursOf<Rule>(samples)), samples.luma};
    }
};

template <bool withLuma> INLINE void putPlanes(const PlaneBytes& to, const PlaneBlock& block) {
    store(to.r, block.colours.r);
    store(to.g, block.colours.g);
    store(to.b, block.colours.b);
    if constexpr (withLuma) store(to.y, block.luma);
}

template <class Splitter, bool withLuma> void planesKernel(const PlaneBytes& planes, const u8* s, size_t n) {
    constexpr size_t bytes = N * Splitter::bits / 8;
    PlaneBytes to = planes;
    const auto step = [&]() __attribute__((always_inline)) {
        putPlanes<withLuma>(to, Splitter::template get<withLuma>(s));
        s += bytes, to.r += N, to.g += N, to.b += N;
        if constexpr (withLuma) to.y += N;
    };
    if constexpr (withLuma)
        takeTurns<bytes, 4 * N>(n / N, step, s, to.r, to.g, to.b, to.y);
    else
        takeTurns<bytes, 3 * N>(n / N, step, s, to.r, to.g, to.b);
    n %= N;
    if (n == 0) return;

    alignas(N) u8 source[bytesFor(N, Splitter::bits)] = {}, r[N], g[N], b[N], y[N];
    std::memcpy(source, s, bytesFor(n, Splitter::bits));
    putPlanes<withLuma>({r, g, b, y}, Splitter::template get<withLuma>(source));
    std::memcpy(to.r, r, n);
    std::memcpy(to.g, g, n);
    std::memcpy(to.b, b, n);
    if constexpr (withLuma) std::memcpy(to.y, y, n);
}

// The planes of RGB8 beside its luma.
void rgbPlanesWithLuma(const PlaneBytes& to, const u8* s, size_t n) {
    lumaRun<planeWeights>(to.y, s, n, [&to](size_t x, const Rgb& p, size_t pixels) {
        if (pixels == N) return store(to.r + x, p.r), store(to.g + x, p.g), store(to.b + x, p.b);
        std::memcpy(to.r + x, &p.r, pixels);
        std::memcpy(to.g + x, &p.g, pixels);
        std::memcpy(to.b + x, &p.b, pixels);
    });
}

template <class Splitter> constexpr PlaneKernels planeKernels() {
    return {.withoutLuma = planesKernel<Splitter, false>, .withLuma = planesKernel<Splitter, true>};
}

} // namespace
} // namespace kel
