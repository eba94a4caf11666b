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
//
// A sample reader S says how many bits a sample has and after how many samples its bit position repeats (`group`), and
// turns memory into N samples: samples<0>(p), or samples<1>(p) one sample further right. A plane of samples is Bytes or
// Halves; it knows no other samples than those.
#pragma once
#include "kernels/runs.h"

namespace kel {
namespace {

// ---- Planes of 8 bits (Bytes) and of 16 bits (Halves), by the same names

INLINE Rgb colours(Bytes r, Bytes g, Bytes b) { return {r, g, b}; }
INLINE Rgb16 colours(Halves r, Halves g, Halves b) { return {r, g, b}; }

// A mask of the even columns, or of the odd ones.
template <class Plane> INLINE Plane columns(bool even);
template <> INLINE Bytes columns<Bytes>(bool even) {
    const Bytes mask = maskWhere([](int i) { return i % 2 == 0; });
    return even ? mask : ~mask;
}
template <> INLINE Halves columns<Halves>(bool even) {
    const Words mask = as<Words>(maskWhere([](int i) { return i % 4 < 2; }));
    return even ? Halves{mask, mask} : Halves{~mask, ~mask};
}

// The samples one column to the right; the last one, which has no neighbour here, stays.
INLINE Bytes next(Bytes v) {
    return arrange(v, [](int i) { return i + 1 < N ? i + 1 : i; });
}
INLINE Halves next(Halves v) {
    const Bytes a = as<Bytes>(v.a), b = as<Bytes>(v.b);
    const Bytes laneAfter = arrange(a, [](int i) { return i + L < N ? i + L : i; });
    return {as<Words>(shuffle(a, b, [](int i) { return i + 2; })),
            as<Words>(shuffle(b, laneAfter, [](int i) { return i + 2; }))};
}

// Pixel i becomes a copy of the one before.
INLINE void repeat(Bytes& v, size_t i) { v[i] = v[i - 1]; }
INLINE void repeat(Halves& v, size_t i) {
    constexpr size_t half = L / 2;
    const auto at = [&v](size_t k) -> auto& { return k / half % 2 ? v.b : v.a; };
    const auto index = [](size_t k) { return k / L * half + k % half; };
    at(i)[index(i)] = at(i - 1)[index(i - 1)];
}
template <class Colours> INLINE void repeat(Colours& p, size_t i) { repeat(p.r, i), repeat(p.g, i), repeat(p.b, i); }

// ---- The rule

// The samples of N blocks: a b in the red row, c d in the blue row.
template <class Plane> struct Blocks { Plane a, b, c, d; };
template <class Plane> INLINE auto demosaic2x2(const Blocks<Plane>& s, Plane redLeft) {
    return colours(select(redLeft, s.a, s.b), mean(select(redLeft, s.b, s.a), select(redLeft, s.c, s.d)),
                   select(redLeft, s.d, s.c));
}

struct RowPair {
    const u8 *red, *blue;

    template <class S> INLINE RowPair from(size_t x) const { return {red + x * S::bits / 8, blue + x * S::bits / 8}; }
};

// The pair of source rows y and y + 1, `pitch` bytes long each.
INLINE RowPair rowPair(const u8* s, size_t pitch, size_t y, unsigned phase) {
    const u8 *top = s + y * pitch, *bottom = top + pitch;
    return (phase / 2 + y) % 2 ? RowPair{bottom, top} : RowPair{top, bottom};
}

// N pixels that end with the row.
template <class S, class Plane> INLINE auto lastBlock2x2(RowPair row, size_t n, const S& read, Plane redLeft) {
    const Plane a = read.template samples<0>(row.red), c = read.template samples<0>(row.blue);
    auto pixels = demosaic2x2<Plane>({a, next(a), c, next(c)}, redLeft);
    repeat(pixels, n - 1);
    return pixels;
}
// The last 1 to N pixels of a row, or all of a narrow one, through buffers.
template <class S, class Sink, class Plane>
__attribute__((noinline)) void endOfRow2x2(RowPair row, size_t x, size_t n, const S& read, const Sink& sink,
                                           Plane redLeft) {
    alignas(N) u8 red[bytesFor(N, S::bits)] = {}, blue[bytesFor(N, S::bits)] = {};
    const RowPair from = row.from<S>(x);
    std::memcpy(red, from.red, bytesFor(n, S::bits));
    std::memcpy(blue, from.blue, bytesFor(n, S::bits));
    sink.putPart(x, lastBlock2x2({red, blue}, n, read, redLeft), n);
}

// A sink takes the pixels from column x on: put() N of them, putPart() n.
template <class S, class Sink, class Plane>
INLINE void row2x2(RowPair row, size_t width, const S& read, const Sink& sink, Plane redLeft) {
    size_t x = 0;
    for (; x + N < width; x += N) {
        const RowPair from = row.from<S>(x);
        sink.put(x, demosaic2x2<Plane>({read.template samples<0>(from.red), read.template samples<1>(from.red),
                                        read.template samples<0>(from.blue), read.template samples<1>(from.blue)},
                                       redLeft));
    }
    if (width >= N && (width - N) % S::group == 0) // step back, to end with the row
        sink.put(width - N, lastBlock2x2(row.from<S>(width - N), N, read, redLeft));
    else
        endOfRow2x2(row, x, width - x, read, sink, redLeft);
}

// The sink that packs a row of pixels into memory.
template <class W> struct PackedRow {
    u8* d;
    const W& write;

    template <class Block> INLINE void put(size_t x, const Block& block) const { write.put(d + x * W::bytes, block); }
    template <class Block> INLINE void putPart(size_t x, const Block& block, size_t n) const {
        kel::putPart(write, d + x * W::bytes, block, n);
    }
};

template <class S, class W>
INLINE void mosaic2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const S& read, const W& write) {
    using Plane = decltype(read.template samples<0>(s));
    const Plane redLeft = columns<Plane>(phase % 2 == 0);
    const size_t sourcePitch = width * S::bits / 8, pitch = width * W::bytes;
    for (size_t y = 0; y + 1 < height; ++y, d += pitch)
        row2x2(rowPair(s, sourcePitch, y, phase), width, read, PackedRow<W>{d, write}, redLeft);
    std::memcpy(d, d - pitch, pitch);
}

template <class S, class W> void mosaic2x2Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase) {
    mosaic2x2(d, s, width, height, phase, S(), W());
}

template <class S, class W>
void shiftedMosaic2x2Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase, int shift) {
    mosaic2x2(d, s, width, height, phase, S(shift), W());
}

// The kernels of one sample reader for a list of outputs.
template <class S, int... outputs> constexpr ByOutput<Mosaic> mosaics2x2() {
    ByOutput<Mosaic> table;
    (table.set(outputs, mosaic2x2Kernel<S, WriterOf<outputs>>), ...);
    return table;
}
template <class S, int... outputs> constexpr ByOutput<ShiftedMosaic> shiftedMosaics2x2() {
    ByOutput<ShiftedMosaic> table;
    (table.set(outputs, shiftedMosaic2x2Kernel<S, WriterOf<outputs>>), ...);
    return table;
}

} // namespace
} // namespace kel
