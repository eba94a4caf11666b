// What happens to a frame on its way to a picture.
#pragma once
#include "adjustments.h"
#include "commands.h"
#include "geometry.h"
#include "picture.h"

namespace tool {

struct Recipe {
    bool deinterlace = false;
    Processing processing;
    Adjustments adjustments;
    Output output;
    bool half = false;
    Flip flip = Flip::none;
    FileType type = FileType::png;
    // By way of linear samples: the library does not do it at once.
    bool twoSteps = false;
};

// The file type that the options name; empty if the ending of the output's name does.
std::string fileTypeName(const ConvertOptions& options);

// Throws UsageError.
FileType fileTypeOf(const ConvertOptions& options);
Recipe recipeFor(const FrameFormat& frame, const ConvertOptions& options);

// A remark on what the steps cost, or nothing.
std::string remark(const Recipe& recipe, const FrameFormat& frame);

// One picture, or one for each plane. Throws Refusal.
std::vector<Image> follow(const Recipe& recipe, const FrameFormat& frame, Bytes source);

} // namespace tool
