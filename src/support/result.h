// How a conversion ends, in terms that both exported faces translate into their own codes.
#pragma once
#include "support/integers.h"

namespace kel {

enum class Failure : u8 {
    none,
    badArgument,    // -7
    structSize,     // -8
    notImplemented, // -17: an output or option that is not offered
    fault,          // -1: a kernel refused its parameters
    noMemory        // -14
};

struct [[nodiscard]] Result {
    Failure failure = Failure::none;
    u8 argument = 0; // of badArgument: the position of the refused argument, from 1

    constexpr bool ok() const { return failure == Failure::none; }
};

constexpr Result success{};
constexpr Result notImplemented{Failure::notImplemented};
constexpr Result fault{Failure::fault};
constexpr Result noMemory{Failure::noMemory};
constexpr Result badArgument(u8 position) { return {Failure::badArgument, position}; }

} // namespace kel
