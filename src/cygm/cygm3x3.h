// Complementary-colour mosaics by 3x3: the four blocks that touch a pixel, as one block of twice the size.
//
//     a b c      Y is the mean of 16 cells: of each line a + 2 b + c, and of these sums the same.
//     d e f      For Q and P, the cells of a line count with one sign in the even and with another one in the odd columns:
//     g h i      a line's difference is a + c - 2 b, or 2 b - a - c where b is in an odd column. With those of the lines
//                y - 1, y and y + 1, which are u, h and l,
//
//                y % 4          0              1              2              3
//                Q         l - u + 2 h    l + u + 2 h    u - l + 2 h    l + u - 2 h       both divided by 16 and
//                P         l - u - 2 h    2 h - l - u    u - l - 2 h   -2 h - l - u       truncated toward zero
#pragma once
#include "bayer/bayer_readers.h"
#include "cygm/cygm_rule.h"
#include "kernels/columns.h"

namespace kel {
namespace {

template <int k> INLINE Split sums(Split a, Split b, Split c) {
    return {sums<k>(a.a, b.a, c.a), sums<k>(a.b, b.b, c.b)};
}

// The lines y - 1, y and y + 1, from the same column on. Where y % 4 is 2 the outer ones have changed places: what is left
// of the table are the first two columns, `ofCyan` or not, and whether it is 2 h or -2 h.
struct Lines3 {
    const u8 *first, *here, *last;

    INLINE Lines3 from(size_t x) const { return {first + x, here + x, last + x}; }
};
INLINE Lines3 lines3(const Fields& fields, size_t y) {
    const size_t swap = y % 4 == 2;
    return {fields.line(y - 1 + 2 * swap), fields.line(y), fields.line(y + 1 - 2 * swap)};
}

// Of each of N / 2 or N columns u + 2 h + l of the cells, and l - u or l + u. Sum: Words, or a Split.
template <bool ofCyan, class Column> struct Column3 {
    using Sum = decltype(sums(Column(), Column()));
    Column here;
    Sum all, outer;

    INLINE Column3(Column first, Column own, Column last)
        : here(own), all(sums<2>(first, own, last)), outer(ofCyan ? differences(last, first) : sums(first, last)) {}
};

// From a + 2 b + c of the columns' sums and a + c - 2 b of the others.
template <bool ofCyan, bool odd> INLINE CygmTerms terms3x3(Words all, Words outer, Words here, int twice) {
    const Words own = times(here, odd ? -twice : twice), others = odd ? -outer : outer;
    return {all >> 4, quotient<4>(others + own), quotient<4>(ofCyan ? others - own : own - others)};
}
struct TermsOfSplit {
    CygmTerms a, b;
};
template <bool ofCyan, bool odd> INLINE TermsOfSplit terms3x3(Split all, Split outer, Split here, int twice) {
    return {terms3x3<ofCyan, odd>(all.a, outer.a, here.a, twice), terms3x3<ofCyan, odd>(all.b, outer.b, here.b, twice)};
}
template <bool odd, bool ofCyan, class Column>
INLINE auto terms3x3(const Column3<ofCyan, Column>& left, const Column3<ofCyan, Column>& own,
                     const Column3<ofCyan, Column>& right, int twice) {
    return terms3x3<ofCyan, odd>(sums<2>(left.all, own.all, right.all), sums<-2>(left.outer, own.outer, right.outer),
                                 sums<-2>(left.here, own.here, right.here), twice);
}

INLINE Rgb pixels3x3(const CygmTerms& even, const CygmTerms& odd) { return CygmFactors(0).colours(even, odd); }
INLINE Apart<Rgb> pixels3x3(const TermsOfSplit& even, const TermsOfSplit& odd) {
    return {colours(even.a, even.b), colours(odd.a, odd.b)};
}

// A block, from its first samples.
template <bool ofCyan> INLINE auto block3x3(const Lines3& lines, int twice) {
    using Column3 = kel::Column3<ofCyan, Column>;
    const Threes<Column> a(lines.first), b(lines.here), c(lines.last);
    const Column3 before(a.even.left, b.even.left, c.even.left), even(a.even.here, b.even.here, c.even.here);
    const Column3 odd(a.odd.here, b.odd.here, c.odd.here), after(a.odd.right, b.odd.right, c.odd.right);
    return pixels3x3(terms3x3<false>(before, even, odd, twice), terms3x3<true>(even, odd, after, twice));
}
constexpr size_t block = 2 * pixelsIn<Column>;

INLINE void copyPixel(Rgb& p, size_t to, size_t from) { p.r[to] = p.r[from], p.g[to] = p.g[from], p.b[to] = p.b[from]; }
INLINE void copyPixel(Apart<Rgb>& p, size_t to, size_t from) {
    Rgb &d = to % 2 ? p.odd : p.even, &s = from % 2 ? p.odd : p.even;
    d.r[to / 2] = s.r[from / 2], d.g[to / 2] = s.g[from / 2], d.b[to / 2] = s.b[from / 2];
}

// n pixels from column x on, the first or the last ones of a row, from samples that are copied to where a block can read
// them all.
template <bool ofCyan>
INLINE auto endBlock3x3(const Lines3& lines, size_t x, size_t n, bool first, bool last, int twice) {
    u8 window[3][block + 2] = {};
    const Lines3 from = lines.from(x - !first);
    const size_t bytes = n + !first + !last;
    std::memcpy(window[0] + first, from.first, bytes);
    std::memcpy(window[1] + first, from.here, bytes);
    std::memcpy(window[2] + first, from.last, bytes);
    auto pixels = block3x3<ofCyan>({window[0] + 1, window[1] + 1, window[2] + 1}, twice);
    if (last) copyPixel(pixels, n - 1, n - 2);
    if (first) copyPixel(pixels, 0, 1);
    return pixels;
}

template <bool ofCyan, class W> void row3x3(u8* d, const Lines3& lines, size_t width, int twice) {
    const RowSink<W> row{d, W()};
    if (width <= block) return row.putPart(0, endBlock3x3<ofCyan>(lines, 0, width, true, true, twice), width);
    row.put(0, endBlock3x3<ofCyan>(lines, 0, block, true, false, twice));
    for (size_t x = block; x + block < width; x += block) row.put(x, block3x3<ofCyan>(lines.from(x), twice));
    row.put(width - block, endBlock3x3<ofCyan>(lines, width - block, block, false, true, twice));
}

template <class W> void cygm3x3Kernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pitch = width * W::bytes;
    for (size_t y = 1; y + 1 < height; ++y) {
        const auto row = y % 2 == 0 ? row3x3<true, W> : row3x3<false, W>;
        row(d + y * pitch, lines3(fields, y), width, y % 4 == 3 ? -2 : 2);
    }
    std::memcpy(d, d + pitch, pitch);
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
}

} // namespace
} // namespace kel
