// Strips of lines, put together from bytes of other lines.
//
// What is the same for all lines is worked out once. N bytes of output make a block. All that a lane of it wants lies
// in two vectors of a source line, mostly, and at the same positions in every line; so a block costs a few loads and
// one or two look-ups. Where a lane's sources lie further apart, its block goes byte by byte.
#pragma once
#include "geometry/geometry_kernels.h"
#include "kernels/machine/machine.h"

namespace kel {
namespace {

struct Block {
    size_t start;                    // in the strip
    bool wide;                       // byte by byte
    size_t source[N / L];            // where the two vectors of each lane begin
    alignas(N) u8 position[N];       // in them
    alignas(N) u8 before[N];         // linear: position in the pixel before
    alignas(N) u16 weight[2][N / 2]; // linear: as the words of a Split
};

// Lane `lane` of a block; false if its sources lie too far apart.
template <bool linear> INLINE bool describeLane(Block& block, const Strip& strip, size_t lane) {
    const size_t* source = strip.source + block.start + lane * L;
    const u16* weight = strip.weight + block.start + lane * L;
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

template <bool linear> INLINE void describe(Block& block, const Strip& strip, size_t start) {
    block.start = start;
    block.wide = false;
    for (size_t lane = 0; lane < N / L; ++lane) block.wide |= !describeLane<linear>(block, strip, lane);
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
INLINE Bytes lanesOf(const Block& block, const u8* s) {
    using Lane = VectorOf<u8, L>::type;
    if constexpr (N == L)
        return load(s + block.source[0]);
    else
        return join(load<Lane>(s + block.source[0]), load<Lane>(s + block.source[1]), Indices<N>());
}

template <bool linear> INLINE Bytes bytesOf(const Block& block, const u8* s) {
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

template <bool linear> INLINE void putBytes(u8* d, const u8* s, const Strip& strip, size_t first, size_t count) {
    for (size_t i = first; i < first + count; ++i) d[i] = byteOf<linear>(strip, i, s);
}

template <bool linear>
INLINE void resampleLine(u8* d, const u8* s, const Strip& strip, const Block* blocks, size_t count) {
    for (const Block* block = blocks; block != blocks + count; ++block)
        if (block->wide)
            putBytes<linear>(d, s, strip, block->start, N);
        else
            store(d + block->start, bytesOf<linear>(*block, s));
    if (count == 0) putBytes<linear>(d, s, strip, 0, strip.length);
}

// The last block steps back, to end with the strip; strips shorter than a block have none.
template <bool linear> void resample(const ResampledLines& lines, const Strip& strip) {
    Block blocks[Strip::capacity / N];
    const size_t count = strip.length < N ? 0 : (strip.length + N - 1) / N;
    for (size_t i = 0; i < count; ++i) describe<linear>(blocks[i], strip, i + 1 < count ? i * N : strip.length - N);

    for (size_t y = 0; y < lines.count; ++y)
        resampleLine<linear>(lines.destination + static_cast<ptrdiff_t>(y) * lines.destinationPitch,
                             lines.source + static_cast<ptrdiff_t>(y) * lines.sourcePitch, strip, blocks, count);
}

} // namespace
} // namespace kel
