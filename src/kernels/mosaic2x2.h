// The 2x2 demosaic: every pixel takes its colours from the block of four samples whose top left corner it is.
//
//     x  x+1          R G   or   G R   or   G B   or   B G
//     .   .           G B        B G        R G        G R
//
//     R, B: the one sample; G: the truncated mean of the two. The last column repeats the one before, the last row too.
//
// Red sits in every other column of the image, and it is always one of the two rows of a block that has it. So a row is
// made from "the red row" and "the blue row", whichever is on top, and one mask tells, for the whole image, in which
// columns a block has red at its left (and blue, diagonally across, at its right).
#pragma once
#include "kernels/mosaic_pixels.h"

namespace kel {
namespace {

// Of blocks whose first row is the red one.
template <class Samples> struct Demosaic2x2;
template <> struct Demosaic2x2<Bytes> {
    Phase2x2 phase;

    INLINE explicit Demosaic2x2(unsigned p) : phase(p) {}
    INLINE MosaicPixels operator()(const Blocks<Bytes>& s) const { return {s, phase}; }
};
template <> struct Demosaic2x2<DeepBytes> {
    Phase2x2 phase;

    INLINE explicit Demosaic2x2(unsigned p) : phase(p) {}
    INLINE DeepMosaicPixels operator()(const Blocks<DeepBytes>& s) const {
        return {{s.a.high, s.b.high, s.c.high, s.d.high}, {s.a.low, s.b.low, s.c.low, s.d.low}, phase};
    }
};
template <> struct Demosaic2x2<Halves> {
    Halves redLeft;

    INLINE explicit Demosaic2x2(unsigned phase) : redLeft(columns<Halves>(phase % 2 == 0)) {}
    INLINE Rgb16 operator()(const Blocks<Halves>& s) const {
        return {select(redLeft, s.a, s.b), mean(select(redLeft, s.b, s.a), select(redLeft, s.c, s.d)),
                select(redLeft, s.d, s.c)};
    }
};

// Columns apart: red is left in all even blocks and in no odd one, or the other way round.
template <bool redIsEven> struct DemosaicApart {
    INLINE auto operator()(const Blocks<Apart<Words>>& s) const { return pair(s); }
    INLINE auto operator()(const Blocks<Apart<Bytes>>& s) const { return MosaicPair<redIsEven>{pair(s)}; }

private:
    static INLINE Rgb colours(Bytes r, Bytes g, Bytes b) { return {r, g, b}; }
    static INLINE RgbWords colours(Words r, Words g, Words b) { return {r, g, b}; }
    template <class Samples> static INLINE auto pair(const Blocks<Apart<Samples>>& s) {
        return Apart{pixels<redIsEven>(s.a, s.c), pixels<!redIsEven>(s.b, s.d)};
    }
    template <bool redLeft, class Samples>
    static INLINE auto pixels(const Apart<Samples>& redRow, const Apart<Samples>& blueRow) {
        if constexpr (redLeft) return colours(redRow.even, mean(redRow.odd, blueRow.even), blueRow.odd);
        return colours(redRow.odd, mean(redRow.even, blueRow.odd), blueRow.even);
    }
};

// Calls f with the rule for such samples.
template <class Samples, class F> INLINE void withDemosaic(unsigned phase, const F& f) {
    if constexpr (separatesAsItLoads)
        phase % 2 == 0 ? f(DemosaicApart<true>()) : f(DemosaicApart<false>());
    else
        f(Demosaic2x2<Samples>(phase));
}

// Rows y and y + 1, the red one first.
INLINE RowPair redFirst(const u8* top, const u8* bottom, size_t y, unsigned phase) {
    return (phase / 2 + y) % 2 ? RowPair{bottom, top, bottom} : RowPair{top, bottom};
}
// The same of a source with rows of `pitch` bytes.
INLINE RowPair rowPair(const u8* s, size_t pitch, size_t y, unsigned phase) {
    return redFirst(s + y * pitch, s + (y + 1) * pitch, y, phase);
}

// Of two rows at once, which share one row of samples, whose colour may be common to both: for luma, where columns are kept
// apart.
template <class W> constexpr size_t rowsAtOnce = (RowSink<W>::takesPairs && separatesAsItLoads) ? 2 : 1;
template <class F> INLINE void withRowTriples(unsigned phase, const F& f) {
    phase / 2 % 2 == 0 ? f(RowTriple<false>()) : f(RowTriple<true>());
}

// ---- Lines. Every sample is wanted four times: by two rows, at x and at x + 1. Where it costs more than a load to get it,
// the rows of a strip of the image are unpacked once, to two lines on the stack.

// Lines do not lie a multiple of 4096 bytes apart: a processor takes a load at such a distance from a store that is still
// on its way for one that has to wait.
constexpr size_t lineColumns = 4096, lineColumnsAndMore = lineColumns + 1088;
static_assert(lineColumnsAndMore >= lineColumns + 2 * N && lineColumnsAndMore % 64 == 0);

template <class Samples> struct Line : PlainSamples<Samples> {
    static constexpr size_t size = sizeof(Samples) / pixelsIn<Samples>, bytes = lineColumnsAndMore * size;
    static INLINE void put(u8* to, Bytes v) { store(to, v); }
    static INLINE void put(u8* to, Halves v) { storeHalves(to, v); }
    static INLINE void put(u8* to, const Apart<Bytes>& v) { store2(to, v.even, v.odd); }
    // Sample n as the one left of the last: then the last pixel comes out as the one before.
    static INLINE void endAt(u8* line, size_t n) { std::memcpy(line + n * size, line + (n - 2) * size, size); }
};
template <> struct Line<DeepBytes> : Reader<8> {
    static constexpr size_t size = 1, bytes = 2 * lineColumnsAndMore;
    template <int from> static INLINE DeepBytes samples(const u8* s) {
        return {load(s + from), load(s + lineColumnsAndMore + from)};
    }
    static INLINE void put(u8* to, DeepBytes v) { store(to, v.high), store(to + lineColumnsAndMore, v.low); }
    static INLINE void endAt(u8* line, size_t n) {
        Line<Bytes>::endAt(line, n), Line<Bytes>::endAt(line + lineColumnsAndMore, n);
    }
};
// What is read from a line of unpacked samples.
template <class Samples> struct InLine { using Type = Samples; };
template <> struct InLine<Bytes> { using Type = std::conditional_t<separatesAsItLoads, Apart<Bytes>, Bytes>; };
template <> struct InLine<Halves> { using Type = std::conditional_t<separatesAsItLoads, Apart<Words>, Halves>; };
template <class S> using LineSamples = typename InLine<SamplesOf<S>>::Type;

// How the rows of a source become lines; `reader` is its sample reader.
struct RowUnpacker {
    size_t bits;
    const void* reader;
    void (*unpack)(u8* line, const u8* s, size_t n, const void* reader);
};
// The next samples of a row.
template <class S> INLINE auto unpacked(const S& read, const u8* s) {
    if constexpr (separatesAsItLoads && requires { read.apart(s); })
        return read.apart(s);
    else
        return read.template samples<0>(s);
}
template <class S> void unpackRow(u8* line, const u8* s, size_t n, const void* reader) {
    const S read = *static_cast<const S*>(reader);
    using Samples = decltype(unpacked(read, s));
    using Line = kel::Line<Samples>;
    constexpr size_t block = pixelsIn<Samples>, sourceBytes = block * S::bits / 8;
    const u8* from = s;
    u8* to = line;
    const auto step = [&] {
        Line::put(to, unpacked(read, from));
        stepOn(sourceBytes, from), stepOn(block * Line::size, to);
    };
    constexpr size_t atOnce = N < 64 ? 64 / N : 1; // so that one prefetch does for a cache line
    size_t blocks = n / block;
    for (; blocks >= atOnce; blocks -= atOnce) {
        prefetch<atOnce * sourceBytes, false>(from);
        for (size_t i = 0; i < atOnce; ++i) step();
    }
    for (; blocks > 0; --blocks) step();
    const size_t rest = n % block;
    if (rest == 0) return;
    if (n > block && n % S::group == 0)
        return Line::put(line + (n - block) * Line::size, unpacked(read, s + (n - block) * S::bits / 8));
    u8 last[bytesFor(block, S::bits)] = {};
    std::memcpy(last, from, bytesFor(rest, S::bits));
    Line::put(to, unpacked(read, last));
}

// Columns x to x + n - 1 of the image; the last strip ends with it, the others are followed by more.
struct MosaicStrip {
    size_t x, n;
    bool last;

