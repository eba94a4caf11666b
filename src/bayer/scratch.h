// The scratch memory of the chroma-filtered demosaics: a few lines, whatever the height.
#pragma once
#include <cstdint>

#include "support/integers.h"

namespace kel {

// Lines are padded so that whole vectors can be read and written at both ends of a row, and aligned so that most of these
// lie in one cache line.
constexpr size_t lineAlignment = 64, linePadding = 2 * lineAlignment;
constexpr size_t lineSize(size_t width) {
    return linePadding + (width + lineAlignment - 1) / lineAlignment * lineAlignment + linePadding;
}

constexpr size_t scratchLines = 4;  // in flight, at most: the row above, the row itself, two below
constexpr size_t scratchPlanes = 3; // Y, U, V
constexpr size_t moreLines = 4;     // for LCAAV: chroma and the sums it is made from
constexpr size_t scratchSize(size_t width) {
    return (scratchLines * scratchPlanes + moreLines) * lineSize(width) + lineAlignment - 1;
}
// The first of the lines, in as much memory.
inline u8* alignedLines(u8* scratch) {
    const std::uintptr_t before = reinterpret_cast<std::uintptr_t>(scratch) % lineAlignment;
    return before == 0 ? scratch : scratch + (lineAlignment - before);
}

} // namespace kel
