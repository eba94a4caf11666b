#include "commands.h"
#include "errors.h"
#include "frames/pack.h"
#include "picture.h"

namespace tool {

namespace {

void put(Bytes& bytes, std::uint16_t value, unsigned bits) {
    if (bits == 16) bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

// The chart as a perfect conversion would show it: grey for grey formats, and with 16 bits for samples of more than 8.
Image truthFor(const FrameFormat& frame, const Chart& chart) {
    const unsigned bits = frame.pixels.bits > 8 ? 16 : 8;
    const bool colour = frame.pixels.samples != Samples::grey;
    const char* const output = colour ? (bits == 16 ? "RGB48" : "RGB24") : (bits == 16 ? "Mono16" : "Mono8");
    Image truth{outputNamed(output), chart.size, {}};
    for (const Rgb16& pixel : chart.pixels) {
        if (!colour) {
            put(truth.bytes, luma(pixel), bits);
            continue;
        }
        put(truth.bytes, pixel.red, bits);
        put(truth.bytes, pixel.green, bits);
        put(truth.bytes, pixel.blue, bits);
    }
    return truth;
}

} // namespace

void chartCommand(const ChartOptions& options) {
    const FrameFormat frame = options.frame.frame();
    if (const std::string missing = missingFor(frame); !missing.empty())
        throw Error(std::string(frame.pixels.name) + " at " + text(frame.size) + ": needs " + missing);
    const Chart chart = makeChart(frame.size);
    Bytes packed = pack(chart, frame);
    if (!options.truth.empty()) {
        const FileType type = fileTypeOf(options.truth);
        Image truth = truthFor(frame, chart);
        requireHolds(type, truth.output);
        writeFile(options.truth, encode(std::move(truth), type));
    }
    writeFile(options.output, std::move(packed));
}

} // namespace tool