    INLINE MosaicStrip(size_t start, size_t width) : x(start) {
        last = width - x <= lineColumns + 1; // a column of its own could not be made
        n = last ? width - x : lineColumns;
    }
};

// One for all sources that become the same kind of line.
template <class Samples, class W>
__attribute__((noinline)) void strip2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase,
                                        MosaicStrip strip, RowUnpacker row, W write) {
    using Line = kel::Line<Samples>;
    constexpr size_t block = pixelsIn<Samples>;
    constexpr size_t lineCount = rowsAtOnce<W> + 1;
    alignas(N) u8 lines[lineCount][Line::bytes];
    const size_t sourcePitch = width * row.bits / 8, pitch = width * W::bytes;
    s += strip.x * row.bits / 8, d += strip.x * W::bytes;
    const size_t last = lastBlock<block>(strip.n), pixelsInLast = strip.n - last;
    const auto unpack = [&](u8* line, size_t y) {
        row.unpack(line, s + y * sourcePitch, strip.last ? strip.n : strip.n + 1, row.reader);
        if (pixelsInLast < block) Line::endAt(line, last + block); // so far vectors read
        if (strip.last) Line::endAt(line, strip.n);
    };
    const bool whole = strip.n % block == 0;
    unpack(lines[0], 0);
    withDemosaic<Samples>(phase, [&](const auto& demosaic) {
        const auto finish = [&](RowPair rows, const RowSink<W>& sink) {
            const auto pixels = blockFor<RowSink<W>>(demosaic(blocksAt(rows.from<Line>(last), Line())));
            pixelsInLast < block ? sink.putPart(last, pixels, pixelsInLast) : sink.put(last, pixels);
        };
        if constexpr (rowsAtOnce<W> == 2) {
            withRowTriples(phase, [&](auto rows) {
                u8 *top = lines[0], *bottom = lines[2];
                for (size_t y = 0; y + 1 < height; y += 2, d += 2 * pitch) {
                    const bool more = y + 2 < height;
                    unpack(lines[1], y + 1);
                    if (more) unpack(bottom, y + 2);
                    rows.top = top, rows.middle = lines[1], rows.bottom = more ? bottom : top;
                    const RowSink<W> upper{d, write}, lower{d + pitch, write};
                    frontBlocks2x2(rows, strip.n + 1, Line(), upper, lower, demosaic);
                    if (!whole) finish(rows.template pair<false>(), upper), finish(rows.template pair<true>(), lower);
                    u8* const next = bottom;
                    bottom = top, top = next;
                }
            });
        } else {
            for (size_t y = 0; y + 1 < height; ++y, d += pitch) {
                unpack(lines[(y + 1) % 2], y + 1);
                const RowPair rows = redFirst(lines[y % 2], lines[(y + 1) % 2], y, phase);
                const RowSink<W> sink{d, write};
                frontBlocks2x2<false>(rows, strip.n + 1, Line(), sink, demosaic);
                if (!whole) finish(rows, sink);
            }
        }
    });
}

template <class S, class W>
INLINE void mosaic2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const S& read, const W& write) {
    const size_t sourcePitch = width * S::bits / 8, pitch = width * W::bytes;
    if constexpr (S::unpackOnce) {
        for (size_t x = 0; x < width;) {
            const MosaicStrip strip(x, width);
            strip2x2<LineSamples<S>>(d, s, width, height, phase, strip, {S::bits, &read, unpackRow<S>}, write);
            x += strip.n;
        }
    } else if constexpr (rowsAtOnce<W> == 2) {
        withDemosaic<SamplesOf<S>>(phase, [&](const auto& demosaic) {
            withRowTriples(phase, [&](auto rows) {
                for (size_t y = 0; y + 1 < height; y += 2) {
                    rows.top = s + y * sourcePitch, rows.middle = rows.top + sourcePitch;
                    rows.bottom = y + 2 < height ? rows.middle + sourcePitch : rows.top; // for what is copied over
                    const RowSink<W> upper{d + y * pitch, write}, lower{upper.d + pitch, write};
                    rows2x2(rows, width, y + 3 < height, read, upper, lower, demosaic);
                }
            });
        });
    } else {
        withDemosaic<SamplesOf<S>>(phase, [&](const auto& demosaic) {
            for (size_t y = 0; y + 1 < height; ++y)
                row2x2(rowPair(s, sourcePitch, y, phase), width, read, RowSink<W>{d + y * pitch, write}, demosaic);
        });
    }
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
}

