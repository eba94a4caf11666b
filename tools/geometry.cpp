#include "geometry.h"

#include <algorithm>
#include <optional>
#include <utility>

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

// Clockwise, or the other way.
void turnImage(Image& image, bool clockwise) {
    const auto [width, height] = image.size;
    const std::size_t pixel = image.bytes.size() / image.size.pixels();
    Bytes turned(image.bytes.size());
    std::uint8_t* to = turned.data();
    for (std::uint32_t x = 0; x < width; ++x) {
        for (std::uint32_t y = 0; y < height; ++y, to += pixel) {
            const std::size_t fromX = clockwise ? x : width - 1 - x, fromY = clockwise ? height - 1 - y : y;
            std::copy_n(&image.bytes[(fromY * width + fromX) * pixel], pixel, to);
        }
    }
    image.size = {height, width};
    image.bytes = std::move(turned);
}

bool isDeep(const Output& output) {
    return output.code == OrvOutputMono16 || output.code == OrvOutputMono16Rec709 || output.code == OrvOutputBgr48 ||
           output.code == OrvOutputRgb48;
}

} // namespace

Flip flipNamed(const std::string& name) {
    if (sameName(name, "h")) return Flip::horizontal;
    if (sameName(name, "v")) return Flip::vertical;
    if (name == "180") return Flip::both;
    if (name == "90") return Flip::quarter;
    if (name == "270") return Flip::threeQuarters;
    throw UsageError("unknown flip '" + name + "'; known: h, v, 90, 180, 270");
}

void requireFlips(Flip flip, const Output& output) {
    const bool byPixels = flip == Flip::quarter || flip == Flip::threeQuarters;
    if (flip == Flip::none || flip == Flip::vertical || colourCoding(output)) return;
    if (byPixels && output.code != OrvOutputYuv422) return;
    throw UsageError("only --flip v is offered for " + std::string(output.names[0]) +
                     "; choose another output (-t), like RGB24");
}

void flipImage(Image& image, Flip flip) {
    if (flip == Flip::none) return;
    if (flip == Flip::quarter || flip == Flip::threeQuarters) return turnImage(image, flip == Flip::quarter);
    const auto [width, height] = image.size;
    const auto lineLength = static_cast<std::uint32_t>(image.bytes.size() / height);
    const OrvErrorType code =
        flip == Flip::vertical
            ? OrvFlipVertical(image.bytes.data(), lineLength, height)
            : OrvFlip(image.bytes.data(), width, height, static_cast<int>(flip), colourCoding(image.output).value());
    require(code, "flip a picture of " + text(image.size), "at least 2 lines");
}

void requireHalves(const Output& output) {
    if (output.code == OrvOutputYuv422)
        throw UsageError("--half is not for YUV422; choose another output (-t), like RGB24");
}

void halveImage(Image& image) {
    const auto [width, height] = image.size;
    const Size half{std::max(width / 2, 1u), std::max(height / 2, 1u)};
    const std::size_t pixel = image.bytes.size() / image.size.pixels(), line = pixel * width;
    const std::size_t right = width > 1 ? pixel : 0, below = height > 1 ? line : 0;
    const bool deep = isDeep(image.output);
    Bytes bytes;
    bytes.reserve(half.pixels() * pixel);
    for (std::uint32_t y = 0; y < half.height; ++y) {
        for (std::uint32_t x = 0; x < half.width; ++x) {
            const std::uint8_t* const block = &image.bytes[2 * y * line + 2 * x * pixel];
            for (std::size_t i = 0; i < pixel; i += deep ? 2 : 1) {
                const std::uint8_t* const s = block + i;
                if (!deep) {
                    bytes.push_back(static_cast<std::uint8_t>((s[0] + s[right] + s[below] + s[right + below] + 2) / 4));
                    continue;
                }
                const auto word = [&](std::size_t at) { return s[at] | s[at + 1] << 8; };
                const int mean = (word(0) + word(right) + word(below) + word(right + below) + 2) / 4;
                bytes.push_back(static_cast<std::uint8_t>(mean & 0xFF));
                bytes.push_back(static_cast<std::uint8_t>(mean >> 8));
            }
        }
    }
    image.size = half;
    image.bytes = std::move(bytes);
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
