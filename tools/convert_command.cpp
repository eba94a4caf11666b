#include <cstdio>
#include <filesystem>
#include <vector>

#include "commands.h"
#include "conversion.h"
#include "errors.h"
#include "files.h"
#include "geometry.h"
#include "picture.h"
#include "planes.h"
#include "progress.h"
#include "tasks.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

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

FileType typeOfOutput(const fs::path& path) {
    if (fs::is_directory(path))
        throw UsageError("'" + path.string() + "' is a directory; give it with --output-directory");
    return fileTypeOf(path, "rename it or use --type");
}

Recipe recipeOf(const ConvertOptions& options) {
    const FrameFormat frame = options.frame.frame();
    const Processing processing = processingOf(options, frame);
    const std::string typeName = fileTypeName(options);
    const FileType type = typeName.empty() ? typeOfOutput(options.files.back()) : fileTypeNamed(typeName);
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

void follow(const Recipe& recipe, const Task& task) {
    Bytes source = readFile(task.input, byteCount(recipe.frame), text(recipe.frame));
    const std::string warning = excess(recipe.frame, source);
    std::vector<File> files;
    for (Image& image : makeImages(recipe, std::move(source)))
        files.push_back({task.outputs[files.size()], encode(std::move(image), recipe.type)});
    writeFiles(files);
    if (!warning.empty()) std::fprintf(stderr, "orvella: %s: %s\n", inputName(task.input).c_str(), warning.c_str());
}

void makeDirectory(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) throw Error("cannot make the directory " + directory.string() + ": " + error.message());
}

} // namespace

void convertCommand(const ConvertOptions& options) {
    if (options.directory.empty() && options.files.size() != 2)
        throw UsageError("give one input and one output, or any number of inputs and --output-directory");
    const Recipe recipe = recipeOf(options);
    const std::vector<Task> tasks =
        planTasks(options.files, options.directory, fileTypeName(options), recipe.output.planes);
    if (!options.directory.empty()) makeDirectory(options.directory);

    const Progress progress(tasks.size());
    std::size_t done = 0, failed = 0;
    for (const Task& task : tasks) {
        progress.show(done++, task.input.string());
        try {
            follow(recipe, task);
        } catch (const Refusal&) {
            throw;
        } catch (const Error& error) { // the next file may be better
            if (tasks.size() == 1) throw;
            progress.clear();
            std::fprintf(stderr, "orvella: %s\n", error.what());
            ++failed;
        }
    }
    progress.clear();
    if (failed > 0)
        throw Error(std::to_string(failed) + " of " + std::to_string(tasks.size()) + " inputs were not converted");
}

} // namespace tool
