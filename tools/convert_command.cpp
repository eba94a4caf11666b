#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "commands.h"
#include "conversion.h"
#include "errors.h"
#include "files.h"
#include "frame_options.h"
#include "help.h"
#include "jobs.h"
#include "picture.h"
#include "planes.h"
#include "progress.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

struct ConvertOptions {
    FrameOptions frame;
    std::string output; // empty: what suits the source and the file type
    std::string debayer;
    std::string type; // empty: by the file name
    bool raw = false;
    fs::path directory; // empty: two files are given, an input and an output
    std::vector<fs::path> files;
};

void makeDirectory(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) throw Error("cannot make the directory " + directory.string() + ": " + error.message());
}

Processing processingOf(const ConvertOptions& options, const FrameFormat& frame) {
    Processing processing;
    if (!options.debayer.empty()) {
        if (!isMosaic(frame.pixels.samples))
            throw UsageError("--debayer is for Bayer mosaics, not for " + std::string(frame.pixels.name));
        processing.debayer = debayerModeNamed(options.debayer);
    }
    return processing;
}

std::vector<Image> convertAll(const FrameFormat& frame, Bytes source, const Output& output,
                              const Processing& processing) {
    if (!output.planes.empty()) return convertToPlanes(frame, std::move(source), output, processing);
    return {convert(frame, std::move(source), output, processing)};
}

void run(const ConvertOptions& options) {
    const FrameFormat frame = options.frame.frame();
    const Processing processing = processingOf(options, frame);
    const bool many = !options.directory.empty();
    if (!many && options.files.size() != 2)
        throw UsageError("give one input and one output, or any number of inputs and --output-directory");
    const std::string typeName = options.raw ? "raw" : !options.type.empty() ? options.type : many ? "png" : "";
    const FileType type = typeName.empty() ? fileTypeOf(options.files.back()) : fileTypeNamed(typeName);
    const Output output = options.output.empty() ? suitableOutput(frame, type) : outputNamed(options.output);
    const std::vector<Job> jobs = planJobs(options.files, options.directory, typeName, output.planes);
    requireHolds(type, output);
    if (many) makeDirectory(options.directory);

    const Progress progress(jobs.size());
    std::size_t done = 0, failed = 0;
    for (const Job& job : jobs) {
        progress.show(done++, job.input.string());
        try {
            Bytes source = readFile(job.input, byteCount(frame), text(frame));
            std::vector<File> files;
            for (Image& image : convertAll(frame, std::move(source), output, processing))
                files.push_back({job.outputs[files.size()], encode(std::move(image), type)});
            writeFiles(files);
        } catch (const Refusal&) {
            throw;
        } catch (const Error& error) { // the next file may be better
            if (jobs.size() == 1) throw;
            progress.clear();
            std::fprintf(stderr, "orvella: %s\n", error.what());
            ++failed;
        }
    }
    progress.clear();
    if (failed > 0)
        throw Error(std::to_string(failed) + " of " + std::to_string(jobs.size()) + " inputs were not converted");
}

constexpr auto examples =
    "File types: png, tif and tiff hold every output but YUV422; pgm holds grey, ppm RGB, pnm both; raw holds\n"
    "the plain bytes of any output, 16-bit samples little-endian. Standard output and directories get png.\n"
    "\n"
    "Planes are several files: '-t planes frame.raw frame.png' writes frame.r.png, frame.g.png and frame.b.png,\n"
    "'-t planes-y' frame.y.png, too. All of them are written, or none.\n"
    "\n"
    "Without -t, colour and mosaic sources become RGB24, 8-bit grey ones Mono8, deeper grey ones Mono16.\n"
    "\n"
    "Examples:\n"
    "  orvella convert -f BayerRG8 -s 2448x2048 frame.raw frame.png\n"
    "      A mosaic becomes a colour picture.\n"
    "  orvella convert -f Mono12p -s 640x480 -t Mono8 frame.raw frame.tif\n"
    "      Packed 12-bit grey, shown with 8 bits.\n"
    "  orvella convert -f BayerGR16 --bits-used 14 -s 768x512 frame.raw frame.png\n"
    "      14-bit samples in the low bits of 16-bit words.\n"
    "  orvella convert -f BayerRG8 -s 2448x2048 --debayer lcaav frame.raw frame.png\n"
    "      A mosaic whose fine lines would show false colours.\n"
    "  orvella convert -f BayerRG8 -s 640x480 --raw -t BGR24 - - < frame.raw | display-program\n"
    "      From standard input to standard output, as bytes.\n"
    "  orvella convert -f BayerRG8 -s 640x480 *.raw --output-directory pictures --type png\n"
    "      Every frame of a directory.";

} // namespace

void addConvertCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("convert", "Turn raw frames into pictures");
    const auto options = std::make_shared<ConvertOptions>();
    setUsage(command, "Usage: orvella convert -f NAME -s WxH [OPTIONS] INPUT OUTPUT\n"
                      "       orvella convert -f NAME -s WxH [OPTIONS] INPUT... --output-directory DIRECTORY");
    command.footer(examples);
    options->frame.addTo(command);
    command.add_option("-t,--to", options->output, "Output, like RGB24 or Mono8 ('orvella formats' lists them)")
        ->option_text("NAME");
    command
        .add_option("--debayer", options->debayer,
                    "How a mosaic becomes colour: 2x2 (default), 3x3, lcaa, lcaav, yuv422")
        ->option_text("MODE");
    CLI::Option* const type =
        command
            .add_option("--type", options->type, "File type, if the name of the output does not say it by its ending")
            ->option_text("TYPE");
    command.add_flag("--raw", options->raw, "Write plain bytes, like --type raw")->excludes(type);
    command
        .add_option("--output-directory", options->directory, "Where any number of inputs go; made if it is missing")
        ->option_text("DIRECTORY");
    command.add_option("FILES", options->files, "Raw frames and the picture; - is standard input or output")
        ->required();
    command.callback([options] { run(*options); });
}

} // namespace tool
