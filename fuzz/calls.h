// Calls on buffers of exactly the promised sizes, which AddressSanitizer watches.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "fuzz/choices.h"

namespace fuzz {

constexpr std::size_t longest = 1 << 16; // bytes of a buffer

struct Job {
    const char* name;
    // The same call of either face; buffers may be null.
    std::vector<std::function<std::uint32_t(std::uint8_t* const* buffers)>> faces;
    std::vector<std::size_t> sizes; // of the buffers: the destination, the source, more destinations
    bool inPlace = false;           // destination and source may be the same
    bool changesSource = false;
    bool mayOverlap = true; // as the caller must not have it; then nothing but these bytes may be touched
};

// At every level, by every face, with buffers that are apart or overlap: the same bytes, and none written by a call that
// refuses. Aborts otherwise.
void run(const Job& job, Choices& choices);

} // namespace fuzz
