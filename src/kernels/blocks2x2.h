// The walk along a row of 2x2 blocks of samples, from a sample reader to a sink.
//
//     x  x+1
//     a   b       the first row      every pixel is made from the block whose left column is its own;
//     c   d       the second row     the last pixel repeats the one before
//
// A sample reader S says how many bits a sample has, after how many samples its bit position repeats (`group`), and
// whether it pays to unpack each row once (`unpackOnce`), and turns memory into N samples: samples<0>(p), or
// samples<1>(p) one sample further right. N samples are Bytes or Halves. A rule makes N pixels from the samples
// of N blocks, the first of which is in an even column. A sink takes the pixels from column x on: put() N of them,
// putPart() n.
#pragma once
#include "kernels/runs.h"

namespace kel {
namespace {

// ---- Samples of 8 bits (Bytes) and of 16 bits (Halves), by the same names

// A mask of the even columns, or of the odd ones.
template <class Samples> INLINE Samples columns(bool even);
template <> INLINE Bytes columns<Bytes>(bool even) {
    const Bytes mask = maskWhere([](int i) { return i % 2 == 0; });
    return even ? mask : ~mask;
}
template <> INLINE Halves columns<Halves>(bool even) {
    const Words mask = as<Words>(maskWhere([](int i) { return i % 4 < 2; }));
    return even ? Halves{mask, mask} : Halves{~mask, ~mask};
}

// The samples one column to the right; the last one, which has no neighbour here, stays.
INLINE Bytes next(Bytes v) {
    return arrange(v, [](int i) { return i + 1 < N ? i + 1 : i; });
}
INLINE Halves next(Halves v) {
    const Bytes a = as<Bytes>(v.a), b = as<Bytes>(v.b);
    const Bytes laneAfter = arrange(a, [](int i) { return i + L < N ? i + L : i; });
    return {as<Words>(shuffle(a, b, [](int i) { return i + 2; })),
            as<Words>(shuffle(b, laneAfter, [](int i) { return i + 2; }))};
}

// Pixel i becomes a copy of the one before.
INLINE void repeat(Bytes& v, size_t i) { v[i] = v[i - 1]; }
INLINE void repeat(Halves& v, size_t i) {
    constexpr size_t half = L / 2;
    const auto at = [&v](size_t k) -> auto& { return k / half % 2 ? v.b : v.a; };
    const auto index = [](size_t k) { return k / L * half + k % half; };
    at(i)[index(i)] = at(i - 1)[index(i - 1)];
}
template <class Colours> INLINE void repeat(Colours& p, size_t i) { repeat(p.r, i), repeat(p.g, i), repeat(p.b, i); }

// The same for the last of N pixels.
INLINE void repeatLast(Bytes& v) {
    v = arrange(v, [](int i) { return i < N - 1 ? i : i - 1; });
}
INLINE void repeatLast(Halves& v) {
    v.b = as<Words>(arrange(as<Bytes>(v.b), [](int i) { return i < N - 2 ? i : i - 2; }));
}
template <class Colours> INLINE void repeatLast(Colours& p) { repeatLast(p.r), repeatLast(p.g), repeatLast(p.b); }

// ---- Samples that lie in memory as they lie in vectors

template <class Samples> struct PlainSamples;
template <> struct PlainSamples<Bytes> : Reader<8> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = false;
    template <int from> static INLINE Bytes samples(const u8* s) { return load(s + from); }
};
template <> struct PlainSamples<Halves> : Reader<16> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = false;
    template <int from> static INLINE Halves samples(const u8* s) { return loadHalves(s + 2 * from); }
};

// ---- The walk

// The samples of N blocks.
template <class Samples> struct Blocks { Samples a, b, c, d; };

template <class S> using SamplesOf = decltype(std::declval<const S&>().template samples<0>(nullptr));

struct RowPair {
    const u8 *first, *second;

    template <class S> INLINE RowPair from(size_t x) const {
        return {first + x * S::bits / 8, second + x * S::bits / 8};
    }
};

// N pixels that end with the row, the last one still without a block of its own.
template <class S, class Rule> INLINE auto lastBlocks2x2(RowPair row, const S& read, const Rule& rule) {
    const SamplesOf<S> a = read.template samples<0>(row.first), c = read.template samples<0>(row.second);
    return rule(Blocks<SamplesOf<S>>{a, next(a), c, next(c)});
}
// The last 2 to N pixels of a row, through buffers. (Arguments by value keep their originals in registers.)
template <class S, class Sink, class Rule>
__attribute__((noinline)) void endOfRow2x2(RowPair row, size_t x, size_t n, S read, Sink sink, Rule rule) {
    alignas(N) u8 first[bytesFor(N, S::bits)] = {}, second[bytesFor(N, S::bits)] = {};
    const RowPair from = row.from<S>(x);
    std::memcpy(first, from.first, bytesFor(n, S::bits));
    std::memcpy(second, from.second, bytesFor(n, S::bits));
    auto pixels = lastBlocks2x2({first, second}, read, rule);
    repeat(pixels, n - 1);
    sink.putPart(x, pixels, n);
}

// The first `count` blocks of N pixels, which are followed by another sample.
template <class S, class Sink, class Rule>
INLINE void startOfRow2x2(RowPair row, size_t count, const S& read, const Sink& sink, const Rule& rule) {
    for (size_t x = 0; x < count * N; x += N) {
        const RowPair from = row.from<S>(x);
        prefetch<N * S::bits / 8, false>(from.first);
        prefetch<N * S::bits / 8, false>(from.second);
        sink.put(x, rule(Blocks<SamplesOf<S>>{
                        read.template samples<0>(from.first), read.template samples<1>(from.first),
                        read.template samples<0>(from.second), read.template samples<1>(from.second)}));
    }
}

template <class S, class Sink, class Rule>
INLINE void row2x2(RowPair row, size_t width, const S& read, const Sink& sink, const Rule& rule) {
    const size_t blocks = (width - 1) / N;
    startOfRow2x2(row, blocks, read, sink, rule);
    size_t x = blocks * N;
    if (width >= N && (width - N) % S::group == 0) { // step back, to end with the row
        auto pixels = lastBlocks2x2(row.from<S>(width - N), read, rule);
        repeatLast(pixels);
        sink.put(width - N, pixels);
    } else {
        if (width - x == 1) x -= S::group; // the last pixel needs the one before
        endOfRow2x2(row, x, width - x, read, sink, rule);
    }
}

// The sink that packs a row of pixels into memory.
template <class W> struct RowSink {
    u8* d;
    W write;

    template <class Block> INLINE void put(size_t x, const Block& block) const {
        prefetch<N * W::bytes, true>(d + x * W::bytes);
        write.put(d + x * W::bytes, block);
    }
    template <class Block> INLINE void putPart(size_t x, const Block& block, size_t n) const {
        kel::putPart(write, d + x * W::bytes, block, n);
    }
};

} // namespace
} // namespace kel
