#pragma once
#include "support/refusal.h"

namespace kel {

// Storage bits of a small format index, the numbering of OrvGetBitsPerPixel and OrvGetSIS.
Refusal bitsPerPixelOfIndex(u32 index, u32* bits);

} // namespace kel
