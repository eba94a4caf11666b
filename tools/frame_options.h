// What the command line says of a frame.
#pragma once
#include <optional>
#include <string>

#include "outputs.h"

namespace tool {

// These throw UsageError.
PixelFormat pixelFormatNamed(const std::string& name);
Size sizeNamed(const std::string& text);

struct FrameOptions {
    std::string format; // empty: not given
    std::string size;
    std::optional<unsigned> bitsUsed;
    bool msbAligned = false;
    bool bigEndian = false;

    // These throw UsageError.
    FrameFormat frame() const; // both are given
    FrameFormat frame(PixelFormat pixels, Size size) const;
};

} // namespace tool
