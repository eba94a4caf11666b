// What happens to a frame on its way to a picture.
#pragma once
#include "adjustments.h"
#include "file_types.h"
#include "geometry.h"

namespace tool {

// As the user says it; empty texts: not given.
struct RecipeOptions {
    std::string output; // otherwise what suits the source and the file type
    std::string debayer, matrix, flip;
    AdjustmentOptions adjustments;
    bool deinterlace = false, half = false;
};

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

// Throws UsageError.
Recipe recipeFor(const FrameFormat& frame, const RecipeOptions& options, FileType type);

// A remark on what the steps cost, or nothing.
std::string remark(const Recipe& recipe, const FrameFormat& frame);

// One picture, or one for each plane. Throws Refusal.
std::vector<Image> follow(const Recipe& recipe, const FrameFormat& frame, Bytes source);

// The last steps: halves, flips.
void finish(const Recipe& recipe, Image& image);

} // namespace tool
