#include "session.h"

#include <algorithm>

#include "errors.h"
#include "fitting.h"

namespace web {

Stored storedBytes(const Options& options) {
    const tool::FrameFormat frame = options.frame.frame();
    constexpr std::uint64_t mostPixels = 1u << 28; // of 6 bytes each, in a memory of 32-bit addresses
    if (frame.size.pixels() > mostPixels)
        throw tool::UsageError(text(frame.size) + " is too large: at most " + std::to_string(mostPixels) +
                               " pixels fit here");
    const std::uint64_t bytes = tool::byteCount(frame), height = frame.size.height;
    if (options.stride == 0) return {bytes, bytes % height == 0 ? bytes / height : 0};
    if (bytes % height != 0)
        throw tool::UsageError("a stride is for rows of whole bytes, which " + text(frame) + " has not");
    if (options.stride < bytes / height)
        throw tool::UsageError("a row of " + text(frame) + " has " + std::to_string(bytes / height) +
                               " bytes, more than the stride");
    return {options.stride * height, bytes / height};
}

Bytes frameBytes(const Options& options, const std::uint8_t* data, std::size_t size) {
    const Stored stored = storedBytes(options);
    const tool::FrameFormat frame = options.frame.frame();
    const std::uint64_t needed = options.stride == 0 ? stored.frame : stored.frame - options.stride + stored.row;
    if (size < needed)
        throw tool::Error("expected " + std::to_string(needed) + " bytes for " + text(frame) + ", found " +
                          std::to_string(size) + tool::fitting(frame, needed, size));
    if (options.stride == 0) return {data, data + stored.frame};
    Bytes bytes;
    bytes.reserve(stored.row * frame.size.height);
    for (std::uint32_t y = 0; y < frame.size.height; ++y, data += options.stride)
        bytes.insert(bytes.end(), data, data + stored.row);
    return bytes;
}

const tool::LinearImage& Session::linear(const tool::DebayerMode& debayer) {
    const auto found = linear_.find(debayer.code);
    if (found != linear_.end()) return found->second;
    constexpr std::size_t sides = 2; // that are compared
    if (linear_.size() >= sides) linear_.clear();
    return linear_.emplace(debayer.code, tool::linearImage(frame_, bytes_, debayer)).first->second;
}

Session::Rendering Session::render(const tool::RecipeOptions& options) {
    tool::RecipeOptions shown = options;
    shown.output = frame_.pixels.samples == tool::Samples::grey ? "Mono8" : "RGB24";
    const tool::Recipe recipe = tool::recipeFor(frame_, shown, tool::FileType::png);
    if (!recipe.twoSteps) return {tool::follow(recipe, frame_, bytes_).front(), "", {}};
    tool::LinearImage image = linear(recipe.processing.debayer);
    const picture::Settings settings = recipe.adjustments.settingsFor(image, recipe.processing.matrix);
    picture::develop(image.samples, image.channels, settings);
    return {tool::imageOf(image, recipe.output), tool::remark(recipe, frame_), settings};
}

} // namespace web
