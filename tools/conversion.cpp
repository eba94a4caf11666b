#include "conversion.h"

#include "offers.h"

namespace tool {

Refusal refusal(const FrameFormat& frame, const Output& output, const Processing& processing, OrvErrorType code) {
    const std::string options = text(processing);
    return Refusal("cannot convert " + text(frame) + " to " + std::string(output.names[0]) +
                   (options.empty() ? "" : " with " + options) + ": " + advice(frame, output, processing) + " (" +
                   std::to_string(code) + ")");
}

Image convert(const FrameFormat& frame, Bytes source, const Output& output, const Processing& processing) {
    Image image{output, frame.size, {}};
    const OrvErrorType code = heedsDebayerMode(frame, output, processing) ? transform(frame, source, image, processing)
                                                                          : OrvErrorNotImplemented;
    if (code == OrvErrorSuccess) return image;
    throw refusal(frame, output, processing, code);
}

} // namespace tool
