// The Bayer families. Arguments and refusals: orvella/orv.h.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

Result raw8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw8ImageTransform3x3(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);

// These overwrite the source. Without memory for a few lines they succeed and write nothing.
Result raw8ImageTransformIntLCAA(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw8ImageTransformIntLCAAV(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw8ImageTransformIntYUV422(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern);

Result raw10pImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw12ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw12pImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw16ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern);
Result raw16ImageTransformEx(void* destination, const void* source, u32 width, u32 height, u32 output,
                             const OrvShiftRecord* record);

} // namespace kel
