// One call of the library.
#pragma once
#include "files.h"
#include "outputs.h"
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

// Converts into image.bytes; the source may be overwritten.
OrvErrorType transform(const FrameFormat& frame, Bytes& source, Image& image, const Processing& processing);

} // namespace tool
