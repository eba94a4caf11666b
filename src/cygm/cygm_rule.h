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
#include "kernels/wide.h"

namespace kel {
namespace {

// trunc(v / 4)
INLINE Ints quarter(Ints v) { return (v + as<Ints>(as<Words>(v) >> 14)) >> 2; }

class CygmRule {
public:
    INLINE explicit CygmRule(size_t upperLine)
        : r_(factors(upperLine, {2165, 344})), g_(factors(upperLine, {-917, -1078})),
          b_(factors(upperLine, {-959, 4645})) {}

    INLINE Rgb operator()(const Blocks<Bytes>& s) const {
        const Terms even = terms<-1, 1>(s.a, s.c), odd = terms<1, -1>(s.b, s.d);
        return {channel(even, odd, r_), channel(even, odd, g_), channel(even, odd, b_)};
    }

private:
    struct Terms {
        Words y;
        WordPairs colour; // C, D
    };
    struct QAndP {
        int q, p;
    };

    // A channel's factors for (C, D).
    static INLINE Words factors(size_t upperLine, QAndP k) {
        switch (upperLine % 4) {
        case 0: return fillPairs(k.q, k.p);
        case 1: return fillPairs(k.q, -k.p);
        case 2: return fillPairs(-k.p, -k.q);
        default: return fillPairs(-k.p, k.q);
        }
    }

    // Of N / 2 blocks, from byte pairs of both lines; the signs of the left and the right byte make o - e.
    template <int left, int right> static INLINE Terms terms(Bytes upper, Bytes lower) {
        const Words sum = fill(0x0101), difference = fill((left & 255) | (right & 255) << 8);
        const Words u = pairSums(upper, difference), l = pairSums(lower, difference);
        return {(pairSums(upper, sum) + pairSums(lower, sum)) >> 2,
                pairUp(as<Words>(quarter(as<Ints>(u + l))), as<Words>(quarter(as<Ints>(l - u))))};
    }

    static INLINE Bytes channel(const Terms& even, const Terms& odd, Words factors) {
        return clamp(as<Ints>(even.y + wordsOf<10>(pairSums(even.colour, factors))),
                     as<Ints>(odd.y + wordsOf<10>(pairSums(odd.colour, factors))));
    }

    Words r_, g_, b_;
};

} // namespace
} // namespace kel