template <class S, class W> void mosaic2x2Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase) {
    mosaic2x2(d, s, width, height, phase, MosaicReader<S>(), MosaicWriter<W>());
}

// A mosaic gives R G B where the one with red and blue exchanged gives B G R: the kernels of the outputs that begin with
// red are those that begin with blue, called with the other phase.
constexpr unsigned exchanged(unsigned phase) { return phase ^ 3; }
constexpr u32 blueFirst(u32 output) {
    if (output == OrvOutputRgb24) return OrvOutputBgr24;
    if (output == OrvOutputRgba32) return OrvOutputBgra32;
    return output;
}
template <class Kernel, Kernel kernel, class... More>
void exchangedKernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase, More... more) {
    kernel(d, s, width, height, exchanged(phase), more...);
}
// kernelFor: as for tableOf.
template <class Kernel, class... More, class Set, class KernelFor>
constexpr ByOutput<Kernel> mosaicTable(Set outputs, KernelFor) {
    return tableOf<Kernel>(outputs, []<u32 output>() -> Kernel {
        constexpr Kernel kernel = KernelFor().template operator()<blueFirst(output)>();
        if constexpr (output == blueFirst(output))
            return kernel;
        else
            return exchangedKernel<Kernel, kernel, More...>;
    });
}

template <class S, class W>
void shiftedMosaic2x2Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase, int shift) {
    if constexpr (separatesAsItLoads && requires { typename S::Unshifted; })
        if (shift == 0) return mosaic2x2(d, s, width, height, phase, typename S::Unshifted(), MosaicWriter<W>());
    mosaic2x2(d, s, width, height, phase, MosaicReader<S>(shift), MosaicWriter<W>());
}

// The kernels of one sample reader for a set of outputs.
template <class S, class Set> constexpr ByOutput<Mosaic> mosaics2x2(Set outputs) {
    return mosaicTable<Mosaic>(outputs, []<u32 output>() { return mosaic2x2Kernel<S, WriterOf<output>>; });
}
template <class S, class Set> constexpr ByOutput<ShiftedMosaic> shiftedMosaics2x2(Set outputs) {
    return mosaicTable<ShiftedMosaic, int>(outputs,
                                           []<u32 output>() { return shiftedMosaic2x2Kernel<S, WriterOf<output>>; });
}

} // namespace
} // namespace kel
