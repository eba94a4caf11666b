#include "geometry.h"

#include <optional>

#include "errors.h"
#include "frames/names.h"

namespace tool {

namespace {

// How the library calls pixels of this size; nothing for those that it cannot move.
std::optional<std::uint32_t> colourCoding(const Output& output) {
    constexpr std::uint32_t mono8 = 0, rgb8 = 4, mono16 = 5, rgb16 = 6;
    switch (output.code) {
    case OrvOutputMono8:
    case OrvOutputMono8Rec709: return mono8;
    case OrvOutputBgr24:
    case OrvOutputRgb24: return rgb8;
    case OrvOutputMono16:
    case OrvOutputMono16Rec709: return mono16;
    case OrvOutputBgr48:
    case OrvOutputRgb48: return rgb16;
    default: return {};
    }
}

void require(OrvErrorType code, const std::string& what, const std::string& needs) {
    if (code == OrvErrorSuccess) return;
    throw Refusal("cannot " + what + ": it needs " + needs + " (" + std::to_string(code) + ")");
}

} // namespace

Flip flipNamed(const std::string& name) {
    if (sameName(name, "h")) return Flip::horizontal;
    if (sameName(name, "v")) return Flip::vertical;
    if (name == "180") return Flip::both;
    throw UsageError("unknown flip '" + name + "'; known: h, v, 180");
}

void requireFlips(Flip flip, const Output& output) {
    if (flip == Flip::none || flip == Flip::vertical || colourCoding(output)) return;
    throw UsageError("only --flip v is offered for " + std::string(output.names[0]) +
                     "; choose another output (-t), like RGB24");
}

void flipImage(Image& image, Flip flip) {
    if (flip == Flip::none) return;
    const auto [width, height] = image.size;
    const auto lineLength = static_cast<std::uint32_t>(image.bytes.size() / height);
    const OrvErrorType code =
        flip == Flip::vertical
            ? OrvFlipVertical(image.bytes.data(), lineLength, height)
            : OrvFlip(image.bytes.data(), width, height, static_cast<int>(flip), colourCoding(image.output).value());
    require(code, "flip a picture of " + text(image.size), "at least 2 lines");
}

void weaveFields(Bytes& source, const FrameFormat& frame) {
    FrameFormat lines = frame;
    lines.size.height = 8;
    const std::uint64_t bitsPerLine = byteCount(lines);
    const std::string what = "weave the fields of " + text(frame);
    if (bitsPerLine % 8 != 0) throw Refusal("cannot " + what + ": its lines are not whole bytes");
    // In place, as from a buffer of their own the library takes fields of an odd line length from a wrong place.
    const auto lineLength = static_cast<std::uint32_t>(bitsPerLine / 8);
    require(OrvInterlacedToProgressive(source.data(), source.data(), lineLength, frame.size.height), what,
            "an even height");
}

} // namespace tool
