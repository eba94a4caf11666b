#pragma once
#include "support/result.h"

namespace kel {

// Storage bits of a small format index, the numbering of OrvGetBitsPerPixel and OrvGetSIS.
Result bitsPerPixelOfIndex(u32 index, u32* bits);

} // namespace kel
