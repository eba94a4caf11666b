// Loops over more memory than the caches hold, on machines where prefetching does not pay (level.cpp: AMD's). There a
// loop is fastest that keeps few loads waiting for memory: left alone it has so many under way that the processor's own
// prefetching gets none of the places in its queues. So each piece of a loop waits for the beginning of the one before. And
// stores wait for the translation of their addresses, which is asked for a page ahead.
#pragma once
#include "kernels/machine/machine.h"

namespace kel {
namespace {

class Pace {
public:
    explicit INLINE Pace(size_t bytesWritten)
        : slow_(pacesLoops && bytesWritten >= __atomic_load_n(&pacedFrom, __ATOMIC_RELAXED)) {}

    // How many of so many turns make the next piece, if a turn reads or writes so many bytes.
    template <size_t bytes> INLINE size_t piece(size_t turns) const {
        constexpr size_t most = bytes < 512 ? 512 / bytes : 1;
        return slow_ && turns > most ? most : turns;
    }

    // Before a piece: where it reads or writes.
    INLINE void ask(const u8* p) const {
        constexpr std::uintptr_t page = 4096;
        if (slow_)
            __builtin_prefetch(reinterpret_cast<const void*>((reinterpret_cast<std::uintptr_t>(p) / page + 1) * page));
    }

    // After it: p, but not before the byte at `loaded` is there, which belongs to the piece.
    INLINE const u8* await(const u8* p, const u8* loaded) const {
        if (!slow_) return p;
        std::uintptr_t byte = *loaded;
        asm("" : "+r"(byte)); // so that nobody knows the shift to give 0
        return p + (byte >> 8);
    }

private:
    bool slow_;
};

} // namespace
} // namespace kel
