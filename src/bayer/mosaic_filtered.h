// The chroma-filtered demosaics: LCAA, LCAAV and YUV422.
//
//     mosaic --2x2--> Y U V per pixel --filter--> U Y V Y per pair of pixels --> output
//
// Each half of the rows is filtered on its own, as one stream of pixels: left of a row's first pixel comes the last one
// of the row before, right of its last pixel the first one of the next row. The caller's source serves as scratch: in
// the end it holds the U Y V Y data of the lower half.
//
// Rows are streamed through a few lines. Row h / 2 + k of the lower half goes to bytes 2 k w ... of the source, over
// rows 2 k and 2 k + 1 of the mosaic. Rows still to come need mosaic rows from h / 2 + k + 1 on, and 2 k + 1 < h / 2 +
// k + 1 since k < h / 2: nothing is overwritten that is still to be read. (The last row is made from the row above it;
// when its turn comes, the rows up to 2 (h / 2 - 2) + 1 = h - 3 are overwritten.)
#pragma once
#include "bayer/bayer_readers.h"
#include "bayer/chroma_filters.h"
#include "kernels/pace.h"

namespace kel {
namespace {

//   Y = (77 R + 150 G + 29 B) >> 8
//   U = ((128 B - 43 R - 85 G) >> 8) + 128
//   V = ((128 R - 107 G - 21 B) >> 8) + 128
// 128 does not fit a signed weight, -128 does: U and V come from the negated sums.
constexpr Weights negatedU{43, 85, -128, 0}, negatedV{-128, 107, 21, 0};

// What is written and read next, asked for while lines are made, where the output does not fit the caches.
struct NextRows {
    const u8 *d, *kept, *s; // nothing is asked for where d is null; kept is null in the upper half
    size_t pixelBytes;

