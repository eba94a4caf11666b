// What the two exported faces answer for a Result.
#pragma once
#include "orvella/orv.h"
#include "support/result.h"

namespace kel {

// The current face: OrvErrorType codes.
constexpr OrvErrorType orv(Result result) {
    switch (result.failure) {
    case Failure::none: return OrvErrorSuccess;
    case Failure::badArgument: return OrvErrorBadParameter;
    case Failure::structSize: return OrvErrorStructSize;
    case Failure::notImplemented: return OrvErrorNotImplemented;
    case Failure::noMemory: return OrvErrorResources;
    case Failure::fault: break;
    }
    return OrvErrorInternalFault;
}

// The legacy face: result words.
constexpr u32 zeb(Result result) {
    switch (result.failure) {
    case Failure::none: return 0;
    case Failure::badArgument: return 0x88000001 + result.argument;
    case Failure::notImplemented: return 0x88000012;
    case Failure::noMemory: return 0x8800001A;
    case Failure::structSize:
    case Failure::fault: break;
    }
    return 0x88000001;
}

} // namespace kel
