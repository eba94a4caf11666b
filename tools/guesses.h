// What a dump may be, as frames that can be converted.
#pragma once
#include <vector>

#include "transform.h"

namespace tool {

struct FrameGuess {
    std::vector<FrameFormat> frames; // one, or two that differ by the exchange of red and blue
    double cost;                     // bits for each byte, if the dump were coded so
    std::uint32_t count;             // of such frames, one after the other
    std::uint32_t padding;           // columns at the right that are all the same
};

// The likeliest first; at most `count`.
std::vector<FrameGuess> guessFrames(const Bytes& dump, std::size_t count);

} // namespace tool
