// Lines stretched or shrunk, pixel by pixel.
#pragma once
#include "reference/outputs.h"

namespace reference {

struct Resampling {
    std::int64_t destinationLength, destinationPitch, sourceLength, sourcePitch, lines; // in pixels
    std::int64_t bytesPerPixel;
    bool linear;
    float a, b;
};

void resample(Byte* destination, const Byte* source, const Resampling& how);

// The source pixel nearest to output pixel i, as far as the mode lets it go.
std::int64_t nearestPixel(std::int64_t i, const Resampling& how);

} // namespace reference
