// YUV 4:2:2 to pixels of four bytes. U and V stay side by side, and so does what they add to blue and to red.
#pragma once
#include "color/reorder.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

template <Order order> struct Yuv422QuadsReader : Reader<16> {
    static INLINE Quads get(const u8* s) {
        const Half low = half(s), high = half(s + N);
        return {{low.first, low.second, high.first, high.second}};
    }

private:
    struct Half {
        Bytes first, second; // quarters
    };
    static INLINE Half half(const u8* s) {
        const Bytes uyvy = inRow(load(s)); // as zip() parts it
        const Ints uv4 = as<Ints>(pairSums<4, 0>(uyvy)) - 512;
        const Ints less = uv4 >> 15;
        const auto products = [=](int ofU, int ofV) {
            return as<Words>(mulHigh(uv4, as<Ints>(mix(fill(ofU), fill(ofV)))) - less);
        };
        const Words blueAndRed = products(blueFromU, redFromV);
        const Words green = as<Words>(wordPairSums(products(greenFromU, greenFromV), fill(-1))); // in every first word

        const Words first = luma<0>(uyvy), second = luma<1>(uyvy);
        const auto sums = [=](Words offsets) {
            return clampHalves(as<Ints>(first + offsets), as<Ints>(second + offsets));
        };
        const Bytes ends =
            place(sums(blueAndRed), [](int i) { return wordOf(i / 2) + (order == Order::bgr ? i % 2 : 1 - i % 2); });
        const Bytes middles = place(sums(green), [](int i) { return i % 2 == 0 ? wordOf(i / 2) : -1; });
        return {zip<1, 0>(ends, middles), zip<1, 1>(ends, middles)};
    }

    // Of the first or the second pixel of each pair, in both words.
    template <int pixel> static INLINE Words luma(Bytes uyvy) {
        return as<Words>(place(uyvy, [](int i) { return i % 2 == 0 ? i / 4 * 4 + 2 * pixel + 1 : -1; }));
    }
    // Where a pixel is: those that are first in a pair precede the others.
    static constexpr int wordOf(int pixel) { return pixel % 2 * (L / 2) + pixel / 2 * 2; }
};

// The other levels have colours apart at little cost, or zip long lanes at a high one.
template <class Set> constexpr ByOutput<Run> yuv422ToQuads(Set outputs) {
    return tableOf<Run>(outputs, []<u32 output>() {
        constexpr Order order = output == OrvOutputBgra32 ? Order::bgr : Order::rgb;
        if constexpr (separatesAsItLoads || L > 16)
            return runKernel<YuvReader<Yuv422Layout>, WriterOf<output>>;
        else
            return runKernel<Yuv422QuadsReader<order>, QuadsWriter>;
    });
}

} // namespace
} // namespace kel
