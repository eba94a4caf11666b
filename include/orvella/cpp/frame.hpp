// Frames, regions of them, and pictures: where pixels lie, and whether they lie in the memory that was given.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <ranges>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include "orvella/cpp/formats.hpp"
#include "orvella/cpp/result.hpp"

namespace orvella {

// Bytes from line to line, at least those of a line. Negative: the first line is the last one in memory. Nothing: line
// follows line without padding (and in bit-packed formats may begin within a byte).
using Stride = std::optional<std::ptrdiff_t>;

enum class Flip { Horizontal = 1, Vertical = 2, Both = 3 };

namespace detail {

// Memory of any plain elements: vectors and arrays of bytes or words, spans, strings.
template <class Memory>
concept Contiguous = std::ranges::contiguous_range<Memory> && std::ranges::sized_range<Memory> &&
    std::is_trivially_copyable_v<std::ranges::range_value_t<Memory>>;

template <Contiguous Memory> std::span<const std::byte> asBytes(const Memory& memory) {
    return std::as_bytes(std::span(std::ranges::data(memory), std::ranges::size(memory)));
}

// Lines in memory that have been checked against what was given.
template <class Byte> struct Lines {
    Byte* first = nullptr;
    std::ptrdiff_t step = 0;                          // to the next line
    std::size_t length = 0;                           // bytes of a line
    bool areDense = false;                            // nothing between them
    const std::byte *begin = nullptr, *end = nullptr; // of all of them

    Byte* at(std::int64_t y) const { return first + step * static_cast<std::ptrdiff_t>(y); }
};

// Where the lines of an image lie in `memory`; what names the image in a refusal.
template <class Byte>
Result place(std::span<Byte> memory, Size size, unsigned bits, Stride stride, std::string_view what,
             Lines<Byte>& lines) {
    constexpr std::int64_t most = 0xFFFFFFFF;
    const auto name = static_cast<int>(what.size());
    if (size.width < 1 || size.height < 1 || size.width > most || size.height > most)
        return Result::refused(OrvErrorBadParameter, "%.*s of %lldx%lld: sizes are 1 to 4294967295", name, what.data(),
                               static_cast<long long>(size.width), static_cast<long long>(size.height));
    const auto width = static_cast<std::uint64_t>(size.width), height = static_cast<std::uint64_t>(size.height);
    const std::uint64_t length = bytesOf(width, bits);
    std::uint64_t distance = length, needed = bytesOf(times(width, height), bits);
    if (stride) {
        distance = *stride < 0 ? 0 - static_cast<std::uint64_t>(*stride) : static_cast<std::uint64_t>(*stride);
        if (distance < length)
            return Result::refused(OrvErrorBadParameter, "a stride of %lld bytes is less than a line of %.*s: %llu",
                                   static_cast<long long>(*stride), name, what.data(),
                                   static_cast<unsigned long long>(length));
        needed = plus(times(height - 1, distance), length);
    }
    if (needed > memory.size())
        return Result::refused(OrvErrorBadParameter, "%.*s of %lldx%lld%s needs %llu bytes, but %zu are given", name,
                               what.data(), static_cast<long long>(size.width), static_cast<long long>(size.height),
                               stride ? " with this stride" : "", static_cast<unsigned long long>(needed),
                               memory.size());
    if (height == 1) distance = length; // of a single line any stride will do
    lines.length = static_cast<std::size_t>(length);
    lines.step = static_cast<std::ptrdiff_t>(distance);
    lines.begin = memory.data();
    lines.end = lines.begin + needed;
    lines.first = memory.data();
    if (height > 1 && stride && *stride < 0) {
        lines.first += static_cast<std::ptrdiff_t>(height - 1) * lines.step;
        lines.step = -lines.step;
    }
    lines.areDense = lines.step == static_cast<std::ptrdiff_t>(length) && (!stride || width * bits % 8 == 0);
    return {};
}

} // namespace detail

// The raw pixels of a camera, in memory that stays the caller's. Bytes behind the image are ignored. Nothing is checked
// here but the name of a format; whatever uses the frame checks it first.
class Frame {
public:
    template <detail::Contiguous Memory>
    Frame(const Memory& memory, PixelFormat format, Size size, Stride stride = std::nullopt)
        : bytes_(detail::asBytes(memory)), format_(format), size_(size), isPadded_(stride.has_value()),
          step_(stride.value_or(0)) {}
    template <detail::Contiguous Memory>
    Frame(const Memory& memory, std::string_view format, Size size, Stride stride = std::nullopt)
        : Frame(memory, named(format), size, stride) {}
    Frame(const void* data, std::size_t length, PixelFormat format, Size size, Stride stride = std::nullopt)
        : Frame(std::span(static_cast<const std::byte*>(data), length), format, size, stride) {}

