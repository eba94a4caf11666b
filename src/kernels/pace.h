// Loops over more memory than the caches hold, on machines where prefetching does not pay (level.cpp: AMD's). There a
// loop is fastest that keeps few loads waiting for memory: left alone it has so many under way that the processor's own
// prefetching gets none of the places in its queues. So each piece of a loop waits for the beginning of the one before. And
// stores wait for the translation of their addresses, which is asked for a page ahead.
#pragma once
#include "kernels/machine/machine.h"

namespace kel {
namespace {

INLINE bool isPaced(size_t bytesWritten) {
    return pacesLoops && bytesWritten >= __atomic_load_n(&pacedFrom, __ATOMIC_RELAXED);
}

constexpr size_t page = 4096;
INLINE void askForNextPage(const u8* p) {
    __builtin_prefetch(reinterpret_cast<const void*>((reinterpret_cast<std::uintptr_t>(p) / page + 1) * page));
}

// p, but not before the byte at `loaded` is there.
INLINE const u8* whenThere(const u8* p, const u8* loaded) {
    std::uintptr_t byte = *loaded;
    asm("" : "+r"(byte)); // so that nobody knows the shift to give 0
    return p + (byte >> 8);
}

constexpr size_t larger(size_t a, size_t b) { return a < b ? b : a; }

// Takes so many turns: turn() reads and writes so many bytes at s and at d, and moves them on.
template <size_t read, size_t written, class Turn, class... To>
INLINE void takeTurns(size_t turns, const Turn& turn, const u8*& s, To&... d) {
    // A page where vectors are short, or most is read, or more than one destination written
    constexpr size_t piece = N < 32 || read > 2 * written || sizeof...(d) > 1 ? page : 512;
    constexpr size_t bytes = larger(read, written), most = bytes < piece ? piece / bytes : 1;
    const bool paced = isPaced(turns * written);
    while (turns > 0) {
        const u8* const beginning = s + (read - 1);
        if (paced && read > written) askForNextPage(s);
        if (paced) (askForNextPage(d), ...);
        size_t now = paced && turns > most ? most : turns;
        turns -= now;
        for (; now > 0; --now) turn();
        if (paced) s = whenThere(s, beginning);
    }
}

} // namespace
} // namespace kel
