// Complementary-colour mosaics: cyan, yellow, green and magenta cells.
//
//     line % 4   even columns   odd columns          A pixel is made from the 2x2 block whose left column is its own
//         0          Cy             Ye               and whose upper line is its own. Any such block has one cell of
//         1          Gr             Mg               each colour.
//         2          Cy             Ye
//         3          Mg             Gr
//
//     Y = (Cy + Ye + Gr + Mg) >> 2
//     Q = (Ye + Mg) - (Cy + Gr), towards red       both divided by 4 and truncated toward zero
//     P = (Cy + Mg) - (Ye + Gr), towards blue
//
//     R = Y + ((2165 Q +  344 P) >> 10)     clamped to 0..255 each
//     G = Y + ((-917 Q - 1078 P) >> 10)
//     B = Y + ((-959 Q + 4645 P) >> 10)
#pragma once
#include "kernels/blocks2x2.h"

namespace kel {
namespace {

// The frame comes as two fields: first the odd lines, then the even ones.
struct Fields {
    const u8* s;
    size_t width, height;

    INLINE const u8* line(size_t l) const { return s + (l % 2 ? l / 2 : (height + l) / 2) * width; }
};

// Of N / 2 pixels.
struct CygmTerms {
    Words y, q, p;
};

struct QAndP {
    int q, p;
};
constexpr QAndP toRed{2165, 344}, toGreen{-917, -1078}, toBlue{-959, 4645};

// trunc(v / 2^bits), for v >= -2^(16 - bits)
template <int bits> INLINE Words quotient(Words v) { return as<Words>(as<Ints>(v + (v >> (16 - bits))) >> bits); }

// ---- In 32 bits, by any factors

// The block's lines are U and L, its columns e and o:  C = (oU + oL) - (eU + eL),  D = (eU + oL) - (oU + eL)
//
//     upper line % 4     0     1     2     3
//     Q                  C     C    -D     D
//     P                  D    -D    -C    -C
//
// So C is taken for Q and D for P, and the factors change places and signs. A block that moves one column to
// the right mirrors its letters: left + right stays, and right - left, which is o - e for an even column, is e - o for an
// odd one.
class CygmFactors {
public:
    INLINE explicit CygmFactors(size_t upperLine)
        : r_(factors(upperLine, toRed)), g_(factors(upperLine, toGreen)), b_(factors(upperLine, toBlue)) {}

    // Of N pixels; clampBoth makes bytes of the words of both halves.
    template <class ClampBoth>
    INLINE Rgb colours(const CygmTerms& a, const CygmTerms& b, const ClampBoth& clampBoth) const {
        const WordPairs some = pairUp(a.q, a.p), others = pairUp(b.q, b.p);
        const auto channel = [&](const PairFactors& factors) {
            return clampBoth(a.y + wordsOf<10>(weigh(some, factors)), b.y + wordsOf<10>(weigh(others, factors)));
        };
        return {channel(r_), channel(g_), channel(b_)};
    }
    INLINE Rgb colours(const CygmTerms& a, const CygmTerms& b) const {
        return colours(a, b, [](Words v, Words w) { return clamp(Split{v, w}); });
    }

private:
    static INLINE PairFactors factors(size_t upperLine, QAndP k) {
        switch (upperLine % 4) {
        case 0: return PairFactors{k.q, k.p};
        case 1: return PairFactors{k.q, -k.p};
        case 2: return PairFactors{-k.p, -k.q};
        default: return PairFactors{-k.p, k.q};
        }
    }

    PairFactors r_, g_, b_;
};

// C and D of N / 2 blocks, from byte pairs of both lines; the signs of the left and the right byte make o - e.
template <int left, int right> INLINE CygmTerms pairTerms(Bytes upper, Bytes lower) {
    const Words u = pairSums<left, right>(upper), l = pairSums<left, right>(lower);
    return {(pairSums<1, 1>(upper) + pairSums<1, 1>(lower)) >> 2, quotient<2>(u + l), quotient<2>(l - u)};
}

// A pixel for every column.
class CygmRule {
public:
    INLINE explicit CygmRule(size_t upperLine) : factors_(upperLine) {}

