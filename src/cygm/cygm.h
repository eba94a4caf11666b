// The CYGM families. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/result.h"

namespace kel {

Result cygm8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output);
Result cygm8ImageTransformBinned(void* destination, const void* source, u32 width, u32 height, u32 output);
Result cygm8ImageTransform3x3(void* destination, const void* source, u32 width, u32 height, u32 output);

} // namespace kel
