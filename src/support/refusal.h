// How a call ends, in terms that both exported faces turn into answers of their own.
#pragma once
#include <initializer_list>

#include "support/integers.h"

namespace kel {

enum class Refusal : u8 {
    none, // nothing was refused: the call has done its work

    // An argument, by what it is for
    destination,
    source,
    image, // that is changed in place
    red,   // planes
    green,
    blue,
    count, // of pixels
    width,
    height,
    lineLength,
    lines,
    bytesPerPixel,
    pattern,
    record,
    object, // a colour-correction object
    matrix,
    handle,
    byteOrder,
    alignment,
    bits,
    index, // of a format
    mode,
    coding,
    kind,
    line,
    ratio,
    format, // what a record or a code describes

    // Something else
    notOffered, // an output or an option
    structSize,
    kernelFault, // a kernel refused its parameters
    noMemory
};

// What must hold, or else the call is refused.
struct Check {
    bool holds;
    Refusal otherwise;

    constexpr Check(bool condition, Refusal refusal) : holds(condition), otherwise(refusal) {}
    constexpr Check(const void* pointer, Refusal refusal) : holds(pointer != nullptr), otherwise(refusal) {}
    constexpr Check(Refusal refusal) : holds(refusal == Refusal::none), otherwise(refusal) {}
};

constexpr Refusal firstRefusal(std::initializer_list<Check> checks) {
    for (const Check& check : checks)
        if (!check.holds) return check.otherwise;
    return Refusal::none;
}

// Runs the conversion if nothing was refused.
template <class Conversion> Refusal unlessRefused(Refusal refusal, Conversion convert) {
    if (refusal == Refusal::none) convert();
    return refusal;
}

inline u8* bytes(void* buffer) { return static_cast<u8*>(buffer); }
inline const u8* bytes(const void* buffer) { return static_cast<const u8*>(buffer); }

} // namespace kel
