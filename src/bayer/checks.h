// The checks that all mosaics have in common.
#pragma once
#include "support/result.h"

namespace kel {

constexpr bool isEven(u32 size) { return size > 0 && size % 2 == 0; }

// Of (destination, source, width, height, ...).
inline Result checkMosaic(const void* destination, const void* source, u32 width, u32 height) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (!isEven(width)) return badArgument(3);
    if (!isEven(height)) return badArgument(4);
    return success;
}

// And of a Bayer pattern at `position`. -1 is let through: it has always meant 3.
inline Result checkMosaic(const void* destination, const void* source, u32 width, u32 height, i32 pattern,
                          u8 position) {
    if (const Result refusal = checkMosaic(destination, source, width, height); !refusal.ok()) return refusal;
    return pattern < -1 || pattern > 3 ? badArgument(position) : success;
}

} // namespace kel
