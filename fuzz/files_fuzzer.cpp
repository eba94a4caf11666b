// What the converter reads: files with headers, padding and names, and dumps of which nothing is known. Frames are made
// into pictures.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "errors.h"
#include "frames/chart.h"
#include "frames/named.h"
#include "frames/pixel_formats.h"
#include "fuzz/choices.h"
#include "guesses.h"
#include "input.h"
#include "recipe.h"

namespace {

using fuzz::Choices;
namespace fs = std::filesystem;

const char* const names[] = {"a.pgm", "a.ppm", "a.pam", "a.npy", "a.tif", "a.png", "a_BayerRG12p_6x4.raw", "a.raw"};

// A folder of this process, where the file has one of the names.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("orvella-fuzz-" + std::to_string(::getpid()))) {
        fs::create_directories(path_);
    }
    ~Folder() {
        std::error_code none;
        fs::remove_all(path_, none);
    }
    fs::path write(const char* name, const std::string& content) const {
        std::ofstream(path_ / name, std::ios::binary | std::ios::trunc) << content;
        return path_ / name;
    }

private:
    fs::path path_;
};

std::string knownOrAnyText(Choices& choices, std::initializer_list<const char*> known) {
    if (choices.once(8)) return choices.ConsumeRandomLengthString(24);
    return known.begin()[choices.below(static_cast<std::uint32_t>(known.size()))];
}

tool::FrameOptions frameOptions(Choices& choices) {
    tool::FrameOptions options;
    options.format = knownOrAnyText(choices, {"", "", "Mono8", "BayerRG8", "Mono12p", "BayerGB10p", "BayerGR12Packed",
                                              "BayerBG16", "YUV411_8_UYYVYY", "Rgba8", "CYGM8", "0x01080009"});
    options.size = knownOrAnyText(choices, {"", "", "4x4", "6x4", "16x2", "5x3"});
    if (choices.once(4)) options.bitsUsed = choices.code(17);
    options.msbAligned = choices.once(4);
    options.bigEndian = choices.once(4);
    return options;
}

tool::RecipeOptions recipeOptions(Choices& choices) {
    tool::RecipeOptions options;
    options.output =
        knownOrAnyText(choices, {"", "", "MONO8", "BGR24", "MONO16", "BGR48", "RGBA32", "UYVY", "RGB-PLANES"});
    options.debayer = knownOrAnyText(choices, {"", "", "2x2", "3x3", "LCAA", "LCAAV", "YUV422"});
    options.matrix = knownOrAnyText(choices, {"", "", "identity", "1,0,0,0,2,0,0,0,-1"});
    options.flip = knownOrAnyText(choices, {"", "", "horizontal", "vertical", "both"});
    options.deinterlace = choices.once(8);
    options.half = choices.once(4);
    return options;
}

// Refusals are what strangers' files are to be answered with.
template <class Action> void mayRefuse(const Action& action) {
    try {
        action();
    } catch (const tool::Error&) {
    } catch (const tool::UsageError&) {
    }
}

void convert(const fs::path& path, Choices& choices) {
    const tool::FrameOptions options = frameOptions(choices);
    tool::Layout layout;
    if (choices.once(4)) layout.skip = choices.size();
    if (choices.once(4)) layout.stride = choices.size();
    if (choices.once(2)) layout.selection = tool::parseFrameRange(choices.ConsumeBool() ? "all" : "2-3");
    const tool::RecipeOptions how = recipeOptions(choices);
    const auto type = static_cast<tool::FileType>(choices.below(7));
    tool::Input frames(path, options, layout);
    static_cast<void>(frames.count());
    while (auto frame = frames.next()) {
        if (frame->size() > 1 << 14 || frames.number() > 3) break;
        tool::follow(tool::recipeFor(frames.frame(), how, type), frames.frame(), *std::move(frame));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    Choices choices(data, size);
    const char* const name = names[choices.below(std::size(names))];
    const std::uint32_t task = choices.below(4);
    if (task == 0) {
        const std::string text = choices.ConsumeRemainingBytesAsString();
        static_cast<void>(frames::named(text));
        static_cast<void>(frames::parseSize(text));
        if (!frames::findPixelFormat(text)) static_cast<void>(frames::hintFor(text));
        const tool::Bytes dump(text.begin(), text.end());
        mayRefuse([&] { static_cast<void>(tool::guessFrames(dump, 3)); });
        return 0;
    }
    // The options are chosen by the last bytes, the others are the file.
    const std::string content =
        choices.ConsumeBytesAsString(choices.remaining_bytes() - std::min<std::size_t>(choices.remaining_bytes(), 40));
    const fs::path path = folder.write(name, content);
    mayRefuse([&] { convert(path, choices); });
    return 0;
}
