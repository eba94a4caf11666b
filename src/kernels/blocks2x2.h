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

// What a sink takes: not all know what the pixels of a mosaic have in common.
template <class Sink, class Block> INLINE Block blockFor(const Block& block) { return block; }
template <class Sink, bool redIsEven> INLINE auto blockFor(const MosaicPair<redIsEven>& pair) {
    if constexpr (requires { requires Sink::takesPairs; })
        return pair;
    else
        return static_cast<const Apart<Rgb>&>(pair);
}

// The last n pixels of a row, less than a block, through buffers. (Arguments by value keep their originals in registers.)
template <class S, class Sink, class Rule>
__attribute__((noinline)) void endOfRow2x2(RowPair row, size_t x, size_t n, S read, Sink sink, Rule rule) {
    constexpr size_t size = bytesOf<S>(samplesAtOnce<S> + 2);
    alignas(N) u8 first[size] = {}, second[size] = {};
    const auto copy = [n](u8* d, const u8* s) {
        std::memcpy(d, s, bytesOf<S>(n));
        std::memcpy(d + bytesOf<S>(n), s + bytesOf<S>(n - 2), bytesOf<S>(S::bits % 8 == 0 ? 1 : 2)); // as in next()
    };
    const RowPair from = row.from<S>(x);
    copy(first, from.first), copy(second, from.second);
    sink.putPart(x, blockFor<Sink>(rule(blocksAt({first, second}, read))), n);
}

template <class... Byte> INLINE void stepOn(size_t bytes, Byte*&... p) { (moveOn<true>(p, bytes), ...); }

// A row's samples and those one column to the right of them, each from an address of its own. Those of packed samples have
// one where two samples end.
template <class S> class Columns {
public:
    INLINE explicit Columns(const u8* row) : here_(row), next_(row) {
        kel::stepOn(packed ? S::bits / 4 : S::bits / 8, next_);
    }
    INLINE auto samples(const S& read) const { return read.template samples<0>(here_); }
    INLINE auto next(const S& read, const SamplesOf<S>& samples) const {
        const SamplesOf<S> v = read.template samples<0>(next_);
        if constexpr (packed)
            return SamplesOf<S>{samples.odd, v.even};
        else
            return v;
    }
    INLINE void stepOn() { kel::stepOn(bytesOf<S>(samplesAtOnce<S>), here_, next_); }

private:
    static constexpr bool packed = S::bits % 8 != 0;
    const u8 *here_, *next_;
};

// The blocks in front of the last one: while they end before column `end`.
template <bool prefetches, class S, class Sink, class Rule>
INLINE void frontBlocks2x2(RowPair row, size_t end, const S& read, const Sink& sink, const Rule& rule) {
    constexpr size_t block = samplesAtOnce<S>;
    if constexpr (movesAsItLoads) {
        Columns<S> first(row.first), second(row.second);
        Sink to = sink;
        for (size_t blocks = (end - 1) / block; blocks > 0; --blocks) {
            const auto a = first.samples(read), c = second.samples(read);
            to.put(0, blockFor<Sink>(rule(Blocks<SamplesOf<S>>{a, first.next(read, a), c, second.next(read, c)})));
            first.stepOn(), second.stepOn();
            to.stepOn(block);
        }
    } else {
        for (size_t x = 0; x + block < end; x += block) {
            if constexpr (prefetches) prefetch<block * S::bits / 8, false>(row.lower + bytesOf<S>(x));
            sink.put(x, blockFor<Sink>(rule(blocksAt(row.from<S>(x), read))));
        }
    }
}

