#include "conversion.h"

#include <algorithm>
#include <utility>

#include "offers.h"

namespace tool {

Refusal refusal(const FrameFormat& frame, const Output& output, const Processing& processing, OrvErrorType code) {
    const std::string options = text(processing);
    return Refusal("cannot convert " + text(frame) + " to " + std::string(output.names[0]) +
                   (options.empty() ? "" : " with " + options) + ": " + advice(frame, output, processing) + " (" +
                   std::to_string(code) + ")");
}

namespace {

// Sums above 255 wrap around on this way.
bool wrapsAround(const FrameFormat& frame, const Output& output, const Processing& processing) {
    return processing.matrix && frame.pixels.packing == Packing::packed12 && output.code == OrvOutputBgr24;
}

Bytes highBytes(const Bytes& words) {
    Bytes bytes(words.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = words[2 * i + 1];
    return bytes;
}

} // namespace

Image convert(const FrameFormat& frame, Bytes source, const Output& output, const Processing& processing) {
    if (wrapsAround(frame, output, processing)) {
        const Image deep = convert(frame, std::move(source), outputNamed("BGR48"), processing);
        return {output, frame.size, highBytes(deep.bytes)};
    }
    Image image{output, frame.size, {}};
    const OrvErrorType code = heedsDebayerMode(frame, output, processing) ? transform(frame, source, image, processing)
                                                                          : OrvErrorNotImplemented;
    if (code == OrvErrorSuccess) return image;
    throw refusal(frame, output, processing, code);
}

std::string excess(const FrameFormat& frame, const Bytes& source) {
    if (frame.pixels.packing != Packing::words || frame.msbAligned || frame.pixels.bits >= 16) return "";
    const unsigned limit = (1u << frame.pixels.bits) - 1;
    unsigned largest = 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < source.size(); i += 2) {
        const unsigned first = source[i], second = source[i + 1];
        const unsigned sample = frame.bigEndian ? first << 8 | second : second << 8 | first;
        largest = std::max(largest, sample);
        count += sample > limit ? 1 : 0;
    }
    if (count == 0) return "";
    return std::to_string(count) + " samples are above the " + std::to_string(limit) + " of " +
           std::to_string(frame.pixels.bits) + " bits, up to " + std::to_string(largest) +
           ", and lose their high bits; see --bits-used, --msb-aligned and --big-endian";
}

} // namespace tool
