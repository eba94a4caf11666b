#include <cstring>

#include "frame/bits_per_index.h"
#include "geometry/geometry.h"
#include "support/faces.h"

namespace kel {

namespace {

using Exact = __int128; // width * height * bits needs more than 64 bits

constexpr size_t blockSizeOf(i32 kind) { return kind == 1 ? 12 : kind == 2 ? 52 : 0; }

} // namespace

Refusal extractSis(void* destination, const void* image, u32 width, u32 height, u32 formatIndex, i32 line, i32 kind) {
    u32 bits = 0;
    const bool known = bitsPerPixelOfIndex(formatIndex, &bits) == Refusal::none;
    // A line from the top, or pixels back from the end.
    const Exact pixels = Exact{width} * height;
    const Exact startBit = (line >= 0 ? Exact{line} * width : pixels + line) * bits, start = startBit / 8;
    const size_t blockSize = blockSizeOf(kind);
    const bool inside = start >= 0 && start + Exact{blockSize} < pixels * bits / 8;
    const Refusal refusal = firstRefusal({{destination, Refusal::destination},
                                          {image, Refusal::source},
                                          {width > 0, Refusal::width},
                                          {height > 0, Refusal::height},
                                          {known, Refusal::index},
                                          {startBit % 8 == 0, Refusal::line},
                                          {blockSize > 0, Refusal::kind},
                                          {inside, Refusal::kernelFault}});
    return unlessRefused(refusal,
                         [&] { std::memcpy(destination, bytes(image) + static_cast<size_t>(start), blockSize); });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvGetSIS(void* destination, const void* image, uint32_t width, uint32_t height, uint32_t formatIndex,
                       int32_t line, int32_t kind) {
    return orv(extractSis(destination, image, width, height, formatIndex, line, kind));
}
