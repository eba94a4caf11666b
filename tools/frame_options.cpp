#include "frame_options.h"

#include "errors.h"

namespace tool {

PixelFormat pixelFormatNamed(const std::string& name) {
    if (const auto format = findPixelFormat(name)) return *format;
    throw UsageError("unknown pixel format '" + name + "'; " + hintFor(name) + "'orvella formats' lists them all");
}

Size sizeNamed(const std::string& text) {
    if (const auto size = parseSize(text)) return *size;
    throw UsageError("'" + text +
                     "' is no size; give width and height in pixels, each from 1 to 1000000, like 2448x2048");
}

FrameFormat FrameOptions::frame() const { return frame(pixelFormatNamed(format), sizeNamed(size)); }

FrameFormat FrameOptions::frame(PixelFormat pixels, Size pixelSize) const {
    FrameFormat frame{pixels, pixelSize, msbAligned, bigEndian};
    const bool described = bitsUsed || msbAligned || bigEndian;
    if (described && frame.pixels.packing != Packing::words) {
        throw UsageError("--bits-used, --msb-aligned and --big-endian are for 16-bit samples, but those of " +
                         std::string(frame.pixels.name) + " are not in 16-bit words");
    }
    frame.pixels.bits = bitsUsed.value_or(frame.pixels.bits);
    return frame;
}

} // namespace tool
