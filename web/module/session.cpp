#include "session.h"

#include <algorithm>

#include "errors.h"
#include "fitting.h"

namespace web {

namespace {

// Grey or R G B as R G B and 255.
tool::Image coloured(tool::Image image) {
    const unsigned channels = tool::shapeOf(image.output).channels;
    if (channels == 4) return image;
    const std::size_t pixels = image.size.pixels(), green = channels == 3 ? 1 : 0, blue = channels == 3 ? 2 : 0;
    Bytes rgba(pixels * 4, 0xFF);
    const std::uint8_t* from = image.bytes.data();
    for (std::size_t i = 0; i < pixels; ++i, from += channels) {
        rgba[4 * i] = from[0];
        rgba[4 * i + 1] = from[green];
        rgba[4 * i + 2] = from[blue];
    }
    return {tool::outputNamed("RGBA32"), image.size, std::move(rgba)};
}

} // namespace

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

const tool::LinearImage& Session::linear(const tool::DebayerMode& debayer, bool deinterlace) {
    const std::pair how(debayer.code, deinterlace);
    const auto found = linear_.find(how);
    if (found != linear_.end()) return found->second;
    constexpr std::size_t sides = 2; // that are compared
    if (linear_.size() >= sides) linear_.clear();
    Bytes woven;
    if (deinterlace) tool::weaveFields(woven = bytes_, frame_);
    return linear_.emplace(how, tool::linearImage(frame_, deinterlace ? woven : bytes_, debayer)).first->second;
}

Session::Rendering Session::render(const tool::RecipeOptions& options, Bytes memory) {
    // RGBA32 at once is quickest. It is not always what Mono8 is, or RGB24 with a matrix: the library rounds the one and cuts
    // the other. And it flips no RGBA32.
    const bool grey = frame_.pixels.samples == tool::Samples::grey, inPlace = options.flip.empty() && !options.half;
    tool::RecipeOptions shown = options;
    shown.output = grey ? "Mono8" : inPlace && options.matrix.empty() ? "RGBA32" : "RGB24";
    const tool::Recipe recipe = tool::recipeFor(frame_, shown, tool::FileType::png);
    if (!recipe.twoSteps) {
        Bytes().swap(memory);
        return {coloured(std::move(tool::follow(recipe, frame_, bytes_).front())), "", {}};
    }
    const tool::LinearImage& image = linear(recipe.processing.debayer, recipe.deinterlace);
    const picture::Settings settings = recipe.adjustments.settingsFor(image, recipe.processing.matrix);
    Rendering rendering{{}, tool::remark(recipe, frame_), settings};
    if (inPlace) {
        memory.resize(image.size.pixels() * 4);
        rendering.image = {tool::outputNamed("RGBA32"), image.size, std::move(memory)};
        picture::developForDisplay(image.samples, image.channels, settings, rendering.image.bytes.data());
    } else {
        tool::LinearImage developed = image;
        picture::develop(developed.samples, developed.channels, settings);
        rendering.image = tool::imageOf(developed, recipe.output);
        tool::finish(recipe, rendering.image);
        rendering.image = coloured(std::move(rendering.image));
    }
    return rendering;
}

} // namespace web
