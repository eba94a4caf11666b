// Complementary-colour mosaics by 3x3: the four blocks that touch a pixel, as one block of twice the size.
//
//     a b c      Of one line, the two blocks to the left and to the right of b hold a + 2 b + c, and their differences
//     d e f      o - e add up to a + c - 2 b where b is in an even column and to 2 b - a - c where it is in an odd one.
//     g h i      The upper two blocks have another phase than the lower two.
#pragma once
#include "bayer/bayer_readers.h"
#include "cygm/cygm_rule.h"
#include "kernels/columns.h"

namespace kel {
namespace {

// The frame comes as two fields: first the odd lines, then the even ones.
struct Fields {
    const u8* s;
    size_t width, height;

    INLINE const u8* line(size_t l) const { return s + (l % 2 ? l / 2 : (height + l) / 2) * width; }
};

struct LineTerms {
    Words sum;
    Ints difference;
};
// odd: of the pixels in odd columns, which are the odd ones here.
template <bool odd> INLINE LineTerms lineTerms(Words left, Words here, Words right) {
    const Words outer = left + right, twice = here << 1;
    return {outer + twice, odd ? as<Ints>(twice - outer) : as<Ints>(outer - twice)};
}

// trunc(v / 16)
INLINE Ints sixteenth(Ints v) { return (v + as<Ints>(as<Words>(v >> 15) >> 12)) >> 4; }

// P and Q of a pair of lines from C = lower + upper and D = lower - upper: see the table above CygmFactors.
struct ColourTerms {
    Ints q, p;
};
INLINE ColourTerms colourTerms(size_t upperLine, Ints upper, Ints lower) {
    const Ints c = lower + upper, d = lower - upper;
    switch (upperLine % 4) {
    case 0: return {c, d};
    case 1: return {c, -d};
    case 2: return {-d, -c};
    default: return {d, -c};
    }
}

// Of N / 2 pixels of line y, from the lines y - 1, y and y + 1. They are weighed with the factors of phase 0, where C
// is Q and D is P.
INLINE CygmTerms terms3x3(size_t y, const LineTerms& up, const LineTerms& here, const LineTerms& down) {
    const ColourTerms upper = colourTerms(y - 1, up.difference, here.difference);
    const ColourTerms lower = colourTerms(y, here.difference, down.difference);
    return {(up.sum + 2 * here.sum + down.sum) >> 4,
            pairUp(as<Words>(sixteenth(upper.q + lower.q)), as<Words>(sixteenth(upper.p + lower.p)))};
}

// The pixels of even or odd columns, from their neighbourhoods in the lines y - 1, y and y + 1.
template <bool odd>
INLINE CygmTerms terms3x3(size_t y, const Three<Words>& up, const Three<Words>& here, const Three<Words>& down) {
    const auto terms = [](const Three<Words>& t) { return lineTerms<odd>(t.left, t.here, t.right); };
    return terms3x3(y, terms(up), terms(here), terms(down));
}
struct Widened {
    Three<Words> a, b;

    INLINE explicit Widened(const Three<Bytes>& t) {
        const Split left = widen(t.left), here = widen(t.here), right = widen(t.right);
        a = {left.a, here.a, right.a}, b = {left.b, here.b, right.b};
    }
};
template <bool odd>
INLINE Rgb colours3x3(size_t y, const Widened& up, const Widened& here, const Widened& down,
                      const CygmFactors& factors) {
    return factors.colours(terms3x3<odd>(y, up.a, here.a, down.a), terms3x3<odd>(y, up.b, here.b, down.b));
}

// A block; c: its first samples, in the lines y - 1, y and y + 1.
INLINE Rgb pixels3x3(size_t y, const Threes<Words>& up, const Threes<Words>& here, const Threes<Words>& down,
                     const CygmFactors& factors) {
    return factors.colours(terms3x3<false>(y, up.even, here.even, down.even),
                           terms3x3<true>(y, up.odd, here.odd, down.odd));
}
INLINE Apart<Rgb> pixels3x3(size_t y, const Threes<Bytes>& up, const Threes<Bytes>& here, const Threes<Bytes>& down,
                            const CygmFactors& factors) {
    return {colours3x3<false>(y, Widened(up.even), Widened(here.even), Widened(down.even), factors),
            colours3x3<true>(y, Widened(up.odd), Widened(here.odd), Widened(down.odd), factors)};
}
INLINE auto block3x3(size_t y, const u8* const (&c)[3], const CygmFactors& factors) {
    return pixels3x3(y, Threes<Column>(c[0]), Threes<Column>(c[1]), Threes<Column>(c[2]), factors);
}
constexpr size_t block = 2 * pixelsIn<Column>;

INLINE void copyPixel(Rgb& p, size_t to, size_t from) { p.r[to] = p.r[from], p.g[to] = p.g[from], p.b[to] = p.b[from]; }
INLINE void copyPixel(Apart<Rgb>& p, size_t to, size_t from) {
    Rgb &d = to % 2 ? p.odd : p.even, &s = from % 2 ? p.odd : p.even;
    d.r[to / 2] = s.r[from / 2], d.g[to / 2] = s.g[from / 2], d.b[to / 2] = s.b[from / 2];
}

// The first or the last n pixels of a row, from samples that are copied to where a block can read them all.
INLINE auto endBlock3x3(const Fields& fields, size_t x, size_t n, size_t y, const CygmFactors& factors) {
    u8 window[3][block + 2] = {};
    const size_t first = x > 0 ? x - 1 : 0, end = x + n < fields.width ? x + n + 1 : fields.width;
    for (size_t k = 0; k < 3; ++k)
        std::memcpy(window[k] + (first + 1 - x), fields.line(y - 1 + k) + first, end - first);
    auto pixels = block3x3(y, {window[0] + 1, window[1] + 1, window[2] + 1}, factors);
    if (x + n == fields.width) copyPixel(pixels, n - 1, n - 2);
    if (x == 0) copyPixel(pixels, 0, 1);
    return pixels;
}

template <class W> void row3x3(u8* d, const Fields& fields, size_t y) {
    const CygmFactors factors(0);
    const RowSink<W> row{d, W()};
    const size_t width = fields.width, head = width < block ? width : block;
    row.putPart(0, endBlock3x3(fields, 0, head, y, factors), head);

    const u8 *up = fields.line(y - 1), *here = fields.line(y), *down = fields.line(y + 1);
    size_t x = head;
    for (; x + block < width; x += block) row.put(x, block3x3(y, {up + x, here + x, down + x}, factors));
    if (x < width) row.putPart(x, endBlock3x3(fields, x, width - x, y, factors), width - x);
}

template <class W> void cygm3x3Kernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pitch = width * W::bytes;
    for (size_t y = 1; y + 1 < height; ++y) row3x3<W>(d + y * pitch, fields, y);
    std::memcpy(d, d + pitch, pitch);
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
}

} // namespace
} // namespace kel
