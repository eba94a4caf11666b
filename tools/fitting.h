#pragma once
#include "outputs.h"

namespace tool {

// For the message that a file has not the expected size: what its size would fit, or nothing.
std::string fitting(const FrameFormat& expected, std::uint64_t expectedBytes, std::uint64_t fileBytes);

// Widths and heights that sensors and displays have.
std::span<const Size> usualSizes();

} // namespace tool
