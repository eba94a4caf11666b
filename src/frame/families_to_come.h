// What the dispatcher routes to and no family offers yet.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

inline Result correctionTransform(const OrvImage&, const OrvImage&, const float*) { return notImplemented; }

} // namespace kel
