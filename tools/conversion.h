// The library's conversions, for the program.
#pragma once
#include <string>

#include "errors.h"
#include "files.h"
#include "frame.h"
#include "pixel_formats.h"
#include "processing.h"

namespace tool {

// What a conversion made. 16-bit samples are little-endian words.
struct Image {
    Output output;
    Size size;
    Bytes bytes;
};

// Bytes of such a frame.
std::uint64_t byteCount(const FrameFormat& frame);

// What to throw if the library refuses, with its text and what could be changed.
Refusal refusal(const FrameFormat& frame, const Output& output, const Processing& processing, OrvErrorType code);

// Throws Refusal.
Image convert(const FrameFormat& frame, Bytes source, const Output& output, const Processing& processing = {});

// The library itself is asked what it offers, by converting tiny images.

// Whether it converts such frames to this output at all.
bool isOffered(const FrameFormat& frame, const Output& output, const Processing& processing = {});

// The pixel formats that it converts so to any output: "BayerRG8, Rgb8 (mosaics in every phase)".
std::string offeredSources(const Processing& processing);

// The sizes that it takes: "any size", "an even width", ...
std::string sizeRule(const FrameFormat& frame, const Output& output, const Processing& processing = {});

// The library's text for a code.
std::string errorText(OrvErrorType code);

} // namespace tool
