// The commands of the program, and what they are told. They throw Error and UsageError.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "frame_options.h"
#include "picture.h"
#include "recipe.h"

namespace tool {

struct ConvertOptions : RecipeOptions {
    FrameOptions frame;
    std::string type; // empty: by the file name
    bool raw = false;
    Encoding encoding;
    std::uint64_t skip = 0, stride = 0;
    std::string frames; // empty: a file is one frame
    unsigned jobs = 1;
    std::filesystem::path directory; // empty: the last file is the output
    std::vector<std::filesystem::path> files;
};
void convertCommand(const ConvertOptions& options);

struct ChartOptions {
    FrameOptions frame;
    std::filesystem::path output, truth; // no truth: empty
};
void chartCommand(const ChartOptions& options);

struct GuessOptions {
    std::filesystem::path file, sheet; // no sheet: empty
    std::uint64_t skip = 0;
    std::size_t count = 6;
};
void guessCommand(const GuessOptions& options);

struct GrabOptions {
    std::string camera; // empty: the first real one, or else the simulated one
    std::string format, size;
    std::vector<std::string> features; // "Feature=Value"
    unsigned frames = 1;
    std::filesystem::path output;
};
void grabCommand(const GrabOptions& options);

void camerasCommand();
void formatsCommand();
void infoCommand();

} // namespace tool
