#pragma once
#include "conversion.h"

namespace tool {

// A grey picture for each plane of the output. RGB and YUV frames are split as they are, others by way of RGB24.
// Throws Refusal.
std::vector<Image> convertToPlanes(const FrameFormat& frame, Bytes source, const Output& output,
                                   const Processing& processing = {});

} // namespace tool
