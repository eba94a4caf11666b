// Where frames come from: files that hold one or several, with or without headers, and streams.
#pragma once
#include <memory>

#include "frame_options.h"
#include "picture_files.h"

namespace tool {

struct FrameRange { // from 1
    unsigned first = 1, last = 1;
};
constexpr unsigned endless = 0xFFFFFFFF;
FrameRange parseFrameRange(const std::string& text); // "3", "2-5" or "all"; throws UsageError

// How frames lie in a file without a header.
struct Layout {
    std::uint64_t skip = 0, stride = 0;  // bytes before the first frame, and from row to row; 0: as long as a row is
    std::optional<FrameRange> selection; // otherwise there must be exactly one frame
};

// Reads an input's frames one after the other.
class Input {
public:
    // What the options leave open is taken from the file's header or name. Throws Error, and UsageError if it is open
    // still.
    Input(const std::filesystem::path& path, const FrameOptions& options, const Layout& layout);

    const std::filesystem::path& path() const { return path_; }
    const FrameFormat& frame() const { return frame_; }
    bool hasSeveral() const { return layout_.selection && layout_.selection->first != layout_.selection->last; }
    std::optional<std::size_t> count() const; // of frames; unknown of streams

    // Nothing behind the last one. Throws Error.
    std::optional<Bytes> next();
    unsigned number() const { return number_; } // of the frame that was read last, from 1

private:
    bool hasPages() const { return header_ && header_->pages > 0; }
    std::optional<Bytes> nextPage();
    Bytes readOne();
    std::string fewerFrames() const;
    Bytes withoutPadding(const Bytes& padded) const;
    void checkSize();

    std::filesystem::path path_;
    Layout layout_;
    std::optional<FileHeader> header_;
    FrameFormat frame_;
    std::uint64_t bytes_, line_ = 0, stored_ = 0; // of a frame, a row, a frame in the file
    std::unique_ptr<InputFile> file_;
    unsigned number_ = 0;
};

// A directory's files that may be frames, sorted; other paths as they are.
std::vector<std::filesystem::path> withoutDirectories(const std::vector<std::filesystem::path>& paths);

} // namespace tool
