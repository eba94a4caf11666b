#include <cstring>
#include <memory>
#include <new>

#include "geometry/geometry.h"
#include "support/faces.h"

namespace kel {

namespace {

// Even lines from the second field, odd lines from the first. The second field may lie in the destination itself, half
// a frame or more ahead of where the lines of the first pair go.
void weave(u8* destination, const u8* first, const u8* second, size_t lineLength, size_t pairs) {
    for (; pairs > 0; --pairs, first += lineLength, second += lineLength, destination += 2 * lineLength) {
        std::memcpy(destination, second, lineLength);
        std::memcpy(destination + lineLength, first, lineLength);
    }
}

} // namespace

Refusal interlacedToProgressive(void* destination, const void* source, u32 lineLength, u32 lines) {
    const Refusal refusal = firstRefusal(
        {{destination, Refusal::destination}, {source, Refusal::source}, {lines % 2 == 0, Refusal::lines}});
    if (refusal != Refusal::none) return refusal;

    u8* const to = bytes(destination);
    const u8* const from = bytes(source);
    const size_t pairs = lineLength > 0 ? lines / 2 : 0; // billions of empty lines take no time
    if (to != from) {
        weave(to, from, from + size_t{lines} * (lineLength / 2), lineLength, pairs);
        return Refusal::none;
    }
    const size_t half = pairs * lineLength;
    const std::unique_ptr<u8[]> first(new (std::nothrow) u8[half]);
    if (!first) return Refusal::noMemory;
    std::memcpy(first.get(), from, half);
    weave(to, first.get(), from + half, lineLength, pairs);
    return Refusal::none;
}

} // namespace kel

using namespace kel;

OrvErrorType OrvInterlacedToProgressive(void* destination, const void* source, uint32_t lineLength, uint32_t lines) {
    return orv(interlacedToProgressive(destination, source, lineLength, lines));
}
