// The plain loops for complementary-colour mosaics: row after row, each in its own phase, two columns at a time.
#include <cstring>
#include <string>

#include "bench/plain/loops.h"
#include "bench/plain/pixels.h"
#include "catalogue/conversions.h"

namespace bench {
namespace {

// Luma and the differences towards blue and red, before they are divided.
struct Terms {
    int y, p, q;
};
inline Terms operator+(Terms a, Terms b) { return {a.y + b.y, a.p + b.p, a.q + b.q}; }

// Of the block whose upper line has the phase and whose left column is x, even or odd.
template <int phase, bool even> Terms terms(const u8* upper, const u8* lower, size_t x) {
    const size_t e = even ? x : x + 1, o = even ? x + 1 : x;
    const int sum = upper[e] + upper[o] + lower[e] + lower[o];
    const int c = (upper[o] + lower[o]) - (upper[e] + lower[e]), d = (upper[e] + lower[o]) - (upper[o] + lower[e]);
    constexpr bool turned = phase >= 2;
    return {sum, turned ? -c : phase == 0 ? d : -d, turned ? (phase == 2 ? -d : d) : c};
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

template <OrvOutputCode output> void putTwo(u8* d, Rgb8 p, Rgb8 q) {
    if constexpr (output == OrvOutputYuv422) {
        putPair(d, p, q);
    } else {
        put<output>(d, p);
        put<output>(d + bytesPerPixel(output), q);
    }
}

// ---- A pixel from its block

template <OrvOutputCode output, int phase> void row(u8* __restrict d, const Frame& frame, size_t y) {
    constexpr size_t pitch = bytesPerPixel(output);
    const u8 *upper = frame.line(y), *lower = frame.line(y + 1);
    for (size_t x = 0; x + 2 < frame.width; x += 2)
        putTwo<output>(d + x * pitch, colourOf<1>(terms<phase, true>(upper, lower, x)),
                       colourOf<1>(terms<phase, false>(upper, lower, x + 1)));
    const Rgb8 last = colourOf<1>(terms<phase, true>(upper, lower, frame.width - 2));
    putTwo<output>(d + (frame.width - 2) * pitch, last, last);
}

template <OrvOutputCode output> void ownBlock(const Job& job) {
    const Frame frame{job.from, job.width, job.height};
    const size_t pitch = job.width * bytesPerPixel(output);
    constexpr decltype(&row<output, 0>) rows[] = {row<output, 0>, row<output, 1>, row<output, 2>, row<output, 3>};
    for (size_t y = 0; y + 1 < job.height; ++y) rows[y % 4](job.to + y * pitch, frame, y);
    std::memcpy(job.to + (job.height - 1) * pitch, job.to + (job.height - 2) * pitch, pitch);
}

// ---- A pixel from the four blocks around it

template <OrvOutputCode output, int phase> void row3x3(u8* __restrict d, const Frame& frame, size_t y) {
    constexpr size_t pitch = bytesPerPixel(output);
    constexpr int above = (phase + 3) % 4;
    const u8 *up = frame.line(y - 1), *here = frame.line(y), *down = frame.line(y + 1);
    const auto odd = [&](size_t x) {
        return colourOf<4>(terms<above, true>(up, here, x - 1) + terms<above, false>(up, here, x) +
                           terms<phase, true>(here, down, x - 1) + terms<phase, false>(here, down, x));
    };
    const auto even = [&](size_t x) {
        return colourOf<4>(terms<above, false>(up, here, x - 1) + terms<above, true>(up, here, x) +
                           terms<phase, false>(here, down, x - 1) + terms<phase, true>(here, down, x));
    };
    putTwo<output>(d, odd(1), odd(1));
    for (size_t x = 2; x + 2 < frame.width; x += 2) putTwo<output>(d + x * pitch, even(x), odd(x + 1));
    const Rgb8 last = even(frame.width - 2);
    putTwo<output>(d + (frame.width - 2) * pitch, last, last);
}

template <OrvOutputCode output> void fourBlocks(const Job& job) {
    const Frame frame{job.from, job.width, job.height};
    const size_t pitch = job.width * bytesPerPixel(output);
    constexpr decltype(&row3x3<output, 0>) rows[] = {row3x3<output, 0>, row3x3<output, 1>, row3x3<output, 2>,
                                                     row3x3<output, 3>};
    for (size_t y = 1; y + 1 < job.height; ++y) rows[y % 4](job.to + y * pitch, frame, y);
    std::memcpy(job.to, job.to + pitch, pitch);
    std::memcpy(job.to + (job.height - 1) * pitch, job.to + (job.height - 2) * pitch, pitch);
}

// ---- A pixel for each block

template <OrvOutputCode output, int phase> void rowBinned(u8* __restrict d, const Frame& frame, size_t y) {
    constexpr size_t pitch = bytesPerPixel(output);
    const u8 *upper = frame.line(y), *lower = frame.line(y + 1);
    const auto pixel = [&](size_t x) { return colourOf<1>(terms<phase, true>(upper, lower, 2 * x)); };
    if constexpr (output == OrvOutputYuv422)
        for (size_t x = 0; x < frame.width / 2; x += 2) putPair(d + x * pitch, pixel(x), pixel(x + 1));
    else
        for (size_t x = 0; x < frame.width / 2; ++x) put<output>(d + x * pitch, pixel(x));
}

template <OrvOutputCode output> void binned(const Job& job) {
    const Frame frame{job.from, job.width, job.height};
    u8* d = job.to;
    for (size_t y = 0; y < job.height; y += 2, d += job.width / 2 * bytesPerPixel(output))
        y % 4 == 0 ? rowBinned<output, 0>(d, frame, y) : rowBinned<output, 2>(d, frame, y);
}

template <OrvOutputCode... outputs> void add(std::vector<PeerRow>& rows) {
    const auto addRow = [&](const std::string& source, OrvOutputCode output, void (*loop)(const Job&)) {
        rows.push_back(bench::row(source + " -> " + catalogue::nameOf(output), loop));
    };
    (addRow("CYGM8", outputs, ownBlock<outputs>), ...);
    (addRow("CYGM8 3x3", outputs, fourBlocks<outputs>), ...);
    (addRow("CYGM8 binned", outputs, binned<outputs>), ...);
}

} // namespace

void addCygmLoops(std::vector<PeerRow>& rows) { add<0, 1, 2, 3, 4, 5, 6>(rows); }

} // namespace bench
