// The path of OrvImageTransform with a colour-correction record.
#pragma once
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

// The images have data, equal sizes and the right Size; matrix: nine floats.
Refusal correctionTransform(const OrvImage& source, const OrvImage& destination, const float* matrix);

} // namespace kel
