// The operations of kernels/machine/machine.h in plain C++ and the compilers' vector arithmetic: their definition, and
// what machines run that have no file of their own.
#pragma once
#include "kernels/level.h"
#include "kernels/machine/permutes.h"
#include "kernels/vector.h"

namespace kel {
namespace {
namespace plain {

// ---- Pixels in memory

template <class V> INLINE void load2(const u8* s, V& a, V& b) {
    const V v = load<V>(s), w = load<V>(s + N);
    a = everySecond<0>(v, w), b = everySecond<1>(v, w);
}
template <class V> INLINE void store2(u8* d, V a, V b) { store(d, byTurns<0>(a, b)), store(d + N, byTurns<1>(a, b)); }

INLINE void load3(const u8* s, Bytes& a, Bytes& b, Bytes& c) {
    u8 x[N], y[N], z[N];
    for (int i = 0; i < N; ++i) x[i] = s[3 * i], y[i] = s[3 * i + 1], z[i] = s[3 * i + 2];
    a = load(x), b = load(y), c = load(z);
}
using permutes::load4;
INLINE void load4(const u8* s, Bytes (&v)[4]) {
    Words some, others, more, rest; // pairs of the first two bytes, and of the others
    load2(s, some, others), load2(s + 2 * N, more, rest);
    v[0] = everySecond<0>(as<Bytes>(some), as<Bytes>(more)), v[1] = everySecond<1>(as<Bytes>(some), as<Bytes>(more));
    v[2] = everySecond<0>(as<Bytes>(others), as<Bytes>(rest)),
    v[3] = everySecond<1>(as<Bytes>(others), as<Bytes>(rest));
}

template <class Element> INLINE void storeTriples(u8* d, size_t step, Bytes a, Bytes b, Bytes c) {
    constexpr int count = L / static_cast<int>(sizeof(Element)); // in a lane
    Element x[N / L][count], y[N / L][count], z[N / L][count];
    store(x, a), store(y, b), store(z, c);
    for (int lane = 0; lane < N / L; ++lane, d += step) {
        Element triples[3 * count];
        for (int i = 0; i < count; ++i)
            triples[3 * i] = x[lane][i], triples[3 * i + 1] = y[lane][i], triples[3 * i + 2] = z[lane][i];
        std::memcpy(d, triples, sizeof triples);
    }
}
template <int unit> INLINE void store3(u8* d, size_t step, Bytes a, Bytes b, Bytes c) {
    if constexpr (unit == 1)
        storeTriples<u8>(d, step, a, b, c);
    else
        storeTriples<u16>(d, step, a, b, c);
}
template <int unit> INLINE void store3(u8* d, size_t step, Bytes v) { store3<unit>(d, step, v, v, v); }
INLINE void store3of4(u8* d, Bytes a, Bytes b, Bytes c) { permutes::store3of4(d, a, b, c, permutes::blendQuarter); }
INLINE void store3of4(u8* d, Bytes v) { store3of4(d, v, v, v); }

INLINE void store4(u8* d, Bytes v, Bytes w, Bytes x, Bytes y) {
    store2(d, as<Words>(byTurns<0>(v, w)), as<Words>(byTurns<0>(x, y)));
    store2(d + 2 * N, as<Words>(byTurns<1>(v, w)), as<Words>(byTurns<1>(x, y)));
}

INLINE void storeQuads(u8* d, Bytes v) {
    store(d, blend([](int i) { return i % 4 == 3; }, load(d), v));
}

INLINE void loadRow(const u8* s, Bytes (&v)[4]) {
    for (int i = 0; i < 4; ++i) v[i] = load(s + i * N);
}
INLINE void storeRow(u8* d, const Bytes (&v)[4]) {
    for (int i = 0; i < 4; ++i) store(d + i * N, v[i]);
}

template <class At> INLINE Words wordsAt(const u8* s, size_t step, At at) {
    u16 words[N / 2];
    for (int i = 0; i < N / 2; ++i)
        std::memcpy(&words[i], s + static_cast<size_t>(i / (L / 2)) * step + at(i % (L / 2)), sizeof words[i]);
    return load<Words>(words);
}

template <bool, class Byte> INLINE void moveOn(Byte*& p, size_t bytes) { p += bytes; }

constexpr bool separatesAsItLoads = true;
constexpr bool pacesLoops = true;
constexpr bool movesAsItLoads = false;
constexpr bool addsSignedBytes = false;

// It is no access to memory, so the address may lie behind the buffer. A distance of 0: not at all.
INLINE std::uintptr_t prefetchDistance() { return __atomic_load_n(&prefetchAhead, __ATOMIC_RELAXED); }
template <size_t bytes, bool forWriting> INLINE void prefetch(const u8* p, std::uintptr_t ahead = prefetchDistance()) {
    if (ahead == 0) return;
    constexpr std::uintptr_t line = 64;
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(p) + ahead;
    for (size_t i = 0; i < bytes; i += line) __builtin_prefetch(reinterpret_cast<const void*>(address + i), forWriting);
}

// ---- Bytes and words

template <class At> INLINE Bytes place(Bytes v, At at) {
    return permute(v, [=](int i) { return at(i) < 0 ? 0 : at(i); }) & maskWhere([=](int i) { return at(i) >= 0; });
}

INLINE Bytes lookUp(Bytes a, Bytes b, Bytes at) {
    u8 bytes[2 * N], positions[N];
    store(bytes, a), store(bytes + N, b), store(positions, at);
    for (int i = 0; i < N; ++i) positions[i] = bytes[i / L * L + positions[i] % L + positions[i] / L * N];
    return load(positions);
}

INLINE void exchange(Bytes mask, Bytes& a, Bytes& b) {
    const Bytes other = b;
    b = select(mask, a, b), a = select(mask, other, a);
}

template <class V> INLINE V meanUp(V a, V b) { return (a | b) - ((a ^ b) >> 1); }
template <class V> INLINE V mean(V a, V b) { return (a & b) + ((a ^ b) >> 1); }
INLINE Bytes mean(Bytes a, Bytes b, Bytes c, Bytes d) {
    const Words even = firstOfPairs(a) + firstOfPairs(b) + firstOfPairs(c) + firstOfPairs(d);
    const Words odd = secondOfPairs(a) + secondOfPairs(b) + secondOfPairs(c) + secondOfPairs(d);
    return as<Bytes>(even >> 2 | odd >> 2 << 8);
}

INLINE Bytes addSaturated(Bytes a, Bytes b) {
    const Bytes sum = a + b;
    return sum | as<Bytes>(sum < a);
}

INLINE Ints mulHigh(Ints a, Ints b) {
    i16 x[N / 2], y[N / 2];
    store(x, a), store(y, b);
    for (int i = 0; i < N / 2; ++i) x[i] = static_cast<i16>(x[i] * y[i] >> 16);
    return load<Ints>(x);
}

INLINE Words clamped(Ints v) {
    v = v > 0 ? v : Ints{};
    v = v < 255 ? v : Ints{} + 255;
    return as<Words>(v);
}
INLINE Ints firstSigned(Bytes s) { return as<Ints>(as<Words>(s) << 8) >> 8; }
INLINE Ints secondSigned(Bytes s) { return as<Ints>(s) >> 8; }
INLINE Bytes addSigned(Bytes v, Bytes s) {
    const Words even = clamped(as<Ints>(firstOfPairs(v)) + firstSigned(s));
    const Words odd = clamped(as<Ints>(secondOfPairs(v)) + secondSigned(s));
    return as<Bytes>(even | odd << 8);
}
INLINE Bytes meanSigned(Bytes a, Bytes b) { return mean(a ^ 128, b ^ 128) ^ 128; }
INLINE Bytes meanSigned(Bytes a, Bytes b, Bytes c, Bytes d) { return mean(a ^ 128, b ^ 128, c ^ 128, d ^ 128) ^ 128; }
template <int k> INLINE Bytes productDown(Bytes s) {
    const auto product = [](Ints v) { return as<Words>(mulHigh(v + v, Ints{} + static_cast<i16>(k)) - (v >> 15)); };
    return as<Bytes>((product(firstSigned(s)) & 0xFF) | product(secondSigned(s)) << 8);
}

INLINE u64 zeros(Bytes v) {
    u64 bits = 0;
    for (int i = 0; i < N; ++i) bits |= u64{v[i] == 0} << i;
    return bits;
}

INLINE Words swapped(Words w) { return w << 8 | w >> 8; }

// Compilers make shifts and additions of a factor that they see.
INLINE Words times(Words w, int k) {
    asm("" : "+r"(k));
    return w * fill(k);
}

INLINE Bytes highBytesByTurns(Words even, Words odd) { return as<Bytes>(even >> 8 | (odd & 0xFF00)); }
INLINE Bytes highBytes(Bytes high, Bytes low, int by) {
    const auto shifted = [=](Words h, Words l) { return (h << 8 | l) << static_cast<u16>(by); };
    return highBytesByTurns(shifted(firstOfPairs(high), firstOfPairs(low)),
                            shifted(secondOfPairs(high), secondOfPairs(low)));
}
INLINE Words shiftUp(Words w, int by) { return w << static_cast<u16>(by); }

INLINE Words fillBytePairs(int j, int k) { return fill((j & 255) | (k & 255) << 8); }
INLINE Words weighPairs(Bytes v, Words factors) {
    const Ints j = as<Ints>(factors << 8) >> 8, k = as<Ints>(factors) >> 8;
    return firstOfPairs(v) * as<Words>(j) + secondOfPairs(v) * as<Words>(k);
}
template <int l, int r> INLINE Words pairSums(Bytes v) {
    return firstOfPairs(v) * fill(l) + secondOfPairs(v) * fill(r);
}

INLINE Words signedPairSums(Bytes v) { return as<Words>(firstSigned(v) + secondSigned(v)); }
INLINE Words addPairSums(Words w, Bytes v) { return w + signedPairSums(v); }
INLINE Bytes clampHalves(Ints a, Ints b) { return unzip<0>(as<Bytes>(clamped(a)), as<Bytes>(clamped(b))); }
INLINE Bytes clampPairs(Ints a, Ints b) { return as<Bytes>(clamped(a) | clamped(b) << 8); }

INLINE Bytes lowBytes(Halves h) { return unzip<0>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Bytes highBytes(Halves h) { return unzip<1>(as<Bytes>(h.a), as<Bytes>(h.b)); }
INLINE Ints eighths(Words w) { return as<Ints>(w + 4) >> 3; }
INLINE Bytes eighths(Halves h) { return lowBytes(Halves{(h.a + 4) >> 3, (h.b + 4) >> 3}); }
INLINE Bytes inRow(Bytes v) {
    u8 bytes[N], row[N];
    store(bytes, v);
    for (int i = 0; i < N; ++i) row[i] = bytes[i % (N / 2) / (L / 2) * L + i / (N / 2) * (L / 2) + i % (L / 2)];
    return load(row);
}

// ---- The words of N bytes: those at even and those at odd positions, which takes masks and shifts, no shuffles

constexpr int splitPart(int i) { return i % 2; }
constexpr int splitIndex(int i) { return i / 2; }

template <int shift = 0> INLINE Split widen(Bytes v) { return {firstOfPairs(v) << shift, secondOfPairs(v) << shift}; }
INLINE Split sums(Bytes a, Bytes b) {
    const Split x = widen(a), y = widen(b);
    return {x.a + y.a, x.b + y.b};
}
INLINE Split differences(Bytes a, Bytes b) {
    const Split x = widen(a), y = widen(b);
    return {x.a - y.a, x.b - y.b};
}
INLINE Words sums(Words a, Words b) { return a + b; }
INLINE Words differences(Words a, Words b) { return a - b; }
template <int k> INLINE Words sums(Words a, Words b, Words c) { return a + c + b * fill(k); }
template <int k> INLINE Split sums(Bytes a, Bytes b, Bytes c) {
    const Split x = sums(a, c), y = widen(b);
    return {x.a + y.a * fill(k), x.b + y.b * fill(k)};
}
INLINE Bytes lowBytes(Split s) { return as<Bytes>((s.a & 0xFF) | s.b << 8); }
INLINE Bytes highBytes(Split s) { return highBytesByTurns(s.a, s.b); }
template <int shift = 0> INLINE Bytes clamp(Split s) {
    return clampPairs(as<Ints>(s.a) >> shift, as<Ints>(s.b) >> shift);
}
INLINE void store3(u8* d, size_t step, Split a, Split b, Split c) { store3<1>(d, step, clamp(a), clamp(b), clamp(c)); }
INLINE Halves inOrder(Split s) {
    const Bytes even = as<Bytes>(s.a), odd = as<Bytes>(s.b);
    return {as<Words>(zip<2, 0>(even, odd)), as<Words>(zip<2, 1>(even, odd))};
}
INLINE Split forPairs(Words w) { return {w, w}; }
INLINE Words pairMeans(Split s) { return ((s.a >> 8) + (s.b >> 8)) >> 1; }

template <int j> INLINE Split products(Bytes v) {
    const Split x = widen(v);
    return {times(x.a, j), times(x.b, j)};
}
template <int j, int... k, class... More> INLINE Split products(Bytes v, Bytes w, More... more) {
    return products<j>(v) + products<k...>(w, more...);
}
template <Weights k> INLINE Split weigh(Bytes r, Bytes g, Bytes b) {
    const Split x = widen(r), y = widen(g), z = widen(b);
    return {times(x.a, k.r) + times(y.a, k.g) + times(z.a, k.b) + fill(k.add),
            times(x.b, k.r) + times(y.b, k.g) + times(z.b, k.b) + fill(k.add)};
}

template <Weights k> INLINE Bytes luma(Bytes r, Bytes g, Bytes b) {
    static_assert(k.r + k.g + k.b == 256 && k.r > 0 && k.g > 0 && k.b > 0);
    return highBytes(weigh<k>(r, g, b));
}
template <int bytes, Weights k> INLINE Bytes luma(const u8* s) {
    Bytes r, g, b;
    bytes == 3 ? load3(s, r, g, b) : load4(s, r, g, b);
    return luma<k>(r, g, b);
}
template <int bytes, Weights k> INLINE Halves weigh(const u8* s) {
    Bytes r, g, b;
    bytes == 3 ? load3(s, r, g, b) : load4(s, r, g, b);
    return inOrder(weigh<k>(r, g, b));
}

template <int bytes, Weights k> INLINE Quarters weighWithin(const u8* s) {
    const Halves h = weigh<bytes, k>(s);
    return {h.a, h.b};
}
INLINE Bytes clamp(Quarters q) { return clampHalves(as<Ints>(q.a), as<Ints>(q.b)); }
constexpr int quartersPart(int i) { return i % L / (L / 2); }
constexpr int quartersIndex(int i) { return i / L * (L / 2) + i % (L / 2); }

// ---- 32 bits: of the words at even and at odd positions

template <int from> INLINE Words wordsOf(Sums s) {
    return mix(as<Words>(as<UnsignedWides>(s.a) >> from), as<Words>(as<UnsignedWides>(s.b) << (16 - from)));
}

// With each channel = 256 h + l this is exactly H + (L >> 8), H and L being the sums over the high and the low bytes.
template <Weights k> INLINE Words weigh(Words r, Words g, Words b) {
    static_assert(k.r + k.g + k.b == 256 && k.r > 0 && k.g > 0 && k.b > 0);
    const auto sum = [](Words x, Words y, Words z) { return times(x, k.r) + times(y, k.g) + times(z, k.b); };
    return sum(r >> 8, g >> 8, b >> 8) + ((sum(r & 0xFF, g & 0xFF, b & 0xFF) + fill(k.add)) >> 8);
}

INLINE Sums clampSums(Sums s, i32 low, i32 high) {
    const auto clamped = [=](Wides v) {
        v = v > low ? v : Wides{} + low;
        return v < high ? v : Wides{} + high;
    };
    return {clamped(s.a), clamped(s.b)};
}

template <int from> INLINE Words clampedWords(Sums s) { return wordsOf<from>(clampSums(s, 0, (1 << (16 + from)) - 1)); }

INLINE Sums signedWords(Words w) {
    const Wides pairs = as<Wides>(w);
    return {pairs << 16 >> 16, pairs >> 16};
}
INLINE Wides wordPairSums(Words v, Words k) {
    const Sums x = signedWords(v), y = signedWords(k);
    return x.a * y.a + x.b * y.b;
}
INLINE Sums multiply(Words w, int k) {
    const Sums x = signedWords(w);
    return {x.a * k, x.b * k};
}

struct PairFactors {
    int j, k;
};
INLINE WordPairs pairUp(Words a, Words b) { return {a, b}; }
INLINE Sums weigh(WordPairs w, PairFactors f) { return multiply(w.a, f.j) + multiply(w.b, f.k); }

struct WordTriples {
    Words a, b, c;
};
struct TripleFactors {
    int i, j, k;
};
INLINE WordTriples tripleUp(Words a, Words b, Words c) { return {a, b, c}; }
INLINE Sums weigh(const WordTriples& w, const TripleFactors& f) {
    return multiply(w.a, f.i) + multiply(w.b, f.j) + multiply(w.c, f.k);
}

} // namespace plain
} // namespace
} // namespace kel
