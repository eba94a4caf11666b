// Writes a chart as a camera would send it. Shares no code with the library, so that one checks the other.
#pragma once
#include "frames/chart.h"

namespace frames {

// What the size lacks for such frames: "an even width", or nothing.
std::string missingFor(const FrameFormat& frame);

// The size lacks nothing.
std::vector<std::uint8_t> pack(const Chart& chart, const FrameFormat& frame);

} // namespace frames
