// Writes a chart as a camera would send it. Shares no code with the library, so that one checks the other.
#pragma once
#include "chart.h"

namespace tool {

// Throws Error if the format cannot have this size.
Bytes pack(const Chart& chart, const FrameFormat& frame);

} // namespace tool
