// The walk along a row of 2x2 blocks of samples, from a sample reader to a sink.
//
//     x  x+1
//     a   b       the first row      every pixel is made from the block whose left column is its own;
//     c   d       the second row     the last pixel repeats the one before
//
// A sample reader S says how many bits a sample has, after how many samples its bit position repeats (`group`), and
// whether it pays to unpack each row once (`unpackOnce`), and turns memory into samples: samples<0>(p), or samples<1>(p)
// one sample further right. They are N, Bytes or Halves, or columns kept apart (Apart), N of words and 2 N of bytes. A
// rule makes as many pixels from the samples of as many blocks, the first of which is in an even column. A sink takes the
// pixels from column x on: put() all of them, putPart() n.
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

// Every second sample, from the next one on; behind the last one stands itself once more.
INLINE Bytes oneOn(Bytes v) {
    return arrange(v, [](int i) { return i + 1 < N ? i + 1 : i; });
}
INLINE Words oneOn(Words v) {
    return as<Words>(arrange(as<Bytes>(v), [](int i) { return i + 2 < N ? i + 2 : i; }));
}

// The samples one column to the right. Right of the last one, where the row ends, stands its left neighbour once more:
// then the last pixel comes out as the one before.
INLINE Bytes next(Bytes v) {
    return arrange(v, [](int i) { return i + 1 < N ? i + 1 : i - 1; });
}
INLINE Halves next(Halves v) {
    const Bytes a = as<Bytes>(v.a), b = as<Bytes>(v.b);
    const Bytes laneAfter = arrange(a, [](int i) { return i + L < N ? i + L : i; });
    Halves samples{as<Words>(shuffle(a, b, [](int i) { return i + 2; })),
                   as<Words>(shuffle(b, laneAfter, [](int i) { return i + 2; }))};
    samples.b[N / 2 - 1] = v.b[N / 2 - 2];
    return samples;
}
template <class Samples> INLINE Apart<Samples> next(const Apart<Samples>& v) { return {v.odd, oneOn(v.even)}; }

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
template <class Samples> struct PlainSamples<Apart<Samples>> : Reader<8 * sizeof(Samples) / pixelsIn<Samples>> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = false;
    template <int from> static INLINE Apart<Samples> samples(const u8* s) {
        Apart<Samples> v;
        load2(s + from * PlainSamples::bits / 8, v.even, v.odd);
        return v;
    }
};

// ---- The walk

// The samples of blocks: a, c and b, d.
template <class Samples> struct Blocks { Samples a, b, c, d; };

template <class S> using SamplesOf = decltype(std::declval<const S&>().template samples<0>(nullptr));
template <class S> constexpr int samplesAtOnce = pixelsIn<SamplesOf<S>>;

// Of x samples. (Vectors of 64 bytes: from addresses that g++ sees through it loads twice, once for each blend.)
template <class S> constexpr size_t bytesOf(size_t x) {
    return N < 64 && S::bits % 8 == 0 ? x * (S::bits / 8) : x * S::bits / 8;
}

struct RowPair {
    const u8 *first, *second;
    const u8* lower = second; // the one that the row of pixels above has not read

    template <class S> INLINE RowPair from(size_t x) const { return {first + bytesOf<S>(x), second + bytesOf<S>(x)}; }
};

template <class S> INLINE Blocks<SamplesOf<S>> blocksAt(RowPair row, const S& read) {
    return {read.template samples<0>(row.first), read.template samples<1>(row.first),
            read.template samples<0>(row.second), read.template samples<1>(row.second)};
}

// Those that end with the row.
template <class S> INLINE Blocks<SamplesOf<S>> lastBlocksAt(RowPair row, const S& read) {
    const SamplesOf<S> a = read.template samples<0>(row.first), c = read.template samples<0>(row.second);
    return {a, next(a), c, next(c)};
}

// The last block of a row steps back, to end with it, but begins in an even column: where the width is odd it is one
// pixel short.
template <int block> constexpr size_t lastBlock(size_t width) {
    return width < block ? 0 : (width - block + 1) / 2 * 2;
}

// The last n pixels of a row, less than a block, through buffers. (Arguments by value keep their originals in registers.)
template <class S, class Sink, class Rule>
__attribute__((noinline)) void endOfRow2x2(RowPair row, size_t x, size_t n, S read, Sink sink, Rule rule) {
    constexpr size_t size = S::bits / 8;
    alignas(N) u8 first[(samplesAtOnce<S> + 1) * size] = {}, second[(samplesAtOnce<S> + 1) * size] = {};
    const auto copy = [n](u8* d, const u8* s) {
        std::memcpy(d, s, n * size);
        std::memcpy(d + n * size, s + (n - 2) * size, size); // as in next()
    };
    const RowPair from = row.from<S>(x);
    copy(first, from.first), copy(second, from.second);
    sink.putPart(x, rule(blocksAt({first, second}, read)), n);
}

template <class S, class Sink, class Rule>
INLINE void row2x2(RowPair row, size_t width, const S& read, const Sink& sink, const Rule& rule) {
    constexpr size_t block = samplesAtOnce<S>;
    for (size_t x = 0; x + block < width; x += block) {
        prefetch<block * S::bits / 8, false>(row.lower + bytesOf<S>(x));
        sink.put(x, rule(blocksAt(row.from<S>(x), read)));
    }
    const size_t x = lastBlock<block>(width);
    if (width - x < block) return endOfRow2x2(row, x, width - x, read, sink, rule);
    sink.put(x, rule(lastBlocksAt(row.from<S>(x), read)));
}

// The sink that packs a row of pixels into memory.
template <class W> struct RowSink {
    u8* d;
    W write;

    template <class Block> INLINE void put(size_t x, const Block& block) const {
        prefetch<pixelsIn<Block> * W::bytes, true>(d + x * W::bytes);
        write.put(d + x * W::bytes, block);
    }
    template <class Block> INLINE void putPart(size_t x, const Block& block, size_t n) const {
        kel::putPart(write, d + x * W::bytes, block, n);
    }
};

} // namespace
} // namespace kel
