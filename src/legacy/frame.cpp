#include "frame/bits_per_index.h"
#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

uint32_t ZEB_GetBitsPerPixel(uint32_t index, uint32_t* bits) {
    constexpr Refusal arguments[] = {Refusal::index, Refusal::destination};
    return zeb(bitsPerPixelOfIndex(index, bits), arguments);
}