template <class S, class Sink, class Rule>
INLINE void lastBlock2x2(RowPair row, size_t width, const S& read, const Sink& sink, const Rule& rule) {
    constexpr size_t block = samplesAtOnce<S>;
    const size_t x = lastBlock<block>(width);
    if (width - x < block) return endOfRow2x2(row, x, width - x, read, sink, rule);
    sink.put(x, blockFor<Sink>(rule(lastBlocksAt(row.from<S>(x), read))));
}
// Unless the sink says that it is not worth asking.
template <class Sink> constexpr bool prefetchesFor() {
    if constexpr (requires { Sink::prefetches; }) return Sink::prefetches;
    return true;
}
template <class S, class Sink, class Rule>
INLINE void row2x2(RowPair row, size_t width, const S& read, const Sink& sink, const Rule& rule) {
    frontBlocks2x2<prefetchesFor<Sink>()>(row, width, read, sink, rule);
    lastBlock2x2(row, width, read, sink, rule);
}
// `more`: more of the image follows the rows. Then what is right of a row is the first sample of the next, and where the
// row is a whole number of blocks, the pixel that comes of it is put right.
template <class S, class Sink> INLINE bool isWhole(size_t width, bool more) {
    return more && width % samplesAtOnce<S> == 0 && Sink::repeats;
}
template <class S, class Sink, class Rule>
INLINE void row2x2(RowPair row, size_t width, bool more, const S& read, const Sink& sink, const Rule& rule) {
    if (!isWhole<S, Sink>(width, more)) return row2x2(row, width, read, sink, rule);
    frontBlocks2x2<prefetchesFor<Sink>()>(row, width + 1, read, sink, rule);
    sink.repeatLast(width);
}

// Two rows of pixels at once, from three of samples. `middleFirst`: both blocks begin with the middle row.
template <bool middleFirst> struct RowTriple {
    const u8 *top, *middle, *bottom;

    template <bool lower> INLINE RowPair pair() const {
        const u8* other = lower ? bottom : top;
        return middleFirst ? RowPair{middle, other} : RowPair{other, middle};
    }
};
template <bool middleFirst, class S, class Sink, class Rule>
INLINE void frontBlocks2x2(RowTriple<middleFirst> row, size_t end, const S& read, Sink upper, Sink lower,
                           const Rule& rule) {
    constexpr size_t block = samplesAtOnce<S>;
    Columns<S> top(row.top), middle(row.middle), bottom(row.bottom);
    for (size_t blocks = (end - 1) / block; blocks > 0; --blocks) {
        using Samples = SamplesOf<S>;
        const Samples a = top.samples(read), b = top.next(read, a), c = middle.samples(read), d = middle.next(read, c);
        const Samples e = bottom.samples(read), f = bottom.next(read, e);
        const auto pixels = [&](const Samples& other, const Samples& otherNext) {
            return rule(middleFirst ? Blocks<Samples>{c, d, other, otherNext}
                                    : Blocks<Samples>{other, otherNext, c, d});
        };
        upper.put(0, blockFor<Sink>(pixels(a, b))), lower.put(0, blockFor<Sink>(pixels(e, f)));
        top.stepOn(), middle.stepOn(), bottom.stepOn(), upper.stepOn(block), lower.stepOn(block);
    }
}
template <bool middleFirst, class S, class Sink, class Rule>
INLINE void rows2x2(RowTriple<middleFirst> row, size_t width, bool more, const S& read, const Sink& upper,
                    const Sink& lower, const Rule& rule) {
    const bool whole = isWhole<S, Sink>(width, more);
    frontBlocks2x2(row, width + whole, read, upper, lower, rule);
    if (whole) return upper.repeatLast(width), lower.repeatLast(width);
    for (const bool isLower : {false, true})
        lastBlock2x2(isLower ? row.template pair<true>() : row.template pair<false>(), width, read,
                     isLower ? lower : upper, rule);
}

// The sink that packs a row of pixels into memory.
template <class W> struct RowSink {
    static constexpr bool takesPairs = requires { W::takesPairs; };
    u8* d;
    W write;

    template <class Block> INLINE void put(size_t x, const Block& block) const {
        prefetch<pixelsIn<Block> * W::bytes, true>(d + x * W::bytes);
        write.put(d + x * W::bytes, block);
    }
    template <class Block> INLINE void putPart(size_t x, const Block& block, size_t n) const {
        kel::putPart(write, d + x * W::bytes, block, n);
    }
    INLINE void stepOn(size_t pixels) { kel::stepOn(pixels * W::bytes, d); }
    // Of a row, where pixels are whole bytes of their own.
    static constexpr bool repeats = !std::is_same_v<W, UyvyWriter>;
    INLINE void repeatLast(size_t width) const {
        std::memcpy(d + (width - 1) * W::bytes, d + (width - 2) * W::bytes, W::bytes);
    }
};

} // namespace
} // namespace kel
