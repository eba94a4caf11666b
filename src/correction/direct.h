// The one-call converters of mosaics with a colour-correction object; a null handle is the plain conversion. Arguments
// and refusals: orvella/orv.h.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

Result raw8ToBgrCorrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                          ColorCorrectionHandle handle);
Result raw8ToY8Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                         ColorCorrectionHandle handle);
Result raw12ToBgrCorrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                           ColorCorrectionHandle handle);
Result raw12ToBgr16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                             ColorCorrectionHandle handle);
Result raw16ToBgr16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                             ColorCorrectionHandle handle);
Result raw16ToY16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                           ColorCorrectionHandle handle);

} // namespace kel
