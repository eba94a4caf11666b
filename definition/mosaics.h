// Bayer mosaics: where the colours are, and the pixel that a 2x2 block of samples makes.
#pragma once
#include <vector>

#include "definition/samples.h"
#include "definition/tables.h"

namespace definition {
namespace {

// ---- Colours repeat every other row and column: one row has red and green samples, the next green and blue

struct Layout {
    size_t redRow, redColumn; // 0: the even ones, 1: the odd ones

    explicit Layout(unsigned pattern) : redRow(pattern % 2), redColumn(pattern / 2) {}
    bool isRedRow(size_t y) const { return y % 2 == redRow; }
};

inline Rgb8 colourOf(u8 r, int g, u8 b) { return {r, static_cast<u8>(g), b}; }
inline Rgb16 colourOf(u16 r, int g, u16 b) { return {r, static_cast<u16>(g), b}; }

// The block of columns x and x + 1 of a row with red samples and a row with blue ones, whichever is on top. Red and blue
// lie diagonally across, green is the truncated mean of the other two.
template <bool redLeft, class Sample> auto block(const Sample* redRow, const Sample* blueRow, size_t x) {
    const size_t red = redLeft ? x : x + 1, blue = redLeft ? x + 1 : x;
    return colourOf(redRow[red], (redRow[blue] + blueRow[red]) >> 1, blueRow[blue]);
}

// ---- Rows of pixels that are made alternately by two rules; each pixel by the block whose left column is its own

// Puts one or two pixels of a row that begins at d.
template <OrvOutputCode output> struct Packed {
    static constexpr size_t bytes = outputs[output].bytes;

    template <class Pixel> static void two(u8* d, size_t x, Pixel p, Pixel q) { putTwo<output>(d + x * bytes, p, q); }
    template <class Pixel> static void one(u8* d, size_t x, Pixel p) {
        if constexpr (output != OrvOutputYuv422) put<output>(d + x * bytes, p); // UYVY comes in pairs
    }
};

// The last pixel, which has no block, repeats the one before.
template <class Even, class Odd, class To> ROW putRow(u8* __restrict d, size_t width, Even even, Odd odd, To to) {
    size_t x = 0;
    for (; x + 2 < width; x += 2) to.two(d, x, even(x), odd(x + 1));
    if (x + 2 == width)
        to.two(d, x, even(x), even(x));
    else
        to.one(d, x, odd(x - 1));
}

template <bool redInEvenColumns, class Sample, class Finish, class To>
void row2x2(u8* __restrict d, const Sample* __restrict redRow, const Sample* __restrict blueRow, size_t width,
            Finish finish, To to) {
    putRow(
        d, width, [=](size_t x) { return finish(block<redInEvenColumns>(redRow, blueRow, x)); },
        [=](size_t x) { return finish(block<!redInEvenColumns>(redRow, blueRow, x)); }, to);
}

// Row y of the image from two rows of samples, y (top) and y + 1. finish(pixel) is what is put for it.
template <class Sample, class Finish, class To>
void row2x2(u8* d, const Layout& layout, size_t y, const Sample* top, const Sample* bottom, size_t width, Finish finish,
            To to) {
    const Sample *redRow = layout.isRedRow(y) ? top : bottom, *blueRow = layout.isRedRow(y) ? bottom : top;
    if (layout.redColumn == 0)
        row2x2<true>(d, redRow, blueRow, width, finish, to);
    else
        row2x2<false>(d, redRow, blueRow, width, finish, to);
}

} // namespace
} // namespace definition
