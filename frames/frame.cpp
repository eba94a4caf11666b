#include "frames/frame.h"

#include <charconv>

namespace frames {

namespace {

constexpr std::uint32_t longestSide = 1'000'000;

// Reads a side's digits from the beginning of the text and removes them.
bool takeSide(std::string_view& text, std::uint32_t& side) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc{} && side >= 1 && side <= longestSide;
}

} // namespace

std::string text(Size size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

std::optional<Size> parseSize(std::string_view text) {
    Size size;
    const bool valid = takeSide(text, size.width) && (text.starts_with('x') || text.starts_with('X')) &&
                       (text.remove_prefix(1), takeSide(text, size.height)) && text.empty();
    return valid ? std::optional(size) : std::nullopt;
}

std::string text(const FrameFormat& frame) {
    std::string details;
    const auto add = [&](const std::string& detail) { details += (details.empty() ? " (" : ", ") + detail; };
    if (frame.pixels.bits != findPixelFormat(frame.pixels.name)->bits)
        add(std::to_string(frame.pixels.bits) + " bits used");
    if (frame.msbAligned) add("MSB-aligned");
    if (frame.bigEndian) add("big-endian");
    return std::string(frame.pixels.name) + details + (details.empty() ? "" : ")") + " at " + text(frame.size);
}

} // namespace frames
