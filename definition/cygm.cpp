// Complementary-colour mosaics of 8 bits: cyan, yellow, green and magenta cells.
//
// The source is a frame of two fields, the odd lines first. A pixel is made from 2x2 cells: of two lines U and L, one
// even column e and one odd column o.
//
//     Y = (eU + oU + eL + oL) >> 2, and with C = (oU + oL) - (eU + eL) and D = (eU + oL) - (oU + eL)
//
//     line U % 4          0     1     2     3
//     P, towards blue     D    -D    -C    -C       both divided by 4, toward zero
//     Q, towards red      C     C    -D     D
//
//     R = Y + ((2165 Q +  344 P) >> 10)             clamped to 0..255
//     G = Y + ((-917 Q - 1078 P) >> 10)
//     B = Y + ((-959 Q + 4645 P) >> 10)
#include "definition/mosaics.h"

namespace definition {
namespace {

// Y, P and Q before they are divided.
struct Terms {
    int y, p, q;
};
inline Terms operator+(Terms a, Terms b) { return {a.y + b.y, a.p + b.p, a.q + b.q}; }

// Of the block whose left column is x, even or odd; phase: of its upper line, % 4.
template <int phase, bool even> Terms terms(const u8* upper, const u8* lower, size_t x) {
    const size_t e = even ? x : x + 1, o = even ? x + 1 : x;
    const int sum = upper[e] + upper[o] + lower[e] + lower[o];
    const int c = (upper[o] + lower[o]) - (upper[e] + lower[e]), d = (upper[e] + lower[o]) - (upper[o] + lower[e]);
    if (phase == 0) return {sum, d, c};
    if (phase == 1) return {sum, -d, c};
    return {sum, -c, phase == 2 ? -d : d};
}

template <int blocks> Rgb8 colourOf(Terms t) {
    const int y = t.y / (4 * blocks), p = t.p / (4 * blocks), q = t.q / (4 * blocks);
    return {clamp(y + ((2165 * q + 344 * p) >> 10)), clamp(y + ((-917 * q - 1078 * p) >> 10)),
            clamp(y + ((-959 * q + 4645 * p) >> 10))};
}

struct Frame {
    const u8* s;
    size_t width, height;

    const u8* line(size_t l) const { return s + (l % 2 ? l / 2 : (height + l) / 2) * width; }
};

// A pixel from its block, row y from the lines y and y + 1.
template <OrvOutputCode output, int phase> ROW row2x2(u8* __restrict d, const Frame& frame, size_t y) {
    const u8 *upper = frame.line(y), *lower = frame.line(y + 1);
    putRow(
        d, frame.width, [=](size_t x) { return colourOf<1>(terms<phase, true>(upper, lower, x)); },
        [=](size_t x) { return colourOf<1>(terms<phase, false>(upper, lower, x)); }, Packed<output>());
}

// A pixel from the four blocks around it. The outer columns repeat their neighbours.
template <OrvOutputCode output, int phase> ROW row3x3(u8* __restrict d, const Frame& frame, size_t y) {
    constexpr int above = (phase + 3) % 4;
    const u8 *up = frame.line(y - 1), *here = frame.line(y), *down = frame.line(y + 1);
    const auto odd = [=](size_t x) {
        return colourOf<4>(terms<above, true>(up, here, x - 1) + terms<above, false>(up, here, x) +
                           terms<phase, true>(here, down, x - 1) + terms<phase, false>(here, down, x));
    };
    const auto even = [=](size_t x) {
        return colourOf<4>(terms<above, false>(up, here, x - 1) + terms<above, true>(up, here, x) +
                           terms<phase, false>(here, down, x - 1) + terms<phase, true>(here, down, x));
    };
    constexpr Packed<output> to;
    const size_t last = frame.width - 2;
    to.two(d, 0, odd(1), odd(1));
    for (size_t x = 2; x < last; x += 2) to.two(d, x, even(x), odd(x + 1));
    to.two(d, last, even(last), even(last));
}

// A pixel for each block of its own.
template <OrvOutputCode output, int phase> ROW binnedRow(u8* __restrict d, const Frame& frame, size_t y) {
    constexpr Packed<output> to;
    const u8 *upper = frame.line(y), *lower = frame.line(y + 1);
    const auto pixel = [=](size_t x) { return colourOf<1>(terms<phase, true>(upper, lower, 2 * x)); };
    const size_t width = frame.width / 2;
    if constexpr (output == OrvOutputYuv422)
        for (size_t x = 0; x < width; x += 2) to.two(d, x, pixel(x), pixel(x + 1));
    else
        for (size_t x = 0; x < width; ++x) to.one(d, x, pixel(x));
}

// ---- Frames

template <OrvOutputCode output> void by2x2(const Job& job) {
    constexpr decltype(&row2x2<output, 0>) rows[] = {row2x2<output, 0>, row2x2<output, 1>, row2x2<output, 2>,
                                                     row2x2<output, 3>};
    const Frame frame{job.source, job.width, job.height};
    const size_t pitch = job.width * outputs[output].bytes;
    for (size_t y = 0; y + 1 < job.height; ++y) rows[y % 4](job.destination + y * pitch, frame, y);
    std::memcpy(job.destination + (job.height - 1) * pitch, job.destination + (job.height - 2) * pitch, pitch);
}

template <OrvOutputCode output> void by3x3(const Job& job) {
    constexpr decltype(&row3x3<output, 0>) rows[] = {row3x3<output, 0>, row3x3<output, 1>, row3x3<output, 2>,
                                                     row3x3<output, 3>};
    const Frame frame{job.source, job.width, job.height};
    const size_t pitch = job.width * outputs[output].bytes;
    for (size_t y = 1; y + 1 < job.height; ++y) rows[y % 4](job.destination + y * pitch, frame, y);
    std::memcpy(job.destination, job.destination + pitch, pitch);
    std::memcpy(job.destination + (job.height - 1) * pitch, job.destination + (job.height - 2) * pitch, pitch);
}

template <OrvOutputCode output> void binned(const Job& job) {
    const Frame frame{job.source, job.width, job.height};
    u8* d = job.destination;
    for (size_t y = 0; y < job.height; y += 2, d += job.width / 2 * outputs[output].bytes)
        y % 4 == 0 ? binnedRow<output, 0>(d, frame, y) : binnedRow<output, 2>(d, frame, y);
}

template <OrvOutputCode... output> void add(Table& table) {
    (table.add("CYGM8", output, by2x2<output>), ...);
    (table.add("CYGM8 3x3", output, by3x3<output>), ...);
    (table.add("CYGM8 binned", output, binned<output>), ...);
}

} // namespace

void addCygm(Table& table) { add<0, 1, 2, 3, 4, 5, 6>(table); }

} // namespace definition
