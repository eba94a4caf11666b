// Elements of 1, 2, 3 or 6 bytes in reversed order, in place.
//
// A vector from either end, reversed, goes where the other one came from, until they would meet in the middle. What is
// left there is done with shorter vectors, and in the end one by one.
//
//     front                                        back
//     | a b c d e |s| ...                 ... |s| v w x y z |
//     | z y x w v |s| ...                 ... |s| e d c b a |
//
// Where elements do not fill a vector, it ends (at the back: begins) with bytes that belong further in (s). They are
// written back as they were read. The next pair of vectors has been read by then: to read bytes that were written a
// moment ago, but not with one store, takes long.
#pragma once
#include "kernels/machine/machine.h"

namespace kel {
namespace {

template <int size, int width> struct Reversal {
    using Vector = typename VectorOf<u8, width>::type;
    static constexpr int count = width / size, bytes = count * size, spare = width - bytes;

    // Whole elements only, and two vectors that do not reach into each other.
    static INLINE size_t pairs(size_t length) { return length > spare ? (length - spare) / (2 * bytes) : 0; }

    static INLINE Vector newFront(Vector front, Vector back) {
        return mixed(back, front, [](int i) { return i < bytes ? spare + reversed(i) : width + i; });
    }
    static INLINE Vector newBack(Vector front, Vector back) {
        return mixed(front, back, [](int i) { return i < spare ? width + i : reversed(i - spare); });
    }

private:
    static constexpr int reversed(int i) { return (count - 1 - i / size) * size + i % size; }

    template <class At> static INLINE Vector mixed(Vector a, Vector b, At at) {
        return mixed(a, b, at, Indices<width>());
    }
    template <class At, int... i>
    static INLINE Vector mixed(Vector a, Vector b, At at, std::integer_sequence<int, i...>) {
        return __builtin_shufflevector(a, b, at(i)...);
    }
};

// Reverses from both ends and returns how many bytes are done at each.
template <int size, int width> INLINE size_t reverseEnds(u8* front, u8* back) {
    using R = Reversal<size, width>;
    using Vector = typename R::Vector;
    size_t pairs = R::pairs(static_cast<size_t>(back - front));
    if (pairs == 0) return 0;
    const size_t done = pairs * R::bytes;

    back -= width;
    Vector low = load<Vector>(front), high = load<Vector>(back);
    for (; --pairs > 0; front += R::bytes, back -= R::bytes) {
        const Vector nextLow = load<Vector>(front + R::bytes), nextHigh = load<Vector>(back - R::bytes);
        store(front, R::newFront(low, high));
        store(back, R::newBack(low, high));
        low = nextLow, high = nextHigh;
    }
    store(front, R::newFront(low, high));
    store(back, R::newBack(low, high));
    return done;
}

template <int size> void reverse(u8* elements, size_t count) {
    u8 *front = elements, *back = elements + count * size;
    const auto inwards = [&](size_t bytes) { front += bytes, back -= bytes; };
    inwards(reverseEnds<size, N>(front, back));
    if constexpr (N > 16) inwards(reverseEnds<size, 16>(front, back));
    for (; back - front >= 2 * size; inwards(size)) {
        u8 element[size];
        std::memcpy(element, front, size);
        std::memcpy(front, back - size, size);
        std::memcpy(back - size, element, size);
    }
}

} // namespace
} // namespace kel
