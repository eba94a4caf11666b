// Making and destroying colour-correction objects. Arguments and refusals: orvella/orv.h.
#pragma once
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

// Throws KELThreadException.
Refusal createColorCorrection(u32 kind, const float* matrix, ColorCorrectionHandle* handle);

Refusal destroyColorCorrection(ColorCorrectionHandle handle);

} // namespace kel
