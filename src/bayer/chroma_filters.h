// The chroma filters of LCAA, LCAAV and YUV422: what they read, which lines they work on, and what they make of a row.
#pragma once
#include "bayer/scratch.h"
#include "color/yuv_readers.h"
#include "kernels/mosaic_pixels.h"

namespace kel {
namespace {

// One row at full resolution: luma, and chroma in the form that the filter takes.
struct YuvLine {
    u8 *y, *u, *v;
};

// ---- The forms of chroma, all of which take a byte a pixel

// U - 128 and V - 128 of each pixel. They have as neighbours the last pixel of the row before and the first one of the
// next row; the first pixel of a half is its own neighbour.
struct ChromaOfPixels {
    template <Weights k, class Colours> static INLINE void put(u8* d, const Apart<Colours>& p) {
        store2(d, samples<k>(p.even), samples<k>(p.odd));
    }
    template <Weights k, class Colours> static INLINE void put(u8* d, const Colours& p) { store(d, samples<k>(p)); }

    static INLINE void connect(u8* row, u8* before, size_t width, bool first) {
        before[width] = row[0];
        row[-1] = first ? row[0] : before[width - 1];
    }

private:
    template <Weights k, class Colours> static INLINE Bytes samples(const Colours& p) {
        return highBytes(weighNegated<k>(p));
    }
};

// U - 128 or V - 128 of the two pixels of a pair, added up: a word. The pair before is the last one of the row before; in
// a half's first row it is the first pair again.
struct ChromaOfPairs {
    template <Weights k, class Colours> static INLINE void put(u8* d, const Apart<Colours>& p) {
        const Split even = samples<k>(p.even), odd = samples<k>(p.odd);
        storeHalves(d, inOrder(Split{even.a + odd.a, even.b + odd.b}));
    }
    template <Weights k, class Colours> static INLINE void put(u8* d, const Colours& p) {
        const Split s = samples<k>(p); // where columns are not kept apart: of even and of odd pixels
        store(d, s.a + s.b);
    }

    static INLINE void connect(u8* row, const u8* before, size_t width, bool first) {
        std::memcpy(row - 2, first ? row : before + width - 2, 2);
    }

private:
    template <Weights k, class Colours> static INLINE Split samples(const Colours& p) {
        const Split s = weighNegated<k>(p);
        return {as<Words>(as<Ints>(s.a) >> 8), as<Words>(as<Ints>(s.b) >> 8)};
    }
};

// Where columns are apart and signed bytes can be added to others: U - 128 and V - 128 of each pixel. Weights have a sign
// and eight bits there.
struct ChromaApart {
    template <Weights k> static INLINE void put(u8* d, const Apart<Rgb>& p) {
        store2(d, samples<k>(p.even), samples<k>(p.odd));
    }
    static INLINE void connect(u8* row, u8* before, size_t width, bool first) {
        before[width] = row[0];
        row[-2] = first ? row[1] : before[width - 2], row[-1] = first ? row[0] : before[width - 1];
    }

private:
    template <Weights k> static INLINE Bytes samples(const Rgb& p) {
        if constexpr (k.b < 0) return highBytes(products<-k.b, -k.g, -k.r>(p.b, p.g, p.r));
        return highBytes(products<-k.r, -k.g, -k.b>(p.r, p.g, p.b));
    }
};
template <class Form> using FormOf = std::conditional_t<addsSignedBytes, ChromaApart, Form>;

// ---- The lines

// The lines of one half, in a ring. `first`: of the half's rows, in the image.
class LineRing {
public:
    INLINE LineRing(u8* scratch, size_t width, size_t first) : scratch_(scratch), width_(width), first_(first) {}

    // A row of the half, or the one above it.
    INLINE YuvLine operator[](size_t row) const {
        u8* y = scratch_ + (first_ + row) % scratchLines * scratchPlanes * lineSize(width_) + linePadding;
        return {y, y + lineSize(width_), y + 2 * lineSize(width_)};
    }
    // Room for as much of something else.
    INLINE u8* more(size_t line) const {
        return scratch_ + (scratchLines * scratchPlanes + line) * lineSize(width_) + linePadding;
    }
    // Where nothing is above, the row itself.
    INLINE YuvLine above(size_t row) const { return (*this)[first_ + row > 0 ? row - 1 : row]; }

    // After row `row` is made: join it to the one before, or start the half with it.
    template <class Chroma> INLINE void connect(size_t row) const {
        const YuvLine line = (*this)[row], before = above(row);
        Chroma::connect(line.u, before.u, width_, row == 0);
        Chroma::connect(line.v, before.v, width_, row == 0);
    }

private:
    u8* scratch_;
    size_t width_, first_;
};

// ---- Filters: the chroma of a row's pairs, from the lines of a half of `rows` rows
//
// filter() gives the line of chroma that is to be converted; then of() makes 4 (U - 128) or 4 (V - 128) of N / 2 pairs.
// Where chroma is in bytes, Pairs walks along it, and next() gives N pairs.

// (s0 + s1) >> 1
struct PairFilter {
    using Form = FormOf<ChromaOfPairs>;
    static constexpr size_t lookahead = 0;
    static INLINE YuvLine filter(const LineRing& lines, size_t row, size_t, size_t) { return lines[row]; }
    static INLINE Ints of(const u8* sums) { return (load<Ints>(sums) + load<Ints>(sums)) & ~3; }

