// The scratch memory of the chroma-filtered demosaics: a few lines, whatever the height.
#pragma once
#include "support/integers.h"

namespace kel {

// Lines are padded so that whole vectors can be read and written at both ends of a row.
constexpr size_t linePadding = 128;
constexpr size_t lineSize(size_t width) { return linePadding + width + linePadding; }

constexpr size_t scratchLines = 4;  // in flight, at most: the row above, the row itself, two below
constexpr size_t scratchPlanes = 3; // Y, U, V
constexpr size_t moreLines = 4;     // for LCAAV: chroma and the sums it is made from
constexpr size_t scratchSize(size_t width) { return (scratchLines * scratchPlanes + moreLines) * lineSize(width); }

} // namespace kel
