// Flips, line resampling, de-interlacing, block extraction. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/result.h"

namespace kel {

Result flip(void* image, u32 width, u32 height, i32 mode, u32 coding);
Result flipVertical(void* image, u32 lineLength, u32 height);

// Lengths and pitches in pixels.
struct Scanlines {
    i32 destinationLength, destinationPitch, sourceLength, sourcePitch;
    i32 count;
    u32 bytesPerPixel;
};
Result resampleScanlinesEx(void* destination, const void* source, const Scanlines& lines, u32 mode, float a, float b);
Result resampleScanlines(void* destination, const void* source, i32 destinationLength, i32 sourceLength, i32 count,
                         u32 bytesPerPixel, u32 mode, float a, float b);
Result resampledScanlineLength(u32* result, i32 sourceLength, float a, float b);

Result interlacedToProgressive(void* destination, const void* source, u32 lineLength, u32 lines);

Result extractSis(void* destination, const void* image, u32 width, u32 height, u32 formatIndex, i32 line, i32 kind);

} // namespace kel
