#include "frame/bits_per_index.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_GetBitsPerPixel(uint32_t index, uint32_t* bits) { return zeb(bitsPerPixelOfIndex(index, bits)); }