    // A frame that LCAA, LCAAV and YUV422 may overwrite, which spares them a copy if its lines lie without padding.
    template <detail::Contiguous Memory>
    requires(!std::is_const_v<std::remove_reference_t<std::ranges::range_reference_t<Memory>>>) static Frame
        overwritable(Memory&& memory, PixelFormat format, Size size, Stride stride = std::nullopt) {
        Frame frame(memory, format, size, stride);
        frame.isOverwritable_ = true;
        return frame;
    }

    std::span<const std::byte> bytes() const { return bytes_; }
    PixelFormat format() const { return format_; }
    Size size() const { return size_; }
    Stride stride() const { return isPadded_ ? Stride(step_) : std::nullopt; }
    bool isMirrored() const { return isMirrored_; } // lines are read from right to left
    bool isOverwritable() const { return isOverwritable_; }

private:
    friend Result tryCrop(const Frame&, std::int64_t, std::int64_t, Size, Frame&);
    friend Result tryFlip(const Frame&, Flip, Frame&);

    static PixelFormat named(std::string_view name) {
        if (const auto format = find(name)) return *format;
        throw Error(Result::refused(OrvErrorBadParameter, "'%.*s' is not the name of a pixel format",
                                    static_cast<int>(name.size() < 60 ? name.size() : 60), name.data()));
    }

    std::span<const std::byte> bytes_;
    PixelFormat format_;
    Size size_;
    bool isPadded_, isMirrored_ = false, isOverwritable_ = false;
    std::ptrdiff_t step_; // of padded lines
};

namespace detail {

// The rules of frames: a known format, lines that lie in the given bytes, and that begin where they can be found.
inline Result place(const Frame& frame, Lines<const std::byte>& lines) {
    const FormatInfo& info = infoOf(frame.format());
    if (info.bits() == 0)
        return Result::refused(OrvErrorBadParameter, "0x%08X is not the code of a pixel format",
                               static_cast<unsigned>(frame.format()));
    if (Result refusal = place(frame.bytes(), frame.size(), info.bits(), frame.stride(), info.name, lines); !refusal)
        return refusal;
    const bool isStandalone = info.isMosaic() || frame.isMirrored() || !lines.areDense;
    if (isStandalone && frame.size().width % info.group() != 0)
        return Result::refused(OrvErrorBadParameter,
                               "%.*s: lines %s, so the width must be a multiple of %u, and %lld is not",
                               static_cast<int>(info.name.size()), info.name.data(),
                               info.bits() % 8 == 0 ? "hold whole groups of pixels" : "begin and end on whole bytes",
                               info.group(), static_cast<long long>(frame.size().width));
    return {};
}

} // namespace detail

// A region as a frame of its own: its border is the image's border to a demosaic, and the format has the phase of its
// corner, wherever that lies. Bit-packed formats, 4:1:1 and 4:2:2 are cut between their groups of pixels.
inline Result tryCrop(const Frame& frame, std::int64_t x, std::int64_t y, Size size, Frame& region) {
    detail::Lines<const std::byte> lines;
    if (Result refusal = detail::place(frame, lines); !refusal) return refusal;
    const Size whole = frame.size();
    if (x < 0 || y < 0 || size.width < 1 || size.height < 1 || x > whole.width - size.width ||
        y > whole.height - size.height)
        return Result::refused(OrvErrorBadParameter, "a region of %lldx%lld at (%lld, %lld) is not inside %lldx%lld",
                               static_cast<long long>(size.width), static_cast<long long>(size.height),
                               static_cast<long long>(x), static_cast<long long>(y),
                               static_cast<long long>(whole.width), static_cast<long long>(whole.height));
    const FormatInfo& info = infoOf(frame.format());
    const std::int64_t group = info.group();
    if (x % group != 0 || size.width % group != 0 || whole.width % group != 0)
        return Result::refused(OrvErrorBadParameter,
                               "%.*s shares bytes or colour between %lld pixels: x and both widths must be multiples",
                               static_cast<int>(info.name.size()), info.name.data(), static_cast<long long>(group));
    const std::int64_t left = frame.isMirrored_ ? whole.width - x - size.width : x;
    const std::byte* const first = lines.at(y) + detail::bytesOf(static_cast<std::uint64_t>(left), info.bits());
    const std::byte* const last = first + lines.step * static_cast<std::ptrdiff_t>(size.height - 1);
    const std::size_t length = detail::bytesOf(static_cast<std::uint64_t>(size.width), info.bits());
    Frame result = frame;
    result.bytes_ = lines.step < 0 ? std::span(last, first + length) : std::span(first, last + length);
    result.format_ = phase(frame.format(), x, y);
    result.size_ = size;
    result.isPadded_ = true;
    result.step_ = lines.step;
    result.isOverwritable_ = false;
    region = result;
    return {};
}

// The frame seen in a mirror, upside down or turned by 180 degrees, with the phase that its mosaic has then. Nothing is
// moved: a conversion reads it so.
inline Result tryFlip(const Frame& frame, Flip flip, Frame& flipped) {
    detail::Lines<const std::byte> lines;
    if (Result refusal = detail::place(frame, lines); !refusal) return refusal;
    const FormatInfo& info = infoOf(frame.format());
    if (frame.size().width % info.group() != 0)
        return Result::refused(
            OrvErrorBadParameter,
            "%.*s shares bytes or colour between %u pixels: to be flipped, the width must be a multiple",
            static_cast<int>(info.name.size()), info.name.data(), info.group());
    const bool isHorizontal = flip != Flip::Vertical, isVertical = flip != Flip::Horizontal;
    Frame result = frame;
    result.format_ =
        phase(frame.format(), isHorizontal ? frame.size().width - 1 : 0, isVertical ? frame.size().height - 1 : 0);
    result.isMirrored_ = frame.isMirrored_ != isHorizontal;
    result.isPadded_ = true;
    result.step_ = isVertical ? -lines.step : lines.step;
    result.isOverwritable_ = false;
    flipped = result;
    return {};
}

inline Frame crop(const Frame& frame, std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height) {
    Frame region = frame;
    detail::orThrow(tryCrop(frame, x, y, {width, height}, region));
    return region;
}

inline Frame flipped(const Frame& frame, Flip flip) {
    Frame result = frame;
    detail::orThrow(tryFlip(frame, flip, result));
    return result;
}

// What a frame becomes: in memory of its own (zeros at first), or in the caller's.
class Picture {
public:
    Picture(Output output, Size size) : output_(output), size_(size) {
        const std::uint64_t length = imageBytes(output, size);
        if (length == 0 || size.width > 0xFFFFFFFF || size.height > 0xFFFFFFFF)
            throw Error(Result::refused(OrvErrorBadParameter, "a picture of %lldx%lld: sizes are 1 to 4294967295",
                                        static_cast<long long>(size.width), static_cast<long long>(size.height)));
        if (length <= static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()))
            owned_.reset(static_cast<std::byte*>(std::calloc(static_cast<std::size_t>(length), 1)));
        if (!owned_) throw Error(Result(OrvErrorResources));
        bytes_ = {owned_.get(), static_cast<std::size_t>(length)};
    }
    // In the caller's memory, whose size is checked by whatever uses the picture.
    template <detail::Contiguous Memory>
    requires(!std::is_const_v<std::remove_reference_t<std::ranges::range_reference_t<Memory>>>)
        Picture(Memory&& memory, Output output, Size size, Stride stride = std::nullopt)
        : bytes_(std::as_writable_bytes(std::span(std::ranges::data(memory), std::ranges::size(memory)))),
          output_(output), size_(size), isPadded_(stride.has_value()), step_(stride.value_or(0)) {}
    Picture(void* data, std::size_t length, Output output, Size size, Stride stride = std::nullopt)
        : Picture(std::span(static_cast<std::byte*>(data), length), output, size, stride) {}

