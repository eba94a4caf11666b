#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "commands.h"
#include "conversion.h"
#include "errors.h"
#include "files.h"
#include "frame_options.h"
#include "geometry.h"
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
    std::string debayer, matrix, flip;
    bool deinterlace = false;
    std::string type; // empty: by the file name
    bool raw = false;
    fs::path directory; // empty: two files are given, an input and an output
    std::vector<fs::path> files;
};

// What happens to every input.
struct Recipe {
    FrameFormat frame;
    bool deinterlace;
    Processing processing;
    Output output;
    Flip flip;
    FileType type;
};

std::string fileTypeName(const ConvertOptions& options) {
    if (options.raw) return "raw";
    return options.type.empty() && !options.directory.empty() ? "png" : options.type;
}

Processing processingOf(const ConvertOptions& options, const FrameFormat& frame) {
    Processing processing;
    if (!options.debayer.empty()) {
        if (!isMosaic(frame.pixels.samples))
            throw UsageError("--debayer is for Bayer mosaics, not for " + std::string(frame.pixels.name));
        processing.debayer = debayerModeNamed(options.debayer);
    }
    if (!options.matrix.empty()) {
        if (processing.debayer.code != OrvDebayerMode2x2)
            throw UsageError("--matrix demosaics by 2x2, not by --debayer " + std::string(processing.debayer.name));
        processing.matrix = parseMatrix(options.matrix);
    }
    return processing;
}

Recipe recipeOf(const ConvertOptions& options) {
    const FrameFormat frame = options.frame.frame();
    const Processing processing = processingOf(options, frame);
    const std::string typeName = fileTypeName(options);
    const FileType type = typeName.empty() ? fileTypeOf(options.files.back()) : fileTypeNamed(typeName);
    const Output output =
        options.output.empty() ? suitableOutput(frame, type, processing) : outputNamed(options.output);
    requireHolds(type, output);
    if (options.deinterlace && frame.pixels.samples == Samples::cygm)
        throw UsageError("--deinterlace is not for Cygm8, whose two fields are taken apart as they are");
    const Flip flip = options.flip.empty() ? Flip::none : flipNamed(options.flip);
    requireFlips(flip, output);
    return {frame, options.deinterlace, processing, output, flip, type};
}

std::vector<Image> makeImages(const Recipe& recipe, Bytes source) {
    if (recipe.deinterlace) weaveFields(source, recipe.frame);
    std::vector<Image> images;
    if (recipe.output.planes.empty())
        images.push_back(convert(recipe.frame, std::move(source), recipe.output, recipe.processing));
    else
        images = convertToPlanes(recipe.frame, std::move(source), recipe.output, recipe.processing);
    for (Image& image : images) flipImage(image, recipe.flip);
    return images;
}

void follow(const Recipe& recipe, const Job& job) {
    Bytes source = readFile(job.input, byteCount(recipe.frame), text(recipe.frame));
    std::vector<File> files;
    for (Image& image : makeImages(recipe, std::move(source)))
        files.push_back({job.outputs[files.size()], encode(std::move(image), recipe.type)});
    writeFiles(files);
}

void makeDirectory(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) throw Error("cannot make the directory " + directory.string() + ": " + error.message());
}

void run(const ConvertOptions& options) {
    if (options.directory.empty() && options.files.size() != 2)
        throw UsageError("give one input and one output, or any number of inputs and --output-directory");
    const Recipe recipe = recipeOf(options);
    const std::vector<Job> jobs =
        planJobs(options.files, options.directory, fileTypeName(options), recipe.output.planes);
    if (!options.directory.empty()) makeDirectory(options.directory);

    const Progress progress(jobs.size());
    std::size_t done = 0, failed = 0;
    for (const Job& job : jobs) {
        progress.show(done++, job.input.string());
        try {
            follow(recipe, job);
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
    "Without -t, colour and mosaic sources become RGB24 (deep mosaics with --matrix: BGR48), 8-bit grey ones\n"
    "Mono8, deeper grey ones Mono16.\n"
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
    "  orvella convert -f BayerRG8 -s 2448x2048 --matrix 2.2,0,0,0,1.4,0,0,0,2 frame.raw frame.png\n"
    "      A mosaic becomes a colour picture with white balance.\n"
    "  orvella convert -f Mono8 -s 768x576 --deinterlace --flip 180 frame.raw frame.png\n"
    "      Two fields of a camera that hangs upside down.\n"
    "  orvella convert -f BayerRG8 -s 640x480 --raw -t BGR24 - - < frame.raw | display-program\n"
    "      From standard input to standard output, as bytes.\n"
    "  orvella convert -f BayerRG8 -s 640x480 *.raw --output-directory pictures --type png\n"
    "      Every frame of a directory.";

// An empty value may come from a script's variable that is not set.
std::string requireValue(const std::string& value) { return value.empty() ? "is empty" : ""; }

} // namespace

void addConvertCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("convert", "Turn raw frames into pictures");
    const auto options = std::make_shared<ConvertOptions>();
    setUsage(command, "Usage: orvella convert -f NAME -s WxH [OPTIONS] INPUT OUTPUT\n"
                      "       orvella convert -f NAME -s WxH [OPTIONS] INPUT... --output-directory DIRECTORY");
    command.footer(examples);
    options->frame.addTo(command);
    command.add_option("-t,--to", options->output, "Output, like RGB24 or Mono8 ('orvella formats' lists them)")
        ->check(requireValue)
        ->option_text("NAME");
    command
        .add_option("--debayer", options->debayer,
                    "How a mosaic becomes colour: 2x2 (default), 3x3, lcaa, lcaav, yuv422")
        ->check(requireValue)
        ->option_text("MODE");
    command
        .add_option("--matrix", options->matrix,
                    "Colour correction: nine numbers, R' G' B' from R G B, or identity, swap-red-blue, grey")
        ->check(requireValue)
        ->option_text("M0,...,M8");
    command
        .add_option("--flip", options->flip,
                    "Mirror the picture: h left to right, v upside down, 180 both, which turns it")
        ->check(requireValue)
        ->option_text("HOW");
    command.add_flag("--deinterlace", options->deinterlace,
                     "The frame is two fields, first its odd lines, then its even ones: weave them");
    CLI::Option* const type =
        command
            .add_option("--type", options->type, "File type, if the name of the output does not say it by its ending")
            ->check(requireValue)
            ->option_text("TYPE");
    command.add_flag("--raw", options->raw, "Write plain bytes, like --type raw")->excludes(type);
    command
        .add_option("--output-directory", options->directory, "Where any number of inputs go; made if it is missing")
        ->check(requireValue)
        ->option_text("DIRECTORY");
    command.add_option("FILES", options->files, "Raw frames and the picture; - is standard input or output")
        ->required();
    command.callback([options] { run(*options); });
}

} // namespace tool
