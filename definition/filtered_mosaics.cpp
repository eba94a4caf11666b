// The chroma-filtered demosaics of 8-bit mosaics: LCAA, LCAAV and YUV422.
//
//     mosaic --2x2--> Y, U, V of every pixel --filter--> U Y V Y of each half of the rows --YUV 4:2:2--> output
//
// The filters see a half of the rows as one stream of pairs of pixels: left of a row's first pair stands the last one of
// the row before. The U Y V Y data go to the caller's source, which has room for one half; the lower one stays there.
#include <algorithm>
#include <functional>

#include "definition/mosaics.h"
#include "definition/runs.h"
#include "definition/yuv.h"

namespace definition {
namespace {

// Y, U and V, a plane of n bytes each.
struct YuvPlanes {
    size_t n;

    void one(u8* d, size_t x, Rgb8 p) const {
        d[x] = luma8<bt601>(p);
        d[n + x] = static_cast<u8>(((128 * p.b - 43 * p.r - 85 * p.g) >> 8) + 128);
        d[2 * n + x] = static_cast<u8>(((128 * p.r - 107 * p.g - 21 * p.b) >> 8) + 128);
    }
    void two(u8* d, size_t x, Rgb8 p, Rgb8 q) const { one(d, x, p), one(d, x + 1, q); }
};

std::vector<u8> planesOf(const Job& job) {
    const size_t n = job.pixels(), width = job.width;
    std::vector<u8> planes(3 * n);
    for (size_t y = 0; y < job.height; ++y) {
        const size_t from = y + 1 < job.height ? y : y - 1; // the last row repeats the one above
        const u8* top = job.source + from * width;
        row2x2(&planes[y * width], Layout(job.pattern), from, top, top + width, width, std::identity(), YuvPlanes{n});
    }
    return planes;
}

// A half of a chroma plane, in the plane.
struct Half {
    const u8* samples;
    size_t width, rows;
    bool isUpper;

    size_t pairs() const { return width * rows / 2; }
};

// A filter has a rule for pairs with all their neighbours, which are the pairs first .. end - 1, and one for the others.
struct Inner {
    size_t first, end;
};

// (s0 + s1) >> 1
struct PairMean {
    static Inner inner(const Half& half) { return {0, half.pairs()}; }
    static int of(const u8* s, size_t) { return (s[0] + s[1]) >> 1; }
    static int atEdge(const Half& half, size_t pair) { return of(half.samples + 2 * pair, half.width); }
};

// (s-2 + s-1 + s0 + s1) >> 2, with the pair before; the first pair is alone.
struct Lcaa {
    static Inner inner(const Half& half) { return {1, half.pairs()}; }
    static int of(const u8* s, size_t) { return (s[-2] + s[-1] + s[0] + s[1]) >> 2; }
    static int atEdge(const Half& half, size_t pair) { return PairMean::atEdge(half, pair); }
};

// (sum + 4) >> 3 of s-1 .. s2 in the row and in the row below. Towards the end there is no row below:
//   - the last two pairs are not filtered, they keep their first sample;
//   - before them, from the last pair of the second-to-last row on, the row above takes the place of the row below.
// What is not there: left of the first sample stands that sample, above the upper half its own row.
struct Lcaav {
    static Inner inner(const Half& half) {
        const size_t end = half.rows > 1 ? (half.rows - 1) * half.width / 2 - 1 : 0;
        return {1, end};
    }
    static int of(const u8* s, size_t width) { return box(s, s + width, s[-1], s[width - 1]); }

    static int atEdge(const Half& half, size_t pair) {
        const size_t i = 2 * pair, width = half.width;
        const u8* s = half.samples + i;
        if (pair + 2 >= half.pairs()) return s[0];

        const int left = i > 0 ? s[-1] : s[0];
        if (pair < inner(half).end) return box(s, s + width, left, s[width - 1]);
        const size_t above = half.isUpper ? i : i + half.rows * width; // samples of the image before this one
        if (above < width) return box(s, s, left, left);
        return box(s, s - width, left, above > width ? *(s - width - 1) : left);
    }

private:
    static int box(const u8* row, const u8* other, int left, int otherLeft) {
        return (left + row[0] + row[1] + row[2] + otherLeft + other[0] + other[1] + other[2] + 4) >> 3;
    }
};

template <class Filter> void filter(u8* __restrict uyvy, const u8* __restrict y, const Half& u, const Half& v) {
    const auto put = [=](size_t pair, int chromaU, int chromaV) {
        u8* const d = uyvy + 4 * pair;
        d[0] = static_cast<u8>(chromaU), d[1] = y[2 * pair];
        d[2] = static_cast<u8>(chromaV), d[3] = y[2 * pair + 1];
    };
    const auto [first, end] = Filter::inner(u);
    const size_t width = u.width;
    for (size_t pair = first; pair < end; ++pair)
        put(pair, Filter::of(u.samples + 2 * pair, width), Filter::of(v.samples + 2 * pair, width));
    for (size_t pair = 0; pair < first; ++pair) put(pair, Filter::atEdge(u, pair), Filter::atEdge(v, pair));
    for (size_t pair = std::max(first, end); pair < u.pairs(); ++pair)
        put(pair, Filter::atEdge(u, pair), Filter::atEdge(v, pair));
}

template <class Filter, OrvOutputCode output> void filtered(const Job& job) {
    const std::vector<u8> planes = planesOf(job);
    const size_t rows = job.height / 2, n = rows * job.width;
    const u8 *y = planes.data(), *u = y + 2 * n, *v = u + 2 * n;
    for (const bool isUpper : {true, false}) {
        const size_t start = isUpper ? 0 : n;
        const auto half = [&](const u8* plane) { return Half{plane + start, job.width, rows, isUpper}; };
        filter<Filter>(job.source, y + start, half(u), half(v));
        convertRun<Coloured<Yuv422>, output>(job.destination + start * outputs[output].bytes, job.source, n);
    }
}

template <class Filter, OrvOutputCode... output> void addFiltered(Table& table, const std::string& source) {
    (table.add(source, output, filtered<Filter, output>), ...);
}

} // namespace

void addFilteredMosaics(Table& table) {
    addFiltered<Lcaa, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer8 LCAA");
    addFiltered<Lcaav, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer8 LCAAV");
    addFiltered<PairMean, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer8 YUV422");
}

} // namespace definition
