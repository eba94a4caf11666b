// Compiled once per instruction-set level.
#include "cygm/cygm_kernels.h"

#include "bayer/bayer_readers.h"
#include "cygm/cygm_rule.h"

namespace kel {
namespace {

// The frame comes as two fields: first the odd lines, then the even ones.
struct Fields {
    const u8* s;
    size_t width, height;

    INLINE const u8* line(size_t l) const { return s + (l % 2 ? l / 2 : (height + l) / 2) * width; }
};

// ---- Every pixel from its block

template <class W> void cygmKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pitch = width * W::bytes;
    for (size_t y = 0; y + 1 < height; ++y, d += pitch)
        row2x2({fields.line(y), fields.line(y + 1)}, width, Raw8Samples(), RowSink<W>{d, W()}, CygmRule(y));
    std::memcpy(d, d - pitch, pitch);
}

// ---- Binning: one pixel for each block of columns 2c, 2c + 1 and lines 2r, 2r + 1

// N pixels from 2 N samples of each line.
INLINE Rgb binnedBlock(const u8* upper, const u8* lower, const CygmFactors& factors) {
    const Halves u = loadHalves(upper), l = loadHalves(lower);
    const CygmTerms a = blockTerms<-1, 1>(as<Bytes>(u.a), as<Bytes>(l.a));
    const CygmTerms b = blockTerms<-1, 1>(as<Bytes>(u.b), as<Bytes>(l.b));
    return {clampHalves(factors.red(a), factors.red(b)), clampHalves(factors.green(a), factors.green(b)),
            clampHalves(factors.blue(a), factors.blue(b))};
}

template <class W> void binnedKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pixels = width / 2;
    for (size_t y = 0; y < height; y += 2, d += pixels * W::bytes) {
        const u8 *upper = fields.line(y), *lower = fields.line(y + 1);
        const CygmFactors factors(y);
        const RowSink<W> row{d, W()};
        size_t x = 0;
        for (; x + N <= pixels; x += N) row.put(x, binnedBlock(upper + 2 * x, lower + 2 * x, factors));
        if (x == pixels) continue;
        alignas(N) u8 lastUpper[2 * N] = {}, lastLower[2 * N] = {};
        std::memcpy(lastUpper, upper + 2 * x, width - 2 * x);
        std::memcpy(lastLower, lower + 2 * x, width - 2 * x);
        row.putPart(x, binnedBlock(lastUpper, lastLower, factors), pixels - x);
    }
}

// ---- 3x3: the four blocks that touch a pixel, as one block of twice the size
//
//     a b c      Of one line, the two blocks to the left and to the right of b hold a + 2 b + c, and their differences
//     d e f      o - e add up to a + c - 2 b where b is in an even column and to 2 b - a - c where it is in an odd one.
//     g h i      The upper two blocks have another phase than the lower two.

struct LineTerms {
    Words sum;
    Ints difference;
};
// odd: of the pixels in odd columns, which are the odd ones here.
template <int odd> INLINE LineTerms lineTerms(Bytes left, Bytes here, Bytes right) {
    const auto half = [](Bytes v) { return odd ? secondOfPairs(v) : firstOfPairs(v); };
    const Words outer = half(left) + half(right), twice = half(here) << 1;
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

// N pixels; left: the samples left of the first one, in the lines y - 1, y and y + 1.
template <int odd> INLINE CygmTerms neighbourhood(size_t y, const u8* const (&left)[3]) {
    const auto line = [&](int k) { return lineTerms<odd>(load(left[k]), load(left[k] + 1), load(left[k] + 2)); };
    return terms3x3(y, line(0), line(1), line(2));
}
INLINE Rgb block3x3(size_t y, const u8* const (&left)[3], const CygmFactors& factors) {
    const CygmTerms even = neighbourhood<0>(y, left), odd = neighbourhood<1>(y, left);
    return {clampPairs(factors.red(even), factors.red(odd)), clampPairs(factors.green(even), factors.green(odd)),
            clampPairs(factors.blue(even), factors.blue(odd))};
}

INLINE void copyPixel(Rgb& p, size_t to, size_t from) { p.r[to] = p.r[from], p.g[to] = p.g[from], p.b[to] = p.b[from]; }

// The first or the last n <= N pixels of a row, from samples that are copied to where a block can read them all.
INLINE Rgb endBlock3x3(const Fields& fields, size_t x, size_t n, size_t y, const CygmFactors& factors) {
    u8 window[3][N + 2] = {};
    const size_t first = x > 0 ? x - 1 : 0, end = x + n < fields.width ? x + n + 1 : fields.width;
    for (size_t k = 0; k < 3; ++k)
        std::memcpy(window[k] + (first + 1 - x), fields.line(y - 1 + k) + first, end - first);
    Rgb pixels = block3x3(y, {window[0], window[1], window[2]}, factors);
    if (x + n == fields.width) copyPixel(pixels, n - 1, n - 2);
    if (x == 0) copyPixel(pixels, 0, 1);
    return pixels;
}

template <class W> void row3x3(u8* d, const Fields& fields, size_t y) {
    const CygmFactors factors(0);
    const RowSink<W> row{d, W()};
    const size_t width = fields.width, head = width < N ? width : N;
    row.putPart(0, endBlock3x3(fields, 0, head, y, factors), head);

    const u8 *up = fields.line(y - 1), *here = fields.line(y), *down = fields.line(y + 1);
    size_t x = head;
    for (; x + N < width; x += N) row.put(x, block3x3(y, {up + x - 1, here + x - 1, down + x - 1}, factors));
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

namespace KEL_LEVEL {

extern const CygmKernels cygmKernels;
constexpr CygmKernels cygmKernels{
    .cygm8 = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return cygmKernel<WriterOf<output>>; }),
    .binned = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return binnedKernel<WriterOf<output>>; }),
    .by3x3 = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return cygm3x3Kernel<WriterOf<output>>; }),
};

} // namespace KEL_LEVEL
} // namespace kel
