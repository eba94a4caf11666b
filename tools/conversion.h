// Frames become images.
#pragma once
#include "errors.h"
#include "transform.h"

namespace tool {

// Throws Refusal.
Image convert(const FrameFormat& frame, Bytes source, const Output& output, const Processing& processing = {});

// What to warn of if samples have more bits than they are said to have; empty otherwise.
std::string excess(const FrameFormat& frame, const Bytes& source);

// What to throw if the library refuses, with its text and what could be changed.
Refusal refusal(const FrameFormat& frame, const Output& output, const Processing& processing, OrvErrorType code);

} // namespace tool
