// Frames as linear samples of 16 bits, the full range used, which can be developed into any output.
#pragma once
#include "conversion.h"

namespace tool {

struct LinearImage {
    Size size;
    unsigned channels; // 1 grey, 3 red, green, blue
    std::vector<std::uint16_t> samples;
};

// Deep mosaics keep all bits with the mode 2x2; the other modes are for 8 bits, to which they are reduced. Throws Refusal.
LinearImage linearImage(const FrameFormat& frame, std::span<const std::uint8_t> source, const DebayerMode& debayer);

// What is done to such a frame, for the user: "12-bit samples are reduced to 8 bits for --debayer 3x3"; mostly empty.
std::string reduction(const FrameFormat& frame, const DebayerMode& debayer);

// All outputs but YUV422 and planes.
Image imageOf(const LinearImage& linear, const Output& output);

} // namespace tool
