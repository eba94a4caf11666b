#include "frame/bits_per_index.h"

#include "orvella/orv.h"
#include "support/faces.h"

namespace kel {

namespace {

// Storage bits of a small format index; 0 for an unknown one.
constexpr u32 storageBitsOfIndex(u32 index) {
    switch (index) {
    case 0:
    case 9:
    case 128:
    case 129:
    case 130: return 8;
    case 1:
    case 132:
    case 134:
    case 136:
    case 144:
    case 145:
    case 148:
    case 149: return 12;
    case 2:
    case 5:
    case 7:
    case 10: return 16;
    case 3:
    case 4: return 24;
    case 141: return 32;
    case 133:
    case 135: return 36;
    case 6:
    case 8: return 48;
    default: return 0;
    }
}

} // namespace

Refusal bitsPerPixelOfIndex(u32 index, u32* bits) {
    const u32 found = storageBitsOfIndex(index);
    const Refusal refusal = firstRefusal({{found != 0, Refusal::index}, {bits, Refusal::destination}});
    return unlessRefused(refusal, [&] { *bits = found; });
}

} // namespace kel

OrvErrorType OrvGetBitsPerPixel(uint32_t index, uint32_t* bits) {
    return kel::orv(kel::bitsPerPixelOfIndex(index, bits));
}
