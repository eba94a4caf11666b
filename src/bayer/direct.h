// The one-call converters of mosaics: a fixed output, by 2x2 where the name says nothing else. Arguments and refusals:
// orvella/orv.h. With colour correction: correction/direct.h.
#pragma once
#include "support/result.h"

namespace kel {

Result raw8ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw8ToBgr3x3(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw8ToBgrIntLCAA(void* destination, void* source, u32 width, u32 height, i32 pattern);
Result raw8ToBgrIntLCAAV(void* destination, void* source, u32 width, u32 height, i32 pattern);
Result raw8ToBgrIntYUV422(void* destination, void* source, u32 width, u32 height, i32 pattern);
Result raw8ToBgrMono(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw8ToY8(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw12ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw12ToBgr16(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw16ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw16ToBgr16(void* destination, const void* source, u32 width, u32 height, i32 pattern);
Result raw16ToY16(void* destination, const void* source, u32 width, u32 height, i32 pattern);

} // namespace kel
