#include <cstring>

#include "frame/bits_per_index.h"
#include "geometry/geometry.h"
#include "support/faces.h"

namespace kel {

namespace {

using Exact = __int128; // width * height * bits needs more than 64 bits

constexpr size_t blockSizeOf(i32 kind) { return kind == 1 ? 12 : kind == 2 ? 52 : 0; }

} // namespace

Result extractSis(void* destination, const void* image, u32 width, u32 height, u32 formatIndex, i32 line, i32 kind) {
    if (!destination) return badArgument(1);
    if (!image) return badArgument(2);
    if (width == 0) return badArgument(3);
    if (height == 0) return badArgument(4);
    u32 bits = 0;
    if (const Result refusal = bitsPerPixelOfIndex(formatIndex, &bits); !refusal.ok()) return badArgument(5);

    // A line from the top, or pixels back from the end.
    const Exact pixels = Exact{width} * height;
    const Exact startBit = (line >= 0 ? Exact{line} * width : pixels + line) * bits;
    if (startBit % 8 != 0) return badArgument(6);
    const size_t blockSize = blockSizeOf(kind);
    if (blockSize == 0) return badArgument(7);
    const Exact start = startBit / 8;
    if (start < 0 || start + Exact{blockSize} >= pixels * bits / 8) return fault;

    std::memcpy(destination, static_cast<const u8*>(image) + static_cast<size_t>(start), blockSize);
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvGetSIS(void* destination, const void* image, uint32_t width, uint32_t height, uint32_t formatIndex,
                       int32_t line, int32_t kind) {
    return kel::orv(kel::extractSis(destination, image, width, height, formatIndex, line, kind));
}
