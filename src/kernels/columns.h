// Neighbourhoods of 3x3: every second column of a row, and its neighbours.
#pragma once
#include "kernels/pixels.h"

namespace kel {
namespace {

// Every second column: words of N / 2 of them, or bytes of N where they are kept apart.
using Column = std::conditional_t<separatesAsItLoads, Bytes, Words>;

INLINE void separate(const u8* s, Bytes& even, Bytes& odd) { load2(s, even, odd); }
INLINE void separate(const u8* s, Words& even, Words& odd) {
    const Bytes v = load(s);
    even = firstOfPairs(v), odd = secondOfPairs(v);
}

// Of a row: for the even pixels of a block the columns left of them, their own and the ones right of them, and the same for
// the odd pixels.
template <class Column> struct Three { Column left, here, right; };
template <class Column> struct Threes {
    Three<Column> even, odd;

    INLINE explicit Threes(const u8* c) : Threes(c - 1, c + 1) {}
    INLINE Threes(const u8* l, const u8* r) {
        separate(l, even.left, even.here), separate(r, even.right, odd.right);
        odd.left = even.here, odd.here = even.right;
    }
};

} // namespace
} // namespace kel
