// A camera frame and what is known about it.
#pragma once
#include <cstdint>
#include <string>

#include "frames/pixel_formats.h"

namespace frames {

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    std::uint64_t pixels() const { return std::uint64_t{width} * height; }
};

// "2448x2048"
std::string text(Size size);
// Of sides from 1 to 1 000 000; nothing for any other text.
std::optional<Size> parseSize(std::string_view text);

struct FrameFormat {
    PixelFormat pixels;
    Size size;
    // Of 16-bit samples; pixels.bits are used.
    bool msbAligned = false;
    bool bigEndian = false;
};

// "BayerRG12 (10 bits used, big-endian) at 640x480"
std::string text(const FrameFormat& frame);

} // namespace frames
