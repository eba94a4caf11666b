// One writer per output: put() packs a block of N pixels into N * bytes of destination.
//
// To add an output: write its writer and give it a line in writerOf.
#pragma once
#include "kernels/pixels.h"
#include "kernels/table.h"

namespace kel {
namespace {

// `keeps`: put() reads the destination, because it leaves some of its bytes alone.
// `weaves`: it stores pixels out of planes, whatever the block is.

enum class Order { rgb, bgr };

template <class W, class Block> INLINE void putInRow(u8* d, const Apart<Block>& p) {
    W::put(d, inRow<0>(p)), W::put(d + N * W::bytes, inRow<1>(p));
}

template <Order order> struct Rgb24Writer {
    static constexpr int bytes = 3;
    static constexpr bool keeps = false, weaves = true;
    static INLINE void put(u8* d, Rgb p) {
        order == Order::rgb ? store3<1>(d, 3 * L, p.r, p.g, p.b) : store3<1>(d, 3 * L, p.b, p.g, p.r);
    }
    static INLINE void put(u8* d, const RgbSums& p) {
        order == Order::rgb ? store3(d, 3 * L, p.r, p.g, p.b) : store3(d, 3 * L, p.b, p.g, p.r);
    }
    static INLINE void put(u8* d, Grey p) { store3<1>(d, 3 * L, p.v); }
    static INLINE void put(u8* d, const Apart<Rgb>& p) { putInRow<Rgb24Writer>(d, p); }
    static INLINE void put(u8* d, const Apart<Grey>& p) { putInRow<Rgb24Writer>(d, p); }
    template <class Deep> static INLINE void put(u8* d, Deep p) { put(d, to8(p)); }
};

// The fourth byte stays as it was.
template <Order order> struct Rgb32Writer {
    static constexpr int bytes = 4;
    static constexpr bool keeps = true, weaves = true;
    static INLINE void put(u8* d, Rgb p) {
        order == Order::rgb ? store3of4(d, p.r, p.g, p.b) : store3of4(d, p.b, p.g, p.r);
    }
    static INLINE void put(u8* d, Grey p) { store3of4(d, p.v); }
    static INLINE void put(u8* d, const Apart<Rgb>& p) { putInRow<Rgb32Writer>(d, p); }
    static INLINE void put(u8* d, const Apart<Grey>& p) { putInRow<Rgb32Writer>(d, p); }
    template <class Deep> static INLINE void put(u8* d, Deep p) { put(d, to8(p)); }
};

template <Weights k> INLINE Bytes grey(const Rgb& p) { return luma<k>(p.r, p.g, p.b); }
template <Weights k> INLINE Bytes grey(const RgbSums& p) { return grey<k>(to8(p)); }
template <Weights k, class Colours> INLINE Bytes grey(const Colours& p) { return highBytes(weigh<k>(p)); }

template <Weights k> struct Mono8Writer {
    static constexpr int bytes = 1;
    static constexpr bool keeps = false, weaves = false;
    static constexpr bool takesPairs = true;
    static INLINE void put(u8* d, Grey p) { store(d, p.v); }
    static INLINE void put(u8* d, Grey16 p) { store(d, to8(p).v); }
    static INLINE void put(u8* d, GreyRow16 p) { store(d, to8(p).v); }
    static INLINE void put(u8* d, const Rgb& p) { store(d, grey<k>(p)); }
    static INLINE void put(u8* d, const Apart<Grey>& p) { store2(d, p.even.v, p.odd.v); }
    static INLINE void put(u8* d, const Apart<Rgb>& p) { store2(d, grey<k>(p.even), grey<k>(p.odd)); }
    template <bool redIsEven> static INLINE void put(u8* d, const MosaicPair<redIsEven>& p) {
        const Apart<Split> s = weigh<k>(p);
        store2(d, highBytes(s.even), highBytes(s.odd));
    }
    static INLINE void put(u8* d, const Apart<RgbWords>& p) {
        store(d, highBytesByTurns(weigh<k>(p.even), weigh<k>(p.odd)));
    }
    template <class Colours> static INLINE void put(u8* d, const Colours& p) { store(d, grey<k>(p)); }
};

template <Weights k> struct Mono16Writer {
    static constexpr int bytes = 2;
    static constexpr bool keeps = false, weaves = false;
    static constexpr bool takesPairs = true;
    static INLINE void put(u8* d, Grey16 p) { storeHalves(d, p.v); }
    static INLINE void put(u8* d, GreyRow16 p) { store(d, p.a), store(d + N, p.b); }
    static INLINE void put(u8* d, const Apart<Rgb>& p) {
        const Halves even = inOrder(weigh<k>(p.even)), odd = inOrder(weigh<k>(p.odd));
        store2(d, even.a, odd.a), store2(d + 2 * N, even.b, odd.b);
    }
    template <bool redIsEven> static INLINE void put(u8* d, const MosaicPair<redIsEven>& p) {
        const Apart<Split> s = weighInParts<k>(p);
        const Halves even = inOrder(s.even), odd = inOrder(s.odd);
        store2(d, even.a, odd.a), store2(d + 2 * N, even.b, odd.b);
    }
    static INLINE void put(u8* d, const Apart<RgbWords>& p) { store2(d, weigh<k>(p.even), weigh<k>(p.odd)); }
    template <class Colours> static INLINE void put(u8* d, const Colours& p) { storeHalves(d, inOrder(weigh<k>(p))); }
};

// u | v << 8 of N / 2 pairs of pixels, and their luma.
struct Pairs {
    Bytes chroma, luma;
};
// U Y0 V Y1 for two pixels.
struct PairsWriter {
    static constexpr int bytes = 2;
    static constexpr bool keeps = false, weaves = false;
    static INLINE void put(u8* d, Pairs p) {
        storeHalves(d, {as<Words>(zip<1, 0>(p.chroma, p.luma)), as<Words>(zip<1, 1>(p.chroma, p.luma))});
    }
};

// The same from colours: studio-range luma, the truncated mean of the pixels' chroma.
//   Y = ((66 R + 129 G + 25 B + 128) >> 8) + 16
//   U = ((-38 R - 74 G + 112 B + 128) >> 8) + 128
//   V = ((112 R - 94 G - 18 B + 128) >> 8) + 128
// The constants after the shift go into the sum, where they keep it positive.
struct UyvyWriter {
    static constexpr int bytes = 2;
    static constexpr bool keeps = false, weaves = true;
    static constexpr Weights u{-38, -74, 112, 128 + 128 * 256}, v{112, -94, -18, 128 + 128 * 256},
        y{66, 129, 25, 128 + 16 * 256};
    static constexpr bool takesPairs = true;
    template <bool redIsEven> static INLINE void put(u8* d, const MosaicPair<redIsEven>& p) {
        const auto shared = [](const Apart<Split>& s) { return mean(highBytes(s.even), highBytes(s.odd)); };
        const Apart<Split> luma = weigh<y>(p);
        store4(d, shared(weigh<u>(p)), highBytes(luma.even), shared(weigh<v>(p)), highBytes(luma.odd));
    }
    template <class Colours> static INLINE void put(u8* d, const Apart<Colours>& p) {
        const auto shared = [](Split even, Split odd) { return mean(highBytes(even), highBytes(odd)); };
        store4(d, shared(weigh<u>(p.even), weigh<u>(p.odd)), highBytes(weigh<y>(p.even)),
               shared(weigh<v>(p.even), weigh<v>(p.odd)), highBytes(weigh<y>(p.odd)));
    }
    template <class Colours> static INLINE void put(u8* d, const Colours& p) {
        const Words chroma = pairMeans(weigh<u>(p)) | pairMeans(weigh<v>(p)) << 8;
        PairsWriter::put(d, {as<Bytes>(chroma), highBytes(weigh<y>(p))});
    }
    // Grey sources get zero chroma, not a neutral one.
    static INLINE void put(u8* d, Grey p) {
        if constexpr (separatesAsItLoads) return store2(d, Bytes{}, p.v);
        const Bytes luma = inRow(p.v); // as zip() parts it
        store(d, zip<1, 0>(Bytes{}, luma)), store(d + N, zip<1, 1>(Bytes{}, luma));
    }
};

template <Order order> struct Rgb48Writer {
    static constexpr int bytes = 6;
    static constexpr bool keeps = false, weaves = true;
    static INLINE void put(u8* d, Rgb16 p) {
        const Halves first = order == Order::rgb ? p.r : p.b, third = order == Order::rgb ? p.b : p.r;
        store3<2>(d, 6 * L, as<Bytes>(first.a), as<Bytes>(p.g.a), as<Bytes>(third.a));
        store3<2>(d + 3 * L, 6 * L, as<Bytes>(first.b), as<Bytes>(p.g.b), as<Bytes>(third.b));
    }
    static INLINE void put(u8* d, const Apart<RgbWords>& p) { put(d, inRow(p)); }
    static INLINE void put(u8* d, Grey16 p) {
        store3<2>(d, 6 * L, as<Bytes>(p.v.a));
        store3<2>(d + 3 * L, 6 * L, as<Bytes>(p.v.b));
    }
};

// The writer of an OrvOutputCode.
template <u32 output> constexpr auto writerOf() {
    static_assert(output < outputCount);
    if constexpr (output == OrvOutputMono8) return Mono8Writer<bt601>();
    if constexpr (output == OrvOutputBgr24) return Rgb24Writer<Order::bgr>();
    if constexpr (output == OrvOutputBgra32) return Rgb32Writer<Order::bgr>();
    if constexpr (output == OrvOutputRgb24) return Rgb24Writer<Order::rgb>();
    if constexpr (output == OrvOutputRgba32) return Rgb32Writer<Order::rgb>();
    if constexpr (output == OrvOutputMono8Rec709) return Mono8Writer<bt709>();
    if constexpr (output == OrvOutputYuv422) return UyvyWriter();
    if constexpr (output == OrvOutputMono16) return Mono16Writer<bt601>();
    if constexpr (output == OrvOutputMono16Rec709) return Mono16Writer<bt709>();
    if constexpr (output == OrvOutputBgr48) return Rgb48Writer<Order::bgr>();
    if constexpr (output == OrvOutputRgb48) return Rgb48Writer<Order::rgb>();
}
template <u32 output> using WriterOf = decltype(writerOf<output>());

} // namespace
} // namespace kel
