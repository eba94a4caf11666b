// Vectors of N bytes, N / L lanes of L bytes, in the compilers' own vector arithmetic. N and L belong to the machine:
// kernels/machine/machine.h, which is to be included instead of this.
//
// Each lane works on L pixels of its own, so no level moves bytes across lanes in its main loop: memory is read and
// written lane by lane (loadLanes, storeLanes).
//
// Everything in the kernel headers has internal linkage: a function shared between levels would let the linker keep the
// one copy that was compiled for a newer machine. For the same reason nothing of std:: is used but memcpy and what
// makes no code: types and integer sequences.
#pragma once
#include <cstring>
#include <type_traits>
#include <utility>

#include "support/integers.h"

#define INLINE inline __attribute__((always_inline))

namespace kel {
namespace {

template <class Element, int bytes> struct VectorOf { typedef Element type __attribute__((vector_size(bytes))); };
using Bytes = VectorOf<u8, N>::type;
using Words = VectorOf<u16, N>::type;
using Ints = VectorOf<i16, N>::type;
using Wides = VectorOf<i32, N>::type;
using UnsignedWides = VectorOf<u32, N>::type;

template <class To, class From> INLINE To as(From v) {
    static_assert(sizeof(To) == sizeof(From));
    return reinterpret_cast<To>(v);
}

template <int count> using Indices = std::make_integer_sequence<int, count>;

// ---- Memory

template <class V = Bytes> INLINE V load(const void* p) {
    V v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class V> INLINE void store(void* p, V v) { std::memcpy(p, &v, sizeof v); }

template <class V, int... i> INLINE auto join(V low, V high, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(low, high, i...);
}

} // namespace
} // namespace kel
#include "kernels/machine/constants.h"
#include "kernels/machine/lanes.h"
namespace kel {
namespace {

// ---- Moving bytes. `at` is a constexpr function from a position to the position that its byte comes from.

template <class At, int... i> INLINE Bytes arrange(Bytes v, At at, std::integer_sequence<int, i...>) {
    return arrange<at(i)...>(v);
}
// Anywhere in the vector: slow where N > L.
template <class At> INLINE Bytes arrange(Bytes v, At at) { return arrange(v, at, Indices<N>()); }

// Within each lane.
template <class At> INLINE Bytes permute(Bytes v, At at) {
    return arrange(v, [=](int i) { return i / L * L + at(i % L); });
}

template <class At, int... i> INLINE Bytes shuffle(Bytes a, Bytes b, At at, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(a, b, (i / L * L + at(i % L) % L + at(i % L) / L * N)...);
}
// Within each lane, from two vectors: positions from L on mean b.
template <class At> INLINE Bytes shuffle(Bytes a, Bytes b, At at) { return shuffle(a, b, at, Indices<N>()); }

template <class Is, int... i> INLINE Bytes maskWhere(Is is, std::integer_sequence<int, i...>) {
    return kept(Bytes{static_cast<u8>(is(i % L) ? 255 : 0)...});
}
template <class Is> INLINE Bytes maskWhere(Is is) { return maskWhere(is, Indices<N>()); }
INLINE Bytes select(Bytes mask, Bytes a, Bytes b) { return mask ? a : b; }
INLINE Words select(Words mask, Words a, Words b) { return mask ? a : b; }
// a where `is` says so, else b.
template <class Is> INLINE Bytes blend(Is is, Bytes a, Bytes b) { return select(maskWhere(is), a, b); }

// The first `count` quarters of each lane of a, the others of b.
template <int count, int... i> INLINE Bytes firstQuarters(Bytes a, Bytes b, std::integer_sequence<int, i...>) {
    constexpr int words = L / 4, total = N / 4; // of 32 bits, which machines blend faster than bytes
    return as<Bytes>(__builtin_shufflevector(as<UnsignedWides>(a), as<UnsignedWides>(b),
                                             (i % words < count * words / 4 ? i : i + total)...));
}
template <int count> INLINE Bytes firstQuarters(Bytes a, Bytes b) {
    return firstQuarters<count>(a, b, Indices<N / 4>());
}

// a0 b0 a1 b1 ... in units of `unit` bytes, from the first or second half of each lane.
template <int unit, int half> INLINE Bytes zip(Bytes a, Bytes b) {
    return shuffle(a, b, [](int i) { return half * L / 2 + i / (2 * unit) * unit + i % unit + i / unit % 2 * L; });
}
// The even or odd bytes of a lane of a, then those of b.
template <int odd> INLINE Bytes unzip(Bytes a, Bytes b) {
    return shuffle(a, b, [](int i) { return 2 * i + odd; });
}

// Of two whole vectors in a row, the elements at even or odd positions. And back: half of their elements by turns.
template <int odd, class V, int... i> INLINE V everySecond(V v, V w, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(v, w, (2 * i + odd)...);
}
template <int odd, class V> INLINE V everySecond(V v, V w) {
    return everySecond<odd>(v, w, Indices<sizeof v / sizeof v[0]>());
}
template <int half, class V, int... i> INLINE V byTurns(V even, V odd, std::integer_sequence<int, i...>) {
    constexpr int count = sizeof...(i);
    return __builtin_shufflevector(even, odd, (half * count / 2 + i / 2 + i % 2 * count)...);
}
template <int half, class V> INLINE V byTurns(V even, V odd) {
    return byTurns<half>(even, odd, Indices<sizeof even / sizeof even[0]>());
}

// ---- Words

INLINE Words fill(int k) { return Words{} + static_cast<u16>(k); }

// Of each pair of bytes, the first or the second as a word.
INLINE Words firstOfPairs(Bytes v) { return as<Words>(v) & 0xFF; }
INLINE Words secondOfPairs(Bytes v) { return as<Words>(v) >> 8; }

template <class Is, int... i> INLINE Words blendWords(Is is, Words a, Words b, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(a, b, (is(i) ? i : i + N / 2)...);
}
// The words of a where `is` says so, else of b.
template <class Is> INLINE Words blendWords(Is is, Words a, Words b) { return blendWords(is, a, b, Indices<N / 2>()); }
// The even words of a, the odd ones of b.
INLINE Words mix(Words a, Words b) {
    return blendWords([](int i) { return i % 2 == 0; }, a, b);
}

// For weighted sums r R + g G + b B + add.
struct Weights {
    int r, g, b, add;
};

// N words. In each lane, `a` holds the first half of the lane's pixels and `b` the second.
struct Halves {
    Words a, b;
};

// ---- In an order that is the machine's own (kernels/machine/machine.h)

// The words of N bytes.
struct Split {
    Words a, b;
};

// The words of N pixels.
struct Quarters {
    Words a, b;
};

INLINE Split operator+(Split s, int k) { return k == 0 ? s : Split{s.a + fill(k), s.b + fill(k)}; }
INLINE Split operator-(Split s, Split t) { return {s.a - t.a, s.b - t.b}; }
INLINE Split operator+(Split s, Split t) { return {s.a + t.a, s.b + t.b}; }

// Words of two vectors that are to be weighed together.
struct WordPairs {
    Words a, b;
};

// What N / 2 words become in 32 bits.
struct Sums {
    Wides a, b;
};
INLINE Sums operator+(Sums s, i32 k) { return {s.a + k, s.b + k}; }
INLINE Sums operator+(Sums s, Sums t) { return {s.a + t.a, s.b + t.b}; }

} // namespace
} // namespace kel
