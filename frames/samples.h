// The values that a camera gave: to look at, not to convert.
#pragma once
#include <cstdint>
#include <span>

#include "frames/frame.h"

namespace frames {

// How many each pixel has: one of grey and of mosaics, those of colours in memory order, Y U V.
unsigned samplesOfPixel(const PixelFormat& format);

// Those of the pixels from x, y on, up to the end of their row at most, into `values`. The frame is whole.
void readPixels(const FrameFormat& frame, std::span<const std::uint8_t> bytes, std::uint32_t x, std::uint32_t y,
                std::span<std::uint16_t> values);

} // namespace frames