    template <size_t pixels> INLINE void ask(size_t x) const {
        for (const size_t end = x + pixels; d && x < end; x += 32) {
            __builtin_prefetch(d + x * pixelBytes, 1);
            if (kept) __builtin_prefetch(kept + 2 * x, 1);
            __builtin_prefetch(s + x);
        }
    }
};

// The sink of the 2x2 demosaic. Lines have room for a whole block at their end.
template <class Chroma, bool asks> struct YuvLineSink {
    static constexpr bool prefetches = asks;
    YuvLine line;
    NextRows ahead;

    INLINE void put(size_t x, const MosaicPixels& p) const { put(x, SummedPixels(p)); }
    template <class Colours> INLINE void put(size_t x, const Colours& p) const {
        if (asks) ahead.ask<pixelsIn<Colours>>(x);
        putLuma(line.y + x, p);
        Chroma::template put<negatedU>(line.u + x, p);
        Chroma::template put<negatedV>(line.v + x, p);
    }
    template <class Colours> INLINE void putPart(size_t x, const Colours& p, size_t) const { put(x, p); }
    INLINE void stepOn(size_t pixels) { kel::stepOn(pixels, line.y, line.u, line.v); }
    static constexpr bool repeats = std::is_same_v<Chroma, ChromaOfPixels>; // a pair's chroma cannot be put right
    INLINE void repeatLast(size_t width) const {
        for (u8* const plane : {line.y, line.u, line.v}) plane[width - 1] = plane[width - 2];
    }

private:
    template <class Colours> static INLINE void putLuma(u8* d, const Apart<Colours>& p) {
        store2(d, grey<bt601>(p.even), grey<bt601>(p.odd));
    }
    template <class Colours> static INLINE void putLuma(u8* d, const Colours& p) { store(d, grey<bt601>(p)); }
};

// ---- The output

// Pairs as U Y V Y.
INLINE void keep(u8* d, const YuvPairs& p) {
    const Words chroma = as<Words>(p.u >> 2) + (as<Words>(p.v) << 6) + 0x8080;
    PairsWriter::put(d, {as<Bytes>(chroma), p.luma});
}

INLINE void keep(u8* d, const YuvApart& p) { store4(d, p.u ^ 128, p.even, p.v ^ 128, p.odd); }

// Where chroma is in bytes. (Lines can be read beyond their end.)
template <class Filter, class W>
INLINE void convertApart(u8* d, u8* kept, const u8* y, const u8* u, const u8* v, size_t width) {
    typename Filter::Pairs pairs{y, u, v};
    RowSink<W> output{d, W()};
    for (size_t blocks = width / (2 * N); blocks > 0; --blocks) {
        const YuvApart p = pairs.next();
        output.put(0, coloursOf(p)), output.stepOn(2 * N);
        if (kept) keep(kept, p), stepOn(4 * N, kept);
    }
    const size_t rest = width % (2 * N);
    if (rest == 0) return;
    const YuvApart p = pairs.next();
    output.putPart(0, coloursOf(p), rest);
    alignas(N) u8 packed[4 * N];
    keep(packed, p);
    if (kept) std::memcpy(kept, packed, 2 * rest);
}

// A row to the output and, in the lower half, to the source. (Pointers, since g++ copies structures by vectors, which have
// to wait for the words of them to be written.)
template <class Filter, class W> void convertRow(u8* d, u8* kept, const u8* y, const u8* u, const u8* v, size_t width) {
    if constexpr (addsSignedBytes) return convertApart<Filter, W>(d, kept, y, u, v, width);
    const auto pairs = [=](size_t x) { return YuvPairs{load(y + x), Filter::of(u + x), Filter::of(v + x)}; };
    if (width < N) {
        const YuvPairs p = pairs(0);
        putPart(W(), d, coloursOf<TruncatedProducts>(p), width);
        alignas(N) u8 packed[2 * N];
        keep(packed, p);
        if (kept) std::memcpy(kept, packed, 2 * width);
        return;
    }
    const std::uintptr_t distance = prefetchDistance();
    for (size_t x = 0, last = width - N;; x = x + N < last ? x + N : last) { // the last block steps back
        const YuvPairs p = pairs(x);
        prefetch<N * W::bytes, true>(d + x * W::bytes, distance);
        W::put(d + x * W::bytes, coloursOf<TruncatedProducts>(p));
        if (kept) {
            prefetch<2 * N, true>(kept + 2 * x, distance);
            keep(kept + 2 * x, p);
        }
        if (x == last) break;
    }
}

using ConvertRow = void (*)(u8* d, u8* kept, const u8* y, const u8* u, const u8* v, size_t width);

// Row `row` of the half that begins with row `half`.
template <class Form>
__attribute__((noinline)) void demosaicRow(const LineRing& lines, size_t half, size_t row, const u8* s, size_t width,
                                           size_t height, unsigned phase, const NextRows& ahead) {
    using Samples = MosaicReader<Raw8Samples>;
    const size_t y = half + row, last = height - 2; // the last row repeats the one above
    const RowPair rows = rowPair(s, width, y < last ? y : last, phase);
    const auto make = [&](const auto& sink) {
        withDemosaic<SamplesOf<Samples>>(
            phase, [&](const auto& demosaic) { row2x2(rows, width, y < last, Samples(), sink, demosaic); });
    };
    if ((pacesLoops && ahead.d) || prefetchDistance() > 0)
        make(YuvLineSink<Form, true>{lines[row], ahead});
    else
        make(YuvLineSink<Form, false>{lines[row], ahead});
    lines.connect<Form>(row);
}

// One for all outputs; `pitch`: of the destination.
template <class Filter>
__attribute__((noinline)) void filteredMosaic(u8* d, size_t pitch, u8* s, size_t width, size_t height, unsigned phase,
                                              u8* scratch, ConvertRow convert) {
    using Form = typename Filter::Form;
    const size_t rows = height / 2;
    const bool asks = isPaced(pitch * height);
    for (const size_t half : {size_t{0}, rows}) {
        const LineRing lines(scratch, width, half);
        size_t made = 0;
        for (size_t row = 0; row < rows; ++row, d += pitch) {
            u8* const kept = half > 0 ? s + 2 * row * width : nullptr;
            for (; made < rows && made <= row + Filter::lookahead; ++made) {
                const size_t next = half + made + 2;
                const NextRows ahead{asks ? d : nullptr, kept, s + (next < height ? next : 0) * width, pitch / width};
                demosaicRow<Form>(lines, half, made, s, width, height, phase, ahead);
            }
            const YuvLine line = Filter::filter(lines, row, rows, width);
            convert(d, kept, line.y, line.u, line.v, width);
        }
    }
}

template <class Filter, class W>
void filteredMosaicKernel(u8* d, u8* s, size_t width, size_t height, unsigned phase, u8* scratch) {
    filteredMosaic<Filter>(d, width * W::bytes, s, width, height, phase, scratch, convertRow<Filter, W>);
}

template <class Filter, class Set> constexpr ByOutput<FilteredMosaic> filteredMosaics(Set outputs) {
    return tableOf<FilteredMosaic>(outputs,
                                   []<u32 output>() { return filteredMosaicKernel<Filter, WriterOf<output>>; });
}

} // namespace
} // namespace kel