    struct Pairs {
        const u8 *y, *u, *v;
        INLINE YuvApart next() {
            const auto means = [](const u8* s) {
                Bytes even, odd;
                load2(s, even, odd);
                return meanSigned(even, odd);
            };
            YuvApart p{{}, {}, means(u), means(v)};
            load2(y, p.even, p.odd), stepOn(2 * N, y, u, v);
            return p;
        }
    };
};

// (s-2 + s-1 + s0 + s1) >> 2: with the pair before.
struct LcaaFilter : PairFilter {
    static INLINE Ints of(const u8* sums) { return (load<Ints>(sums - 2) + load<Ints>(sums)) & ~3; }

    struct Pairs {
        const u8 *y, *u, *v, *beforeU, *beforeV;
        INLINE Pairs(const u8* luma, const u8* blue, const u8* red)
            : y(luma), u(blue - 2), v(red - 2), beforeU(u), beforeV(v) {
            stepOn(2, u, v);
        }
        INLINE YuvApart next() {
            const auto means = [](const u8* before, const u8* s) {
                Bytes a, b, c, d;
                load2(before, a, b), load2(s, c, d);
                return meanSigned(a, b, c, d);
            };
            YuvApart p{{}, {}, means(beforeU, u), means(beforeV, v)};
            load2(y, p.even, p.odd), stepOn(2 * N, y, u, v, beforeU, beforeV);
            return p;
        }
    };
};

// The four samples s-1 .. s2 of the row and of the one below, (sum + 4) >> 3. What four samples add up to is kept for the
// next row.
//
// At the end of the half, the row above takes the place of the row below, beginning with the last pair of the
// second-to-last row; and the last two pairs are not filtered, they take the chroma of their first pixel. Above the
// lower half stands the upper half's last row; the upper half, which has nothing above, takes the row itself.
struct LcaavFilter {
    using Form = FormOf<ChromaOfPixels>;
    static constexpr size_t lookahead = 2; // the row below needs the first sample of the next

    static INLINE YuvLine filter(const LineRing& lines, size_t row, size_t rows, size_t width) {
        const YuvLine line = lines[row], chroma{line.y, lines.more(0), lines.more(1)};
        const YuvLine other = row + 1 < rows ? lines[row + 1] : lines.above(row);
        if (row == 1 && rows == 2) { // the sample left of the first row is its mirror no more
            const YuvLine before = lines.above(0);
            other.u[-1] = before.u[width - 1], other.v[-1] = before.v[width - 1];
        }
        if constexpr (addsSignedBytes) {
            for (size_t x = 0; x < width; x += 2 * N)
                boxes(chroma.u + x / 2, line.u + x, other.u + x), boxes(chroma.v + x / 2, line.v + x, other.v + x);
        } else {
            u8 *const sumsU = lines.more(2), *const sumsV = lines.more(3);
            for (size_t x = 0; row == 0 && x < width; x += N)
                store(sumsU + x, sumsAt(line.u + x)), store(sumsV + x, sumsAt(line.v + x));
            for (size_t x = 0; x < width; x += N)
                box(chroma.u + x, sumsU + x, other.u + x), box(chroma.v + x, sumsV + x, other.v + x);
        }
        if (row + 2 >= rows) finish(lines, row, rows, width / 2, chroma);
        return chroma;
    }
    static INLINE Ints of(const u8* chroma) { return load<Ints>(chroma); }

    struct Pairs {
        const u8 *y, *u, *v;
        INLINE YuvApart next() {
            YuvApart p{{}, {}, load(u), load(v)};
            load2(y, p.even, p.odd), stepOn(2 * N, y), stepOn(N, u, v);
            return p;
        }
    };

private:
    // Where chroma is in bytes. (Sums that are kept would be stored and loaded again, which is half the work.)
    static INLINE void boxes(u8* d, const u8* here, const u8* other) {
        const auto sums = [=](int x) {
            const Words row = addPairSums(signedPairSums(load(here + x - 1)), load(here + x + 1));
            return addPairSums(addPairSums(row, load(other + x - 1)), load(other + x + 1));
        };
        store(d, eighths({sums(0), sums(N)}));
    }
    static INLINE Words sumsAt(const u8* s) { return signedPairSums(load(s - 1)) + signedPairSums(load(s + 1)); }
    static INLINE void box(u8* d, u8* sums, const u8* other) {
        const Words here = load<Words>(sums), there = sumsAt(other);
        store(sums, there);
        store(d, eighths(here + there) << 2);
    }

    static __attribute__((noinline)) void finish(const LineRing& lines, size_t row, size_t rows, size_t pairs,
                                                 const YuvLine& chroma) {
        const YuvLine line = lines[row], above = lines.above(row);
        const auto sample = [](u8 byte) { return static_cast<signed char>(byte); };
        const auto put = [](u8* d, size_t pair, int value) {
            if constexpr (addsSignedBytes) {
                d[pair] = static_cast<u8>(value);
                return;
            }
            const auto word = static_cast<i16>(4 * value);
            std::memcpy(d + 2 * pair, &word, sizeof word);
        };
        const auto mean = [=](const u8* s, const u8* t) {
            int sum = 4;
            for (int i = -1; i < 3; ++i) sum += sample(*(s + i)) + sample(*(t + i));
            return sum >> 3;
        };
        if (row + 2 == rows) {
            const size_t x = 2 * pairs - 2;
            put(chroma.u, pairs - 1, mean(line.u + x, above.u + x));
            put(chroma.v, pairs - 1, mean(line.v + x, above.v + x));
        }
        for (size_t pair = pairs > 2 ? pairs - 2 : 0; pair < pairs; ++pair)
            if (row * pairs + pair + 2 >= rows * pairs)
                put(chroma.u, pair, sample(line.u[2 * pair])), put(chroma.v, pair, sample(line.v[2 * pair]));
    }
};

} // namespace
} // namespace kel
