// The result words of the legacy face.
#pragma once
#include <span>

#include "support/refusal.h"

namespace kel {

enum LegacyWord : u32 {
    legacySuccess = 0,
    legacyGeneralError = 0x88000000,
    legacyUnclassified = 0x88000001, // a kernel failed
    legacyParameter1 = 0x88000002,   // the first of twelve
    legacyParameter12 = 0x8800000D,
    legacyNotImplemented = 0x88000012,
    legacyNotSupported = 0x88000013,
    legacyNotAvailable = 0x88000014,
    legacyNotStarted = 0x88000015,
    legacyNoResources = 0x88000019,
    legacyNoMemory = 0x8800001A,
    legacyMoreData = 234 // the operating system's code for it
};

constexpr u32 legacyParameter(u32 position) { return legacyParameter1 + position - 1; } // counted from 1

// arguments: what the arguments of the function are for, in their order, as far as they can be refused.
constexpr u32 zeb(Refusal refusal, std::span<const Refusal> arguments) {
    switch (refusal) {
    case Refusal::none: return legacySuccess;
    case Refusal::notOffered: return legacyNotImplemented;
    case Refusal::noMemory: return legacyNoMemory;
    default: break;
    }
    for (u32 i = 0; i < arguments.size(); ++i)
        if (arguments[i] == refusal) return legacyParameter(i + 1);
    return legacyUnclassified;
}

// ---- The arguments that several functions have in common

constexpr Refusal unchecked = Refusal::none; // no function refuses this argument

constexpr Refusal runArguments[] = {Refusal::destination, Refusal::source, Refusal::count};
constexpr Refusal familyArguments[] = {Refusal::destination, Refusal::source, Refusal::width,
                                       Refusal::height,      unchecked,       Refusal::pattern};
constexpr Refusal shiftedFamilyArguments[] = {Refusal::destination, Refusal::source, Refusal::width,
                                              Refusal::height,      unchecked,       Refusal::record};
constexpr Refusal converterArguments[] = {Refusal::destination, Refusal::source,  Refusal::width,
                                          Refusal::height,      Refusal::pattern, Refusal::object};

} // namespace kel
