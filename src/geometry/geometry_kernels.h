// The kernels of flips and resampling.
#pragma once
#include "kernels/level.h"
#include "support/integers.h"

namespace kel {

using Reverse = void (*)(u8* elements, size_t count);
using Exchange = void (*)(u8* a, u8* b, size_t bytes);

// A piece of a line: where each of its bytes comes from.
struct Strip {
    static constexpr size_t capacity = 2048;
    static constexpr u16 whole = 1024;

    size_t start, length; // in the line
    size_t sourceEnd;     // one behind the last source byte
    size_t source[capacity];

    // Linear only: the byte's weight in 1/1024. The rest is that of the same byte of the pixel before, `pixel` bytes in
    // front; with `whole` there need be none.
    u16 weight[capacity];
    size_t pixel;
};

// What a line consists of: fill() makes the next strip, or returns false behind the last one.
struct LineOfStrips {
    void* state;
    bool (*fill)(void* state, Strip& strip);
};

// Pitches in bytes.
struct ResampledLines {
    u8* destination;
    const u8* source;
    ptrdiff_t destinationPitch, sourcePitch;
    size_t count;
};

using Resample = void (*)(const ResampledLines& lines, const LineOfStrips& strips);

struct GeometryKernels {
    Reverse reverse[7]; // in place, by bytes per element
    Exchange exchange;
    Resample resample[2]; // nearest, linear
};

KEL_KERNEL_TABLES(GeometryKernels, geometryKernels)
inline const GeometryKernels& geometryKernels() { KEL_RETURN_TABLE_IN_USE(GeometryKernels, geometryKernels) }

} // namespace kel
