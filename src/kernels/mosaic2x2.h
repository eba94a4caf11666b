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
#include "kernels/blocks2x2.h"

namespace kel {
namespace {

INLINE Rgb colours(Bytes r, Bytes g, Bytes b) { return {r, g, b}; }
INLINE Rgb16 colours(Halves r, Halves g, Halves b) { return {r, g, b}; }

// Of blocks whose first row is the red one.
template <class Plane> struct Demosaic2x2 {
    Plane redLeft;

    INLINE explicit Demosaic2x2(unsigned phase) : redLeft(columns<Plane>(phase % 2 == 0)) {}
    INLINE auto operator()(const Blocks<Plane>& s) const {
        return colours(select(redLeft, s.a, s.b), mean(select(redLeft, s.b, s.a), select(redLeft, s.c, s.d)),
                       select(redLeft, s.d, s.c));
    }
};

// Source rows y and y + 1, `pitch` bytes long each; the red one first.
INLINE RowPair rowPair(const u8* s, size_t pitch, size_t y, unsigned phase) {
    const u8 *top = s + y * pitch, *bottom = top + pitch;
    return (phase / 2 + y) % 2 ? RowPair{bottom, top} : RowPair{top, bottom};
}

template <class S, class W>
INLINE void mosaic2x2(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const S& read, const W& write) {
    const Demosaic2x2<PlaneOf<S>> demosaic(phase);
    const size_t sourcePitch = width * S::bits / 8, pitch = width * W::bytes;
    for (size_t y = 0; y + 1 < height; ++y, d += pitch)
        row2x2(rowPair(s, sourcePitch, y, phase), width, read, PackedRow<W>{d, write}, demosaic);
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
    return tableOf<Mosaic, outputs...>([]<int output>() { return mosaic2x2Kernel<S, WriterOf<output>>; });
}
template <class S, int... outputs> constexpr ByOutput<ShiftedMosaic> shiftedMosaics2x2() {
    return tableOf<ShiftedMosaic, outputs...>([]<int output>() { return shiftedMosaic2x2Kernel<S, WriterOf<output>>; });
}

} // namespace
} // namespace kel
