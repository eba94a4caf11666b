#include "frame.h"

#include <charconv>

#include "errors.h"

namespace tool {

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

Size parseSize(const std::string& text) {
    Size size;
    std::string_view rest = text;
    const bool valid = takeSide(rest, size.width) && (rest.starts_with('x') || rest.starts_with('X')) &&
                       (rest.remove_prefix(1), takeSide(rest, size.height)) && rest.empty();
    if (!valid) {
        throw UsageError("'" + text + "' is no size; give width and height in pixels, each from 1 to " +
                         std::to_string(longestSide) + ", like 2448x2048");
    }
    return size;
}

std::string text(const FrameFormat& frame) {
    std::string details;
    const auto add = [&](const std::string& detail) { details += (details.empty() ? " (" : ", ") + detail; };
    if (frame.pixels.bits != pixelFormatNamed(frame.pixels.name).bits)
        add(std::to_string(frame.pixels.bits) + " bits used");
    if (frame.msbAligned) add("MSB-aligned");
    if (frame.bigEndian) add("big-endian");
    return std::string(frame.pixels.name) + details + (details.empty() ? "" : ")") + " at " + text(frame.size);
}

} // namespace tool
