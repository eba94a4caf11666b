// The library's general transform, for the program.
#pragma once
#include <string>

#include "files.h"
#include "frame.h"
#include "pixel_formats.h"

namespace tool {

// What a conversion made. 16-bit samples are little-endian words.
struct Image {
    Output output;
    Size size;
    Bytes bytes;
};

// Bytes of such a frame.
std::uint64_t byteCount(const FrameFormat& frame);

// Throws Refusal with the library's text and what could be changed.
Image convert(const FrameFormat& frame, Bytes source, const Output& output);

// Whether the library converts such frames to this output at all. Asks by converting a tiny image.
bool isOffered(const FrameFormat& frame, const Output& output);

// Which sizes the library takes: "any size", "an even width", ... Asks by converting tiny images.
std::string sizeRule(const FrameFormat& frame, const Output& output);

// The library's text for a code.
std::string errorText(OrvErrorType code);

} // namespace tool
