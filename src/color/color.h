// The colour families and the one-call converters of colour sources. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/result.h"

namespace kel {

Result rgb8ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result bgr8ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result rgba8ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result bgra8ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result rgb8ToY8(void* destination, const void* source, u32 pixels);
Result rgb8ToBgr(void* destination, const void* source, u32 pixels);

Result yuv411ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result yuv422ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result yuv444ImageTransform(void* destination, const void* source, u64 pixels, u32 output);
Result yuv411ToBgr(void* destination, const void* source, u32 pixels);
Result yuv422ToBgr(void* destination, const void* source, u32 pixels);
Result yuv444ToBgr(void* destination, const void* source, u32 pixels);

} // namespace kel
