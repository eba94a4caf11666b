// Mirroring, turning and halving pictures, and weaving fields.
#pragma once
#include "transform.h"

namespace tool {

enum class Flip {
    none = 0,
    horizontal = 1, // the library's modes
    vertical = 2,
    both = 3,
    quarter, // turned clockwise
    threeQuarters
};

// "h", "v", "90", "180" or "270". Throws UsageError.
Flip flipNamed(const std::string& name);

// Throws UsageError if the library does not flip pictures of this output so.
void requireFlips(Flip flip, const Output& output);

// Throws Refusal.
void flipImage(Image& image, Flip flip);

// Throws UsageError.
void requireHalves(const Output& output);

// The mean of each 2x2 pixels.
void halveImage(Image& image);

// Makes one frame of two fields, which are stored one after the other: first the odd lines, then the even ones.
// Throws Refusal.
void weaveFields(Bytes& source, const FrameFormat& frame);

} // namespace tool
