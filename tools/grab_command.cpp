#include <cstdio>
#include <memory>

#include "camera.h"
#include "commands.h"
#include "errors.h"
#include "help.h"
#include "picture.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

struct GrabOptions {
    std::string camera = "Fake_1";
    std::string format, size;
    unsigned frames = 1;
    fs::path output;
};

// "frame.raw" for a single frame, "frame-0001.raw" and so on for several.
fs::path numbered(const fs::path& path, unsigned frame, unsigned frames) {
    if (frames == 1 || path == "-") return path;
    char number[16];
    std::snprintf(number, sizeof number, "-%04u", frame);
    return path.parent_path() / (path.stem().string() + number + path.extension().string());
}

void run(const GrabOptions& options) {
    CameraSettings settings{options.camera, {}, {}, options.frames};
    if (!options.format.empty()) settings.format = pixelFormatNamed(options.format);
    if (!options.size.empty()) settings.size = parseSize(options.size);
    const FileType type = options.output == "-" ? FileType::raw : fileTypeOf(options.output);

    unsigned count = 0;
    grab(settings, [&](const FrameFormat& frame, Bytes bytes) {
        const fs::path path = numbered(options.output, ++count, options.frames);
        if (type == FileType::raw)
            writeFile(path, std::move(bytes));
        else
            writeFile(path, encode(convert(frame, std::move(bytes), suitableOutput(frame, type)), type));
        std::fprintf(path == "-" ? stderr : stdout, "%s: %s\n", outputName(path).c_str(), text(frame).c_str());
    });
}

} // namespace

void addGrabCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("grab", "Take frames from a camera, real or simulated");
    const auto options = std::make_shared<GrabOptions>();
    setUsage(command, "Usage: orvella grab [OPTIONS] OUTPUT");
    command.footer(
        "Writes the raw frame if OUTPUT ends with .raw or is -, else a picture, and says what the frame is.\n"
        "Several frames are numbered: frame-0001.raw, frame-0002.raw, ...\n"
        "\n"
        "Examples:\n"
        "  orvella grab -f BayerRG8 -s 640x480 frame.raw\n"
        "  orvella grab -f BayerRG8 -n 10 frame.png");
    command
        .add_option("-c,--camera", options->camera,
                    "Name of the camera, by default Fake_1, which is simulated in the program")
        ->option_text("NAME");
    command.add_option("-f,--format", options->format, "Pixel format, like BayerRG8; otherwise the camera's choice")
        ->option_text("NAME");
    command.add_option("-s,--size", options->size, "Width and height, like 640x480; otherwise the camera's choice")
        ->option_text("WxH");
    command.add_option("-n,--frames", options->frames, "How many frames, by default 1")
        ->check(CLI::Range(1, 9999))
        ->option_text("N");
    command.add_option("OUTPUT", options->output, "The raw frame or the picture; - is standard output")->required();
    command.callback([options] { run(*options); });
}

} // namespace tool
