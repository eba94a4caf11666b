// One frame that is looked at, in changing ways.
#pragma once
#include <map>

#include "options.h"

namespace web {

using Bytes = std::vector<std::uint8_t>;

// How many bytes a frame has where it is stored, and each of its rows, if they are whole bytes.
struct Stored {
    std::uint64_t frame = 0, row = 0;
};
Stored storedBytes(const Options& options); // throws UsageError

// The frame's bytes without padding. Throws Error if there are too few.
Bytes frameBytes(const Options& options, const std::uint8_t* data, std::size_t size);

class Session {
public:
    void load(const Options& options, Bytes bytes) {
        frame_ = options.frame.frame();
        bytes_ = std::move(bytes);
        linear_.clear();
    }

    struct Rendering {
        tool::Image image;
        std::string remark;
        std::optional<picture::Settings> settings; // if the picture was developed
    };
    // A picture of the frame in RGBA32, as the converter makes it, in `memory` if that suits. Throws UsageError, Refusal.
    Rendering render(const tool::RecipeOptions& options, Bytes memory);

    const tool::FrameFormat& frame() const { return frame_; }
    const Bytes& bytes() const { return bytes_; }

private:
    const tool::LinearImage& linear(const tool::DebayerMode& debayer, bool deinterlace);

    tool::FrameFormat frame_;
    Bytes bytes_;
    // Those that were needed, to develop them again and again.
    std::map<std::pair<OrvDebayerMode, bool>, tool::LinearImage> linear_;
};

} // namespace web