    INLINE Rgb operator()(const Blocks<Bytes>& s) const {
        return factors_.colours(pairTerms<-1, 1>(s.a, s.c), pairTerms<1, -1>(s.b, s.d));
    }
    // For every second one: N pixels from 2 N samples of each line.
    INLINE Rgb binned(const u8* upper, const u8* lower) const {
        const Halves u = loadHalves(upper), l = loadHalves(lower);
        return factors_.colours(pairTerms<-1, 1>(as<Bytes>(u.a), as<Bytes>(l.a)),
                                pairTerms<-1, 1>(as<Bytes>(u.b), as<Bytes>(l.b)),
                                [](Words v, Words w) { return clampHalves(as<Ints>(v), as<Ints>(w)); });
    }

private:
    CygmFactors factors_;
};

// ---- In 16 bits, by factors that the compiler knows: the nearest multiple of 256 and what is left
//
//          of Q                    of P                         (256 n + m) >> 10 = (n + (m >> 8)) >> 2
//     R    2165 =  8 * 256 + 117     344 =  1 * 256 + 88
//     G    -917 = -4 * 256 + 107   -1078 = -4 * 256 - 54        Q and P are -127 to 127, so m fits in a word.
//     B    -959 = -4 * 256 +  65    4645 = 18 * 256 + 37

struct QuarterColours {
    Words r, g, b;

    INLINE explicit QuarterColours(const CygmTerms& t) {
        const auto rests = [&](int q, int p) { return as<Words>(as<Ints>(times(t.q, q) + times(t.p, p)) >> 8); };
        const Words y = t.y << 2, less = y - times(t.q + t.p, 4);
        r = y + t.p + times(t.q, 8) + rests(117, 88);
        g = less + rests(107, -54);
        b = less + times(t.p, 22) + rests(65, 37);
    }
};
// N pixels, the words of which are a Split.
INLINE Rgb colours(const CygmTerms& some, const CygmTerms& others) {
    const QuarterColours x(some), y(others);
    return {clamp<2>(Split{x.r, y.r}), clamp<2>(Split{x.g, y.g}), clamp<2>(Split{x.b, y.b})};
}

// A column of N blocks, its cell in the line of cyan and yellow first.
struct CygmColumn {
    Split sums, differences;

    INLINE CygmColumn(Bytes first, Bytes second)
        : sums(kel::sums(first, second)), differences(kel::differences(first, second)) {}
};
// Cyan has green below it in the even columns, or magenta if those lines are `mirrored`.
template <bool mirrored> INLINE Rgb blockColours(const CygmColumn& even, const CygmColumn& odd) {
    const auto terms = [](Words evenSum, Words oddSum, Words evenDifference, Words oddDifference) {
        const Words sums = evenSum - oddSum, differences = evenDifference - oddDifference;
        return CygmTerms{(evenSum + oddSum) >> 2, quotient<2>(mirrored ? -differences : -sums),
                         quotient<2>(mirrored ? sums : differences)};
    };
    return colours(terms(even.sums.a, odd.sums.a, even.differences.a, odd.differences.a),
                   terms(even.sums.b, odd.sums.b, even.differences.b, odd.differences.b));
}

// A pixel for every column; the first line is that of cyan and yellow.
template <bool mirrored> struct CygmApart {
    INLINE Apart<Rgb> operator()(const Blocks<Apart<Bytes>>& s) const {
        const CygmColumn even(s.a.even, s.c.even), odd(s.a.odd, s.c.odd), nextEven(s.b.odd, s.d.odd);
        return {blockColours<mirrored>(even, odd), blockColours<mirrored>(nextEven, odd)};
    }
    INLINE Rgb binned(const u8* first, const u8* second) const {
        Apart<Bytes> a, b;
        load2(first, a.even, a.odd), load2(second, b.even, b.odd);
        return blockColours<mirrored>({a.even, b.even}, {a.odd, b.odd});
    }
};

// Lines y and y + 1 as the rule wants them, and the rule: f(first, second, rule).
template <class F> INLINE void withCygmRule(const Fields& fields, size_t y, const F& f) {
    const u8 *upper = fields.line(y), *lower = fields.line(y + 1);
    if constexpr (separatesAsItLoads) {
        const u8 *first = y % 2 == 0 ? upper : lower, *second = y % 2 == 0 ? lower : upper;
        y / 2 % 2 == 0 ? f(first, second, CygmApart<false>()) : f(first, second, CygmApart<true>());
    } else {
        f(upper, lower, CygmRule(y));
    }
}

} // namespace
} // namespace kel
