// Lines put together from bytes of other lines.
//
// What is the same for all lines is worked out once, strip by strip. N bytes of output make a block. All that a lane of it
// wants lies in two vectors of a source line, mostly, and at the same positions in every line; so a block costs a few
// loads and one or two look-ups. Where a lane's sources lie further apart, its block goes byte by byte.
//
// The blocks of several strips are gathered before they go over the lines: memory is read and written in long runs.
#pragma once
#include "geometry/geometry_kernels.h"
#include "kernels/machine/machine.h"

namespace kel {
namespace {

template <bool linear> struct Block {
    size_t start;              // in the line
    size_t source[N / L];      // where the two vectors of each lane begin
    alignas(N) u8 position[N]; // in them
};
template <> struct Block<true> : Block<false> {
    alignas(N) u8 before[N];         // position in the pixel before
    alignas(N) u16 weight[2][N / 2]; // as the words of a Split
};
template <bool linear> constexpr size_t blocksAtOnce = (linear ? 8192 : 24576) / N; // 60 and 68 KiB of stack

// Lane `lane` of the block at byte `start` of the strip; false if its sources lie too far apart.
template <bool linear> INLINE bool describeLane(Block<linear>& block, const Strip& strip, size_t start, size_t lane) {
    const size_t* source = strip.source + start + lane * L;
    const u16* weight = strip.weight + start + lane * L;
    const auto toPixelBefore = [&](size_t i) { return linear && weight[i] != Strip::whole ? strip.pixel : 0; };

    size_t low = source[0], high = source[0];
    for (size_t i = 0; i < L; ++i) {
        const size_t first = source[i] - toPixelBefore(i);
        low = first < low ? first : low;
        high = source[i] > high ? source[i] : high;
    }
    if (strip.sourceEnd < 2 * L) return false;
    if (low > strip.sourceEnd - 2 * L) low = strip.sourceEnd - 2 * L; // read nothing behind the last source byte
    if (high - low >= 2 * L) return false;

    block.source[lane] = low;
    for (size_t i = 0; i < L; ++i) {
        const size_t at = lane * L + i;
        block.position[at] = static_cast<u8>(source[i] - low);
        if constexpr (linear) {
            block.before[at] = static_cast<u8>(source[i] - low - toPixelBefore(i));
            const int byte = static_cast<int>(at);
            block.weight[splitPart(byte)][splitIndex(byte)] = weight[i];
        }
    }
    return true;
}

template <bool linear> INLINE bool describe(Block<linear>& block, const Strip& strip, size_t start) {
    block.start = strip.start + start;
    for (size_t lane = 0; lane < N / L; ++lane)
        if (!describeLane(block, strip, start, lane)) return false;
    return true;
}

// ---- The rule, for one byte and for a block

template <bool linear> INLINE u8 byteOf(const Strip& strip, size_t i, const u8* s) {
    const u8* at = s + strip.source[i];
    if (!linear || strip.weight[i] == Strip::whole) return *at;
    const int before = *(at - strip.pixel);
    return static_cast<u8>(before + ((*at - before) * strip.weight[i] >> 10));
}

// a + ((b - a) * weight >> 10): six bits more make it the high word of a product.
INLINE Words between(Words a, Words b, Words weight) {
    return a + as<Words>(mulHigh(as<Ints>((b - a) << 6), as<Ints>(weight)));
}

// Each lane from where its block says.
INLINE Bytes lanesOf(const Block<false>& block, const u8* s) {
    using Lane = VectorOf<u8, L>::type;
    if constexpr (N == L)
        return load(s + block.source[0]);
    else
        return join(load<Lane>(s + block.source[0]), load<Lane>(s + block.source[1]), Indices<N>());
}

template <bool linear> INLINE Bytes bytesOf(const Block<linear>& block, const u8* s) {
    const Bytes a = lanesOf(block, s), b = lanesOf(block, s + L);
    const Bytes bytes = lookUp(a, b, load(block.position));
    if constexpr (linear) {
        const Split to = widen(bytes), from = widen(lookUp(a, b, load(block.before)));
        return lowBytes(Split{between(from.a, to.a, load<Words>(block.weight[0])),
                              between(from.b, to.b, load<Words>(block.weight[1]))});
    }
    return bytes;
}

// ---- Lines

template <class PutLine> INLINE void eachLine(const ResampledLines& lines, const PutLine& put) {
    u8* d = lines.destination;
    const u8* s = lines.source;
    for (size_t y = 0; y < lines.count; ++y, d += lines.destinationPitch, s += lines.sourcePitch) put(d, s);
}

template <bool linear> void putBytes(const ResampledLines& lines, const Strip& strip, size_t first, size_t count) {
    eachLine(lines, [&](u8* d, const u8* s) {
        for (size_t i = first; i < first + count; ++i) d[strip.start + i] = byteOf<linear>(strip, i, s);
    });
}
template <bool linear> void putBlocks(const ResampledLines& lines, const Block<linear>* blocks, size_t count) {
    eachLine(lines, [&](u8* d, const u8* s) {
        for (size_t i = 0; i < count; ++i) store(d + blocks[i].start, bytesOf(blocks[i], s));
    });
}

// The last block of a strip steps back, to end with it; strips shorter than a block have none.
template <bool linear> void resample(const ResampledLines& lines, const LineOfStrips& strips) {
    Block<linear> blocks[blocksAtOnce<linear>];
    size_t count = 0;
    for (Strip strip; strips.fill(strips.state, strip);) {
        if (count + Strip::capacity / N > blocksAtOnce<linear>) putBlocks(lines, blocks, count), count = 0;
        if (strip.length < N) putBytes<linear>(lines, strip, 0, strip.length);
        for (size_t x = 0; strip.length >= N && x < strip.length; x += N) {
            const size_t start = x + N <= strip.length ? x : strip.length - N;
            if (describe(blocks[count], strip, start))
                ++count;
            else
                putBytes<linear>(lines, strip, start, N);
        }
    }
    putBlocks(lines, blocks, count);
}

} // namespace
} // namespace kel
