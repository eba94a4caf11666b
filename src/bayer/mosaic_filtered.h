// The chroma-filtered demosaics: LCAA, LCAAV and YUV422.
//
//     mosaic --2x2--> Y U V per pixel --filter--> U Y V Y per pair of pixels --> output
//
// Each half of the rows is filtered on its own, as one stream of pixels: left of a row's first pixel comes the last one
// of the row before, right of its last pixel the first one of the next row. The caller's source serves as scratch: in
// the end it holds the U Y V Y data of the lower half.
//
// Rows are streamed through four lines. Row h / 2 + k of the lower half goes to bytes 2 k w ... of the source, over
// rows 2 k and 2 k + 1 of the mosaic. Rows still to come need mosaic rows from h / 2 + k + 1 on, and 2 k + 1 < h / 2 +
// k + 1 since k < h / 2: nothing is overwritten that is still to be read. (The last row is made from the row above it;
// when its turn comes, the rows up to 2 (h / 2 - 2) + 1 = h - 3 are overwritten.)
#pragma once
#include "bayer/bayer_readers.h"
#include "bayer/scratch.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

// One row at full resolution. Samples -2, -1 and width belong to the neighbouring rows.
struct YuvLine {
    u8 *y, *u, *v;
};

// The sink of the 2x2 demosaic. Lines have room for a whole block at their end.
//   Y = (77 R + 150 G + 29 B) >> 8
//   U = ((128 B - 43 R - 85 G) >> 8) + 128
//   V = ((128 R - 107 G - 21 B) >> 8) + 128
// 128 does not fit a signed weight, -128 does: U and V come from the negated sums s as (128 * 256 - s) >> 8.
struct YuvLineSink {
    YuvLine line;

    static constexpr Weights u{43, 85, -128, 0}, v{-128, 107, 21, 0};

    template <class Colours> INLINE void put(size_t x, const Apart<Colours>& p) const {
        store2(line.y + x, grey<bt601>(p.even), grey<bt601>(p.odd));
        store2(line.u + x, chroma<u>(p.even), chroma<u>(p.odd));
        store2(line.v + x, chroma<v>(p.even), chroma<v>(p.odd));
    }
    template <class Colours> INLINE void put(size_t x, const Colours& p) const {
        store(line.y + x, grey<bt601>(p)), store(line.u + x, chroma<u>(p)), store(line.v + x, chroma<v>(p));
    }
    template <class Colours> INLINE void putPart(size_t x, const Colours& p, size_t) const { put(x, p); }
    INLINE void stepOn(size_t pixels) { kel::stepOn(pixels, line.y, line.u, line.v); }

private:
    template <Weights k, class Colours> static INLINE Bytes chroma(const Colours& p) {
        const Split s = weigh<k>(p);
        return highBytes(Split{fill(128 * 256) - s.a, fill(128 * 256) - s.b});
    }
};

// ---- The stream

// The lines of one half, in a ring. `first`: of the half's rows, in the image.
class LineRing {
public:
    INLINE LineRing(u8* scratch, size_t width, size_t first) : scratch_(scratch), width_(width), first_(first) {}

    // A row of the half, or the one above it.
    INLINE YuvLine operator[](size_t row) const {
        u8* y = scratch_ + (first_ + row) % scratchLines * scratchPlanes * lineSize(width_) + linePadding;
        return {y, y + lineSize(width_), y + 2 * lineSize(width_)};
    }
    INLINE u16* chroma() const { // u | v << 8 of each pair of the row at hand
        return reinterpret_cast<u16*>(scratch_ + scratchLines * scratchPlanes * lineSize(width_));
    }

    INLINE bool hasAbove(size_t row) const { return first_ + row > 0; }

    // After row `row` is made: join it to the one before, or start the half with it.
    INLINE void connect(size_t row) const {
        connectPlanes(row, &YuvLine::u);
        connectPlanes(row, &YuvLine::v);
    }

private:
    INLINE void connectPlanes(size_t row, u8* YuvLine::*plane) const {
        u8* samples = (*this)[row].*plane;
        u8* before = hasAbove(row) ? (*this)[row - 1].*plane : samples;
        before[width_] = samples[0];
        if (row == 0) // the first pair stands in for the one before it, mirrored: its first sample is the nearer
            samples[-2] = samples[1], samples[-1] = samples[0];
        else
            samples[-2] = before[width_ - 2], samples[-1] = before[width_ - 1];
    }

    u8* scratch_;
    size_t width_, first_;
};

// ---- Filters: the chroma of the row at hand, from the lines of a half of `rows` rows

INLINE Words pairsAt(const u8* plane) { return pairSums<1, 1>(load(plane)); }

// Filter::of() gives N / 2 words from a plane of the row and of another one, both at column x.
template <class Filter> INLINE void filterRow(u16* chroma, const YuvLine& row, const YuvLine& other, size_t width) {
    for (size_t x = 0; x < width; x += N)
        store(chroma + x / 2, Filter::of(row.u + x, other.u + x) | Filter::of(row.v + x, other.v + x) << 8);
}

// (s0 + s1) >> 1
struct PairFilter {
    static constexpr size_t lookahead = 0;
    static INLINE void filter(const LineRing& lines, size_t row, size_t, size_t width) {
        filterRow<PairFilter>(lines.chroma(), lines[row], lines[row], width);
    }
    static INLINE Words of(const u8* s, const u8*) { return pairsAt(s) >> 1; }
};