    Picture(Picture&& other) noexcept
        : owned_(std::move(other.owned_)), bytes_(std::exchange(other.bytes_, {})), output_(other.output_),
          size_(other.size_), isPadded_(other.isPadded_), step_(other.step_) {}
    Picture& operator=(Picture&& other) noexcept {
        owned_ = std::move(other.owned_);
        bytes_ = std::exchange(other.bytes_, {}); // what is left of the other is refused, not followed
        output_ = other.output_;
        size_ = other.size_;
        isPadded_ = other.isPadded_;
        step_ = other.step_;
        return *this;
    }
    ~Picture() = default;

    std::span<std::byte> bytes() { return bytes_; }
    std::span<const std::byte> bytes() const { return bytes_; }
    Output output() const { return output_; }
    Size size() const { return size_; }
    Stride stride() const { return isPadded_ ? Stride(step_) : std::nullopt; }

    // The pixels of a line as bytes or as words.
    template <class Element = std::uint8_t> std::span<Element> line(std::int64_t y) {
        detail::Lines<std::byte> lines;
        detail::orThrow(place(lines));
        if (y < 0 || y >= size_.height || lines.length % sizeof(Element) != 0 ||
            reinterpret_cast<std::uintptr_t>(lines.at(y)) % alignof(Element) != 0)
            throw Error(Result::refused(OrvErrorBadParameter,
                                        "a picture of %lld lines has no line %lld of such elements",
                                        static_cast<long long>(size_.height), static_cast<long long>(y)));
        return {reinterpret_cast<Element*>(lines.at(y)), lines.length / sizeof(Element)};
    }

    Result place(detail::Lines<std::byte>& lines) const {
        if (bitsPerPixel(output_) == 0)
            return Result::refused(OrvErrorBadParameter, "%u is not an output", static_cast<unsigned>(output_));
        return detail::place(bytes_, size_, bitsPerPixel(output_), stride(), nameOf(output_), lines);
    }

private:
    struct Free {
        void operator()(std::byte* memory) const { std::free(memory); }
    };

    std::unique_ptr<std::byte, Free> owned_;
    std::span<std::byte> bytes_;
    Output output_;
    Size size_;
    bool isPadded_ = false;
    std::ptrdiff_t step_ = 0; // of padded lines
};

} // namespace orvella
