// The mono families. Arguments and refusals: orvella/orv.h.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

// The current face refuses a count of 0 here, the legacy face does not.
enum class EmptyRun { refused, allowed };

Result y8ImageTransform(void* destination, const void* source, u64 pixels, u32 output,
                        EmptyRun empty = EmptyRun::refused);
Result y16BigEndianImageTransform(void* destination, const void* source, u64 pixels, u32 output,
                                  EmptyRun empty = EmptyRun::refused);
Result y16LittleEndianImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result y16ImageTransformEx(void* destination, const void* source, u64 pixels, u32 output, const OrvShiftRecord* shift);
Result y12ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result y10pImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result y12pImageTransform(void* destination, const void* source, u64 pixels, u32 output);

} // namespace kel
