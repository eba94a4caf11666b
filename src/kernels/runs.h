// The loop for n pixels in a row, from a reader to a writer.
//
// A reader says how many bits a pixel has (`bits`), how many bytes behind the last pixel belong to the source as well
// (`beyond`), and turns the bytes of N pixels into a block: get(). It touches no other bytes.
#pragma once
#include "kernels/table.h"
#include "kernels/writers.h"

namespace kel {
namespace {

template <int bitsPerPixel> struct Reader { static constexpr int bits = bitsPerPixel, beyond = 0; };

constexpr size_t bytesFor(size_t pixels, int bits) { return (pixels * static_cast<size_t>(bits) + 7) / 8; }

// The first n pixels of a block.
template <class W, class Block> INLINE void putPart(const W& write, u8* d, const Block& block, size_t n) {
    alignas(N) u8 packed[pixelsIn<Block> * W::bytes];
    if constexpr (W::keeps) std::memcpy(packed, d, n * W::bytes);
    write.put(packed, block);
    std::memcpy(d, packed, n * W::bytes);
}

template <class R> constexpr size_t blockOf = pixelsIn<decltype(std::declval<const R&>().get(nullptr))>;

template <class R, class W>
__attribute__((noinline)) void lastPixels(u8* d, const u8* s, size_t n, const R& read, const W& write) {
    alignas(N) u8 source[bytesFor(blockOf<R>, R::bits) + R::beyond] = {};
    std::memcpy(source, s, bytesFor(n, R::bits) + R::beyond);
    putPart(write, d, read.get(source), n);
}

// Calls step() for each of so many blocks. Before some that fill a cache line with bytes it calls ahead(), to
// prefetch as much.
constexpr size_t blocksAtOnce = N < 64 ? 64 / N : 1;
template <class Ahead, class Step> INLINE void eachBlock(size_t blocks, const Ahead& ahead, const Step& step) {
    for (; blocks >= blocksAtOnce; blocks -= blocksAtOnce) {
        ahead();
        for (size_t i = 0; i < blocksAtOnce; ++i) step();
    }
    for (; blocks > 0; --blocks) step();
}

// Forward, and each block is read before it is written: works in place where a pixel does not grow.
template <class R, class W> INLINE void run(u8* d, const u8* s, size_t n, const R& read, const W& write) {
    constexpr size_t block = blockOf<R>, sourceBytes = block * R::bits / 8, bytes = block * W::bytes;
    const std::uintptr_t distance = prefetchDistance();
    const auto ahead = [&] {
        prefetch<blocksAtOnce * sourceBytes, false>(s, distance);
        prefetch<blocksAtOnce * bytes, true>(d, distance);
    };
    eachBlock(n / block, ahead, [&] {
        write.put(d, read.get(s));
        s += sourceBytes, d += bytes;
    });
    if (n % block > 0) lastPixels(d, s, n % block, read, write);
}

template <class R, class W> void runKernel(u8* d, const u8* s, size_t n) { run(d, s, n, R(), W()); }
template <class R, class W> void shiftedRunKernel(u8* d, const u8* s, size_t n, int shift) {
    run(d, s, n, R(shift), W());
}

// The kernels of one reader for a set of outputs.
template <class R, class Set> constexpr ByOutput<Run> runs(Set outputs) {
    return tableOf<Run>(outputs, []<u32 output>() { return runKernel<R, WriterOf<output>>; });
}
template <class R, class Set> constexpr ByOutput<ShiftedRun> shiftedRuns(Set outputs) {
    return tableOf<ShiftedRun>(outputs, []<u32 output>() { return shiftedRunKernel<R, WriterOf<output>>; });
}

// Bytes as they are; source and destination may overlap or be the same.
template <int bytesPerPixel> void copyKernel(u8* d, const u8* s, size_t n) {
    if (d != s) std::memmove(d, s, n * bytesPerPixel);
}
template <int bytesPerPixel, class Set> constexpr ByOutput<Run> copies(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return copyKernel<bytesPerPixel>; });
}

} // namespace
} // namespace kel
