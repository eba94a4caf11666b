// The loop for n pixels in a row, from a reader to a writer.
//
// A reader says how many bits a pixel has (`bits`), how many bytes behind the last pixel belong to the source as well
// (`beyond`), whether it separates pixels as it loads them (`separates`), and turns the bytes of N pixels into a block:
// get(). It touches no other bytes.
#pragma once
#include "kernels/pace.h"
#include "kernels/table.h"
#include "kernels/writers.h"

namespace kel {
namespace {

template <int bitsPerPixel> struct Reader {
    static constexpr int bits = bitsPerPixel, beyond = 0;
    static constexpr bool separates = false;
};

constexpr size_t bytesFor(size_t pixels, int bits) { return (pixels * static_cast<size_t>(bits) + 7) / 8; }

INLINE bool areApart(const u8* a, size_t aBytes, const u8* b, size_t bBytes) {
    return a + aBytes <= b || b + bBytes <= a;
}

// The first n pixels of a block.
template <class W, class Block> INLINE void putPart(const W& write, u8* d, const Block& block, size_t n) {
    alignas(N) u8 packed[pixelsIn<Block> * W::bytes];
    if constexpr (W::keeps) std::memcpy(packed, d, n * W::bytes);
    write.put(packed, block);
    std::memcpy(d, packed, n * W::bytes);
}

template <class R> using BlockOf = decltype(std::declval<const R&>().get(nullptr));
template <class R> constexpr size_t blockOf = pixelsIn<BlockOf<R>>;

template <class R, class W>
__attribute__((noinline)) void lastPixels(u8* d, const u8* s, size_t n, const R& read, const W& write) {
    alignas(N) u8 source[bytesFor(blockOf<R>, R::bits) + R::beyond] = {};
    std::memcpy(source, s, bytesFor(n, R::bits) + R::beyond);
    putPart(write, d, read.get(source), n);
}

// Forward, and each block is read before it is written: works in place where a pixel does not grow. Otherwise the last
// block is stepped back to end with the pixels, if they begin where bytes do.
template <class R, class W> INLINE void run(u8* d, const u8* s, size_t n, const R& read, const W& write) {
    constexpr size_t block = blockOf<R>, sourceBytes = block * R::bits / 8, bytes = block * W::bytes;
    const size_t left = n % block, back = block - left;
    const bool stepsBack = left > 0 && n > block && back * R::bits % 8 == 0 &&
                           areApart(d, n * W::bytes, s, bytesFor(n, R::bits) + R::beyond);
    const auto step = [&]() __attribute__((always_inline)) {
        write.put(d, read.get(s));
        moveOn<R::separates>(s, sourceBytes), moveOn<W::weaves || isApart<BlockOf<R>>>(d, bytes);
    };

    constexpr size_t atOnce = N < 64 ? 64 / N : 1; // blocks that fill a cache line with bytes
    const std::uintptr_t distance = prefetchDistance();
    const auto turn = [&]() __attribute__((always_inline)) {
        prefetch<atOnce * sourceBytes, false>(s, distance);
        prefetch<atOnce * bytes, true>(d, distance);
        for (size_t i = 0; i < atOnce; ++i) step();
    };
    takeTurns<atOnce * sourceBytes, atOnce * bytes>(n / block / atOnce, turn, s, d);
    for (size_t blocks = n / block % atOnce + stepsBack; blocks > 0; --blocks) {
        if (stepsBack && blocks == 1) d -= back * W::bytes, s -= back * R::bits / 8;
        step();
    }
    if (left > 0 && !stepsBack) lastPixels(d, s, left, read, write);
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

// Bytes as they are; source and destination may overlap or be the same. Where vectors are short, the C library's copy stays
// ahead for longer.
template <int bytesPerPixel> void copyKernel(u8* d, const u8* s, size_t n) {
    if (d == s) return;
    size_t bytes = n * bytesPerPixel;
    if (isPaced(N < 64 ? bytes / 3 : bytes) && areApart(d, bytes, s, bytes)) {
        constexpr size_t turn = 128;
        const auto copy = [&]() __attribute__((always_inline)) {
            std::memcpy(d, s, turn);
            s += turn, d += turn;
        };
        takeTurns<turn, turn>(bytes / turn, copy, s, d);
        bytes %= turn;
    }
    std::memmove(d, s, bytes);
}
template <int bytesPerPixel, class Set> constexpr ByOutput<Run> copies(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return copyKernel<bytesPerPixel>; });
}

} // namespace
} // namespace kel
