// What the current face answers. (The legacy face: legacy/words.h.)
#pragma once
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

constexpr OrvErrorType orv(Refusal refusal) {
    switch (refusal) {
    case Refusal::none: return OrvErrorSuccess;
    case Refusal::notOffered: return OrvErrorNotImplemented;
    case Refusal::structSize: return OrvErrorStructSize;
    case Refusal::kernelFault: return OrvErrorInternalFault;
    case Refusal::noMemory: return OrvErrorResources;
    default: return OrvErrorBadParameter;
    }
}

} // namespace kel
