// Complementary-colour mosaics: cyan, yellow, green and magenta cells.
//
//     line % 4   even columns   odd columns          A pixel is made from the 2x2 block whose left column is its own
//         0          Cy             Ye               and whose upper line is its own: two lines U and L, an even
//         1          Gr             Mg               column e and an odd one o (e to the right of o for pixels in odd
//         2          Cy             Ye               columns):
//         3          Mg             Gr
//                                                        eU  oU      oU  eU
//                                                        eL  oL  or  oL  eL
//
//     Y = (eU + oU + eL + oL) >> 2, and with the differences of columns and of diagonals
//     C = (oU + oL) - (eU + eL)
//     D = (eU + oL) - (oU + eL), both divided by 4 and truncated toward zero,
//
//     upper line % 4     0     1     2     3
//     blue  P            D    -D    -C    -C
//     red   Q            C     C    -D     D
//
//     R = Y + ((2165 Q +  344 P) >> 10)     clamped to 0..255 each
//     G = Y + ((-917 Q - 1078 P) >> 10)
//     B = Y + ((-959 Q + 4645 P) >> 10)
//
// A block that moves one column to the right keeps its four letters and mirrors them: left + right stays, and right -
// left, which is o - e for an even column, is e - o for an odd one.
#pragma once
#include "kernels/blocks2x2.h"

namespace kel {
namespace {

// trunc(v / 4)
INLINE Ints quarter(Ints v) { return (v + as<Ints>(as<Words>(v) >> 14)) >> 2; }

// The luma and the differences (C, D) of N / 2 blocks, or of what is like them.
struct CygmTerms {
    Words y;
    WordPairs differences;
};

// What (C, D) make of a block whose upper line is `upperLine`.
class CygmFactors {
public:
    INLINE explicit CygmFactors(size_t upperLine)
        : r_(factors(upperLine, {2165, 344})), g_(factors(upperLine, {-917, -1078})),
          b_(factors(upperLine, {-959, 4645})) {}

    // Before they are clamped to 0..255.
    INLINE Ints red(const CygmTerms& t) const { return channel(t, r_); }
    INLINE Ints green(const CygmTerms& t) const { return channel(t, g_); }
    INLINE Ints blue(const CygmTerms& t) const { return channel(t, b_); }

    // N pixels, the words of which are a Split.
    INLINE Rgb colours(const CygmTerms& a, const CygmTerms& b) const {
        const auto clamped = [](Ints v, Ints w) { return clamp(Split{as<Words>(v), as<Words>(w)}); };
        return {clamped(red(a), red(b)), clamped(green(a), green(b)), clamped(blue(a), blue(b))};
    }

private:
    struct QAndP {
        int q, p;
    };
    // A channel's factors for (C, D).
    static INLINE PairFactors factors(size_t upperLine, QAndP k) {
        switch (upperLine % 4) {
        case 0: return PairFactors{k.q, k.p};
        case 1: return PairFactors{k.q, -k.p};
        case 2: return PairFactors{-k.p, -k.q};
        default: return PairFactors{-k.p, k.q};
        }
    }
    static INLINE Ints channel(const CygmTerms& t, const PairFactors& factors) {
        return as<Ints>(t.y + wordsOf<10>(weigh(t.differences, factors)));
    }

    PairFactors r_, g_, b_;
};

// Of blocks whose lines hold u and l, from the sums of a line's two samples and from their differences o - e.
INLINE CygmTerms blockTerms(Words sums, Ints u, Ints l) {
    return {sums >> 2, pairUp(as<Words>(quarter(u + l)), as<Words>(quarter(l - u)))};
}

// Of N / 2 blocks, from byte pairs of both lines; the signs of the left and the right byte make o - e.
template <int left, int right> INLINE CygmTerms blockTerms(Bytes upper, Bytes lower) {
    return blockTerms(pairSums<1, 1>(upper) + pairSums<1, 1>(lower), as<Ints>(pairSums<left, right>(upper)),
                      as<Ints>(pairSums<left, right>(lower)));
}

// N pixels from N blocks, whose columns are kept apart.
template <int left, int right>
INLINE Rgb blockColours(const Apart<Bytes>& upper, const Apart<Bytes>& lower, const CygmFactors& factors) {
    const Split ul = widen(upper.even), ur = widen(upper.odd), ll = widen(lower.even), lr = widen(lower.odd);
    const auto difference = [](Words l, Words r) { return as<Ints>(left < right ? r - l : l - r); };
    return factors.colours(blockTerms(ul.a + ur.a + (ll.a + lr.a), difference(ul.a, ur.a), difference(ll.a, lr.a)),
                           blockTerms(ul.b + ur.b + (ll.b + lr.b), difference(ul.b, ur.b), difference(ll.b, lr.b)));
}

// A pixel for every column.
class CygmRule {
public:
    INLINE explicit CygmRule(size_t upperLine) : factors_(upperLine) {}

    INLINE Rgb operator()(const Blocks<Bytes>& s) const {
        return factors_.colours(blockTerms<-1, 1>(s.a, s.c), blockTerms<1, -1>(s.b, s.d));
    }
    INLINE Apart<Rgb> operator()(const Blocks<Apart<Bytes>>& s) const {
        return {blockColours<-1, 1>(s.a, s.c, factors_), blockColours<1, -1>(s.b, s.d, factors_)};
    }

private:
    CygmFactors factors_;
};

} // namespace
} // namespace kel
