// Making and destroying colour-correction objects. Arguments and refusals: orvella/orv.h.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

// Throws KELThreadException.
Result createColorCorrection(u32 kind, const float* matrix, ColorCorrectionHandle* handle);

Result destroyColorCorrection(ColorCorrectionHandle handle);

} // namespace kel
