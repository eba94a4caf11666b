// What the library offers. It is asked itself, by converting tiny images.
#pragma once
#include <string>
#include <vector>

#include "outputs.h"
#include "processing.h"

namespace tool {

// Whether it converts such frames to this output at all.
bool isOffered(const FrameFormat& frame, const Output& output, const Processing& processing = {});

// Sources without debayer modes take any, even one that does not exist, and convert as always.
bool heedsDebayerMode(const FrameFormat& frame, const Output& output, const Processing& processing);

// The pixel formats that it converts so to any output; of mosaics those of the first phase, as all phases are alike.
std::vector<const PixelFormat*> offeredSources(const Processing& processing);
// "BayerRG8, Rgb8 (mosaics in every phase)"
std::string names(const std::vector<const PixelFormat*>& sources);

// The sizes that it takes: "any size", "an even width", ...
std::string sizeRule(const FrameFormat& frame, const Output& output, const Processing& processing = {});

// What the user can change when the library refuses: "it needs an even width", "offered are Mono8, RGB24", ...
std::string advice(const FrameFormat& frame, const Output& output, const Processing& processing);

} // namespace tool