// (s-2 + s-1 + s0 + s1) >> 2: with the pair before.
struct LcaaFilter {
    static constexpr size_t lookahead = 0;
    static INLINE void filter(const LineRing& lines, size_t row, size_t, size_t width) {
        filterRow<LcaaFilter>(lines.chroma(), lines[row], lines[row], width);
    }
    static INLINE Words of(const u8* s, const u8*) { return (pairsAt(s - 2) + pairsAt(s)) >> 2; }
};

// The four samples s-1 .. s2 of the row and of the one below, (sum + 4) >> 3.
//
// At the end of the half, the row above takes the place of the row below, beginning with the last pair of the
// second-to-last row; and the last two pairs are not filtered, they take the chroma of their first pixel. Above the
// lower half stands the upper half's last row; the upper half, which has nothing above, takes the row itself.
struct LcaavFilter {
    static constexpr size_t lookahead = 2; // the row below needs the first sample of the next
    static INLINE void filter(const LineRing& lines, size_t row, size_t rows, size_t width) {
        filterRow<LcaavFilter>(lines.chroma(), lines[row], row + 1 < rows ? lines[row + 1] : above(lines, row), width);
        finish(lines, row, rows, width / 2);
    }
    static INLINE Words of(const u8* s, const u8* other) {
        return (pairsAt(s - 1) + pairsAt(s + 1) + pairsAt(other - 1) + pairsAt(other + 1) + 4) >> 3;
    }

private:
    static INLINE YuvLine above(const LineRing& lines, size_t row) {
        return lines[lines.hasAbove(row) ? row - 1 : row];
    }

    static __attribute__((noinline)) void finish(const LineRing& lines, size_t row, size_t rows, size_t pairs) {
        u16* chroma = lines.chroma();
        const YuvLine line = lines[row];
        if (row + 2 == rows) chroma[pairs - 1] = box(line, above(lines, row), pairs - 1);
        if (row == 1 && rows == 2) { // the sample left of the first row is its mirror no more
            const YuvLine first = lines[0], before = above(lines, 0);
            first.u[-1] = before.u[2 * pairs - 1], first.v[-1] = before.v[2 * pairs - 1];
            chroma[0] = box(line, first, 0);
        }
        for (size_t pair = pairs > 2 ? pairs - 2 : 0; pair < pairs; ++pair)
            if (row * pairs + pair + 2 >= rows * pairs)
                chroma[pair] = static_cast<u16>(line.u[2 * pair] | line.v[2 * pair] << 8);
    }
    static u16 box(const YuvLine& line, const YuvLine& other, size_t pair) {
        const auto sum = [x = 2 * pair](const u8* s) { return *(s + x - 1) + s[x] + s[x + 1] + s[x + 2]; };
        return static_cast<u16>((sum(line.u) + sum(other.u) + 4) >> 3 | (sum(line.v) + sum(other.v) + 4) >> 3 << 8);
    }
};

// ---- The output

// A row as U Y V Y, to the output and, in the lower half, to the source.
template <class W> void convertRow(u8* d, u8* kept, const u8* luma, const u16* chroma, size_t width) {
    const RowSink<W> output{d, W()};
    const RowSink<PairsWriter> scratch{kept, PairsWriter()};
    const auto pairs = [&](size_t x) { return Pairs{load(chroma + x / 2), load(luma + x)}; };
    const auto colours = [&](size_t x) {
        return coloursOf<TruncatedProducts>(sharedChroma(pairs(x).luma, pairs(x).chroma));
    };
    size_t x = 0;
    for (; x + N <= width; x += N) {
        output.put(x, colours(x));
        if (kept) scratch.put(x, pairs(x));
    }
    if (x == width) return;
    output.putPart(x, colours(x), width - x);
    if (kept) scratch.putPart(x, pairs(x), width - x);
}

using ConvertRow = void (*)(u8* d, u8* kept, const u8* luma, const u16* chroma, size_t width);

// One for all outputs; `pitch`: of the destination.
template <class Filter>
__attribute__((noinline)) void filteredMosaic(u8* d, size_t pitch, u8* s, size_t width, size_t height, unsigned phase,
                                              u8* scratch, ConvertRow convert) {
    using Samples = MosaicReader<Raw8Samples>;
    const size_t rows = height / 2;
    for (const size_t half : {size_t{0}, rows}) {
        const LineRing lines(scratch, width, half);
        size_t made = 0;
        for (size_t row = 0; row < rows; ++row, d += pitch) {
            for (; made < rows && made <= row + Filter::lookahead; ++made) {
                const size_t y = half + made, last = height - 2; // the last row repeats the one above
                const YuvLine line = lines[made];
                withDemosaic<SamplesOf<Samples>>(phase, [&](const auto& demosaic) {
                    row2x2(rowPair(s, width, y < last ? y : last, phase), width, Samples(), YuvLineSink{line},
                           demosaic);
                });
                lines.connect(made);
            }
            Filter::filter(lines, row, rows, width);
            convert(d, half > 0 ? s + 2 * row * width : nullptr, lines[row].y, lines.chroma(), width);
        }
    }
}

template <class Filter, class W>
void filteredMosaicKernel(u8* d, u8* s, size_t width, size_t height, unsigned phase, u8* scratch) {
    filteredMosaic<Filter>(d, width * W::bytes, s, width, height, phase, scratch, convertRow<W>);
}

template <class Filter, class Set> constexpr ByOutput<FilteredMosaic> filteredMosaics(Set outputs) {
    return tableOf<FilteredMosaic>(outputs,
                                   []<u32 output>() { return filteredMosaicKernel<Filter, WriterOf<output>>; });
}

} // namespace
} // namespace kel
