#include "frame_options.h"

#include "errors.h"

namespace tool {

void FrameOptions::addTo(CLI::App& command) {
    const std::string samples = "16-bit samples";
    command.add_option("-f,--format,--from", format, "Pixel format, like BayerRG8 ('orvella formats' lists them)")
        ->required()
        ->option_text("NAME");
    command.add_option("-s,--size", size, "Width and height in pixels, like 2448x2048")->required()->option_text("WxH");
    command.add_option("--bits-used", bitsUsed, "Significant bits of a sample, if not the format's own")
        ->check(CLI::Range(1, 16))
        ->option_text("N")
        ->group(samples);
    command.add_flag("--msb-aligned", msbAligned, "The significant bits are the high ones, not the low ones")
        ->group(samples);
    command.add_flag("--big-endian", bigEndian, "The high byte comes first")->group(samples);
}

FrameFormat FrameOptions::frame() const {
    FrameFormat frame{pixelFormatNamed(format), parseSize(size), msbAligned, bigEndian};
    const bool described = bitsUsed || msbAligned || bigEndian;
    if (described && frame.pixels.packing != Packing::words) {
        throw UsageError("--bits-used, --msb-aligned and --big-endian are for 16-bit samples, but those of " +
                         std::string(frame.pixels.name) + " are not in 16-bit words");
    }
    frame.pixels.bits = bitsUsed.value_or(frame.pixels.bits);
    return frame;
}

} // namespace tool
