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
template <> struct Demosaic2x2<Halves> {
    Halves redLeft;

    INLINE explicit Demosaic2x2(unsigned phase) : redLeft(columns<Halves>(phase % 2 == 0)) {}
    INLINE Rgb16 operator()(const Blocks<Halves>& s) const {
        return {select(redLeft, s.a, s.b), mean(select(redLeft, s.b, s.a), select(redLeft, s.c, s.d)),
                select(redLeft, s.d, s.c)};
    }
};

// Rows y and y + 1, the red one first.
INLINE RowPair redFirst(const u8* top, const u8* bottom, size_t y, unsigned phase) {
    return (phase / 2 + y) % 2 ? RowPair{bottom, top} : RowPair{top, bottom};
}
// The same of a source with rows of `pitch` bytes.
INLINE RowPair rowPair(const u8* s, size_t pitch, size_t y, unsigned phase) {
    return redFirst(s + y * pitch, s + (y + 1) * pitch, y, phase);
}

// Every sample is wanted four times: by two rows, at x and at x + 1. Where it costs more than a load to get it, the rows
// of a strip of the image are unpacked once, to two lines on the stack.
template <class S> struct Unpacker : Reader<S::bits> {
    S read;
    INLINE explicit Unpacker(const S& r) : read(r) {}
    INLINE SamplesOf<S> get(const u8* s) const { return read.template samples<0>(s); }
};
struct LineWriter {
    static constexpr bool keeps = false;
};
struct ByteLine : LineWriter {
    static constexpr int bytes = 1;
    static INLINE void put(u8* d, Bytes v) { store(d, v); }
};
struct WordLine : LineWriter {
    static constexpr int bytes = 2;
    static INLINE void put(u8* d, Halves v) { storeHalves(d, v); }
};
INLINE ByteLine lineWriter(PlainSamples<Bytes>) { return {}; }
INLINE WordLine lineWriter(PlainSamples<Halves>) { return {}; }

template <class S> INLINE void unpackRow(u8* line, const u8* s, size_t n, const S& read) {
    using Line = PlainSamples<SamplesOf<S>>;
    const auto write = lineWriter(Line());
    const Unpacker<S> unpacker(read);
    if (n > N && n % N > 0 && n % S::group == 0) { // step back, to end with the row
        write.put(line + (n - N) * Line::bits / 8, unpacker.get(s + (n - N) * S::bits / 8));
        n -= n % N;
    }
    run(line, s, n, unpacker, write);
}

// Columns x to x + n - 1 of the image; the last strip ends with it, the others are followed by more.
struct MosaicStrip {
    static constexpr size_t capacity = 4096;
    size_t x, n;
    bool last;

    INLINE MosaicStrip(size_t start, size_t width) : x(start) {
        last = width - x <= capacity + 1; // a column of its own could not be made
        n = last ? width - x : capacity;
    }
    INLINE size_t samples() const { return last ? n : n + 1; }
};

template <class S, class W, class Rule>
INLINE void strip2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const MosaicStrip& strip,
                     const S& read, const W& write, const Rule& demosaic) {
    using Line = PlainSamples<SamplesOf<S>>;
    alignas(N) u8 lines[2][bytesFor(MosaicStrip::capacity + N, Line::bits)];
    const size_t sourcePitch = width * S::bits / 8, pitch = width * W::bytes;
    s += strip.x * S::bits / 8, d += strip.x * W::bytes;
    unpackRow(lines[0], s, strip.samples(), read);
    for (size_t y = 0; y + 1 < height; ++y, d += pitch) {
        unpackRow(lines[(y + 1) % 2], s + (y + 1) * sourcePitch, strip.samples(), read);
        const RowPair rows = redFirst(lines[y % 2], lines[(y + 1) % 2], y, phase);
        if (strip.last)
            row2x2(rows, strip.n, Line(), RowSink<W>{d, write}, demosaic);
        else
            startOfRow2x2(rows, strip.n / N, Line(), RowSink<W>{d, write}, demosaic);
    }
}

template <class S, class W>
INLINE void mosaic2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const S& read, const W& write) {
    const Demosaic2x2<SamplesOf<S>> demosaic(phase);
    const size_t sourcePitch = width * S::bits / 8, pitch = width * W::bytes;
    if constexpr (S::unpackOnce) {
        for (size_t x = 0; x < width;) {
            const MosaicStrip strip(x, width);
            strip2x2(d, s, width, height, phase, strip, read, write, demosaic);
            x += strip.n;
        }
    } else {
        for (size_t y = 0; y + 1 < height; ++y)
            row2x2(rowPair(s, sourcePitch, y, phase), width, read, RowSink<W>{d + y * pitch, write}, demosaic);
    }
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
}

template <class S, class W> void mosaic2x2Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase) {
    mosaic2x2(d, s, width, height, phase, S(), MosaicWriter<W>());
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
    mosaic2x2(d, s, width, height, phase, S(shift), MosaicWriter<W>());
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
