#include "input.h"

#include <algorithm>
#include <charconv>

#include "errors.h"
#include "fitting.h"
#include "frames/named.h"
#include "frames/names.h"
#include "transform.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

FrameFormat inHeader(const fs::path& path, const FrameOptions& options, FrameFormat frame) {
    if (!options.size.empty() && sizeNamed(options.size).pixels() != frame.size.pixels())
        throw Error(path.string() + " holds " + text(frame.size) + " pixels, not " + options.size);
    if (options.format.empty()) return frame;
    PixelFormat wanted = pixelFormatNamed(options.format);
    if (wanted.packing != frame.pixels.packing || isColour(wanted.samples) != isColour(frame.pixels.samples)) {
        throw Error(path.string() + " holds " + std::string(frame.pixels.name) + ", which cannot be " +
                    std::string(wanted.name));
    }
    wanted.bits = std::min(wanted.bits, frame.pixels.bits);
    frame.pixels = wanted;
    return frame;
}

FrameFormat frameOf(const fs::path& path, const FrameOptions& options, const std::optional<FileHeader>& header) {
    if (header) {
        const FrameFormat frame = inHeader(path, options, header->frame);
        FrameOptions rest = options;
        rest.bigEndian |= frame.bigEndian;
        return rest.frame(frame.pixels, frame.size);
    }
    const Named name = named(path.stem().string());
    const auto format = options.format.empty() ? name.format : pixelFormatNamed(options.format);
    const auto size = options.size.empty() ? name.size : sizeNamed(options.size);
    if (!format || !size) {
        if (std::error_code none; path != "-" && !fs::exists(path, none)) InputFile missing(path); // which says so
        throw UsageError("what is " + inputName(path) + "? Give its " +
                         (format ? ""
                          : size ? "pixel format (-f, --format)"
                                 : "pixel format (-f, --format) and ") +
                         (size ? "" : "size (-s, --size)") +
                         ", or a name that says it, like x_BayerRG12p_2448x2048.raw; 'orvella guess' proposes some");
    }
    return options.frame(*format, *size);
}

} // namespace

FrameRange parseFrameRange(const std::string& text) {
    if (text == "all") return {1, endless};
    FrameRange range{0, 0};
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, range.first);
    range.last = range.first;
    auto last = first;
    if (last.ptr != end && *last.ptr == '-') last = std::from_chars(last.ptr + 1, end, range.last);
    if (first.ec == std::errc{} && last.ec == std::errc{} && last.ptr == end && range.first >= 1 &&
        range.last >= range.first)
        return range;
    throw UsageError("'" + text + "' are no frames; give a number from 1 up, a range like 2-5, or all");
}

Input::Input(const fs::path& path, const FrameOptions& options, const Layout& layout)
    : path_(path), layout_(layout), header_(readHeader(path)), frame_(frameOf(path, options, header_)),
      bytes_(byteCount(frame_)), stored_(bytes_) {
    if (header_) layout_.skip += header_->offset;
    if (layout_.stride == 0) return;
    if (bytes_ % frame_.size.height != 0)
        throw UsageError("--stride is for rows of whole bytes, which " + text(frame_) + " has not");
    line_ = bytes_ / frame_.size.height;
    if (layout_.stride < line_)
        throw UsageError("a row of " + text(frame_) + " has " + std::to_string(line_) + " bytes, more than --stride");
    stored_ = layout_.stride * frame_.size.height;
}

std::optional<std::size_t> Input::count() const {
    if (!hasSeveral()) return 1;
    const auto& [first, last] = *layout_.selection;
    if (hasPages()) return std::min(last, header_->pages) - std::min(first, header_->pages + 1) + 1;
    if (last != endless) return last - first + 1;
    std::error_code error;
    const std::uint64_t size = path_ == "-" ? 0 : fs::file_size(path_, error);
    if (size <= layout_.skip || error) return {};
    return (size - layout_.skip + layout_.stride - line_) / stored_;
}

