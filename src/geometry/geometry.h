// Flips, line resampling, de-interlacing, block extraction. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/refusal.h"

namespace kel {

Refusal flip(void* image, u32 width, u32 height, i32 mode, u32 coding);
Refusal flipVertical(void* image, u32 lineLength, u32 height);

// Lengths and pitches in pixels.
struct Scanlines {
    i32 destinationLength, destinationPitch, sourceLength, sourcePitch;
    i32 count;
    u32 bytesPerPixel;
};
constexpr Scanlines dense(i32 destinationLength, i32 sourceLength, i32 count, u32 bytesPerPixel) {
    return {destinationLength, destinationLength, sourceLength, sourceLength, count, bytesPerPixel};
}
Refusal resampleScanlines(void* destination, const void* source, const Scanlines& lines, u32 mode, float a, float b);
Refusal resampledScanlineLength(u32* result, i32 sourceLength, float a, float b);

Refusal interlacedToProgressive(void* destination, const void* source, u32 lineLength, u32 lines);

Refusal extractSis(void* destination, const void* image, u32 width, u32 height, u32 formatIndex, i32 line, i32 kind);

} // namespace kel
