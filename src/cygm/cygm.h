// The CYGM family. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/result.h"

namespace kel {

Result cygm8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output);

} // namespace kel