// Only files without padding and without a choice of frames must have exactly so many bytes.
void Input::checkSize() {
    const auto size = file_->size();
    if (!size || layout_.selection || *size == layout_.skip + stored_) return;
    if (layout_.stride > 0 && *size == layout_.skip + stored_ - (layout_.stride - line_)) return;
    throw Error(file_->name() + ": expected " + std::to_string(layout_.skip + stored_) + " bytes for " + text(frame_) +
                ", found " + std::to_string(*size) + fitting(frame_, stored_, *size - std::min(*size, layout_.skip)));
}

Bytes Input::withoutPadding(const Bytes& padded) const {
    if (layout_.stride == 0) return padded;
    Bytes dense(bytes_);
    for (std::uint32_t y = 0; y < frame_.size.height; ++y)
        std::copy_n(padded.data() + y * layout_.stride, line_, dense.data() + y * line_);
    return dense;
}

// ", but 2", if that is known.
std::string Input::fewerFrames() const {
    const auto size = file_->size();
    return size ? ", but " + std::to_string((*size - std::min(*size, layout_.skip)) / stored_) : "";
}

// Empty behind the last one.
Bytes Input::readOne() {
    Bytes stored = file_->read(stored_);
    const std::uint64_t needed = layout_.stride == 0 ? stored_ : stored_ - (layout_.stride - line_);
    const bool end = stored.empty() && layout_.selection && number_ >= layout_.selection->first;
    if (!end && stored.size() < needed) {
        if (stored.empty() && layout_.selection && layout_.selection->first > 1)
            throw Error(file_->name() + " has no frame " + std::to_string(layout_.selection->first) + fewerFrames());
        throw Error(file_->name() + ": expected " + std::to_string(needed) + " bytes for " + text(frame_) + ", found " +
                    std::to_string(stored.size()));
    }
    return layout_.stride == 0 || end ? std::move(stored) : withoutPadding(stored);
}

std::optional<Bytes> Input::nextPage() {
    const FrameRange range = layout_.selection.value_or(FrameRange{});
    if (!layout_.selection && header_->pages > 1)
        throw Error(path_.string() + " has " + std::to_string(header_->pages) +
                    " pages; choose some (--frame N|A-B|all)");
    number_ = std::max(number_ + 1, range.first);
    if (number_ <= header_->pages) return readPage(path_, number_);
    if (number_ == range.first) throw Error(path_.string() + " has no page " + std::to_string(number_));
    if (range.last != endless) throw Error(path_.string() + " ends with page " + std::to_string(header_->pages));
    number_ = range.last;
    return {};
}

std::optional<Bytes> Input::next() {
    const FrameRange range = layout_.selection.value_or(FrameRange{});
    if (number_ >= range.last) {
        file_.reset();
        return {};
    }
    if (hasPages()) return nextPage();
    if (!file_) {
        file_ = std::make_unique<InputFile>(path_);
        checkSize();
        file_->skip(layout_.skip + (range.first - 1) * stored_);
        number_ = range.first - 1;
    }
    Bytes frame = readOne();
    if (frame.empty()) {
        file_.reset();
        number_ = range.last;
        return {};
    }
    if (!layout_.selection && !file_->read(1).empty())
        throw Error(file_->name() + ": expected " + std::to_string(stored_) + " bytes for " + text(frame_) +
                    ", found more");
    ++number_;
    return frame;
}

std::vector<fs::path> withoutDirectories(const std::vector<fs::path>& paths) {
    constexpr std::string_view notFrames[] = {".png", ".txt", ".md", ".json", ".xml", ".csv", ".y4m"};
    std::vector<fs::path> files;
    for (const fs::path& path : paths) {
        std::error_code none;
        if (path == "-" || !fs::is_directory(path, none)) {
            files.push_back(path);
            continue;
        }
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(path)) {
            const std::string ending = entry.path().extension().string();
            const bool other = std::ranges::any_of(notFrames, [&](auto known) { return sameName(known, ending); });
            if (entry.is_regular_file() && !other && !entry.path().filename().string().starts_with('.'))
                found.push_back(entry.path());
        }
        std::ranges::sort(found);
        if (found.empty()) throw Error("there are no frames in the directory " + path.string());
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

} // namespace tool
