#include "recipe.h"

#include <utility>

#include "errors.h"
#include "offers.h"
#include "planes.h"

namespace tool {

namespace {

Processing processingOf(const RecipeOptions& options, const FrameFormat& frame) {
    Processing processing;
    if (!options.debayer.empty()) {
        if (!isMosaic(frame.pixels.samples))
            throw UsageError("--debayer is for Bayer mosaics, not for " + std::string(frame.pixels.name));
        processing.debayer = debayerModeNamed(options.debayer);
    }
    if (!options.matrix.empty()) processing.matrix = parseMatrix(options.matrix);
    return processing;
}

bool isOfferedAtAll(const FrameFormat& frame, const Processing& processing) {
    for (const Output& output : outputs())
        if (isOffered(frame, output, processing)) return true;
    return false;
}

// Deep colours; a mosaic's matrix, mode or depth that the library has for other mosaics, or other outputs, only. No output:
// what suits.
bool needsTwoSteps(const FrameFormat& frame, const Processing& processing, const Output* output) {
    const bool deep = output && shapeOf(*output).bits == 16 && shapeOf(*output).channels == 3;
    const bool special =
        processing.matrix || processing.debayer.code != OrvDebayerMode2x2 || (deep && frame.pixels.bits > 8);
    const bool both = processing.matrix && processing.debayer.code != OrvDebayerMode2x2;
    if (isDeepColour(frame.pixels)) return true;
    if (!isMosaic(frame.pixels.samples) || !special) return false;
    if (both) return true;
    const bool pixels = output && output->planes.empty() && output->code != OrvOutputYuv422;
    return pixels ? !isOffered(frame, *output, processing) : !isOfferedAtAll(frame, processing);
}

Output chooseOutput(const FrameFormat& frame, const Recipe& recipe) {
    const bool deep = frame.pixels.bits > 8 && recipe.processing.debayer.code == OrvDebayerMode2x2;
    if (!recipe.twoSteps || recipe.type == FileType::y4m) return suitableOutput(frame, recipe.type, recipe.processing);
    if (recipe.adjustments.any() || !deep || recipe.type == FileType::pgm) return suitableOutput(frame, recipe.type);
    return outputNamed(isDeepColour(frame.pixels) ? "RGB48" : "BGR48");
}

std::vector<Image> makeImages(const Recipe& recipe, const FrameFormat& frame, Bytes source) {
    const bool planes = !recipe.output.planes.empty();
    if (recipe.twoSteps) {
        LinearImage linear = linearImage(frame, source, recipe.processing.debayer);
        recipe.adjustments.apply(linear, recipe.processing.matrix);
        if (!planes) return {imageOf(linear, recipe.output)};
        return convertToPlanes({*findPixelFormat("Rgb8"), frame.size}, imageOf(linear, outputNamed("RGB24")).bytes,
                               recipe.output);
    }
    if (planes) return convertToPlanes(frame, std::move(source), recipe.output, recipe.processing);
    return {convert(frame, std::move(source), recipe.output, recipe.processing)};
}

} // namespace

Recipe recipeFor(const FrameFormat& frame, const RecipeOptions& options, FileType type) {
    Recipe recipe{.processing = processingOf(options, frame),
                  .adjustments = Adjustments(options.adjustments, frame),
                  .output = {},
                  .type = type};
    const Output* const wanted = options.output.empty() ? nullptr : &outputNamed(options.output);
    recipe.twoSteps = recipe.adjustments.any() || needsTwoSteps(frame, recipe.processing, wanted);
    recipe.output = wanted ? *wanted : chooseOutput(frame, recipe);
    requireHolds(recipe.type, recipe.output);
    if (recipe.twoSteps && recipe.output.code == OrvOutputYuv422) {
        throw UsageError("YUV422 is not made of adjusted frames, nor of deep mosaics or colours; choose another output "
                         "(-t), like RGB24");
    }
    recipe.deinterlace = options.deinterlace;
    if (recipe.deinterlace && frame.pixels.samples == Samples::cygm)
        throw UsageError("--deinterlace is not for Cygm8, whose two fields are taken apart as they are");
    recipe.half = options.half;
    if (recipe.half) requireHalves(recipe.output);
    recipe.flip = options.flip.empty() ? Flip::none : flipNamed(options.flip);
    requireFlips(recipe.flip, recipe.output);
    return recipe;
}

std::string remark(const Recipe& recipe, const FrameFormat& frame) {
    return recipe.twoSteps ? reduction(frame, recipe.processing.debayer) : "";
}

std::vector<Image> follow(const Recipe& recipe, const FrameFormat& frame, Bytes source) {
    if (recipe.deinterlace) weaveFields(source, frame);
    std::vector<Image> images = makeImages(recipe, frame, std::move(source));
    for (Image& image : images) finish(recipe, image);
    return images;
}

void finish(const Recipe& recipe, Image& image) {
    if (recipe.half) halveImage(image);
    flipImage(image, recipe.flip);
}

} // namespace tool
