// The outputs, pixel by pixel and as plainly as they can be said.
#pragma once
#include <cstddef>
#include <cstdint>

namespace reference {

using Byte = std::uint8_t;

enum class Output {
    mono8,
    bgr24,
    bgra32,
    rgb24,
    rgba32,
    mono8Rec709,
    uyvy,
    mono16,
    mono16Rec709,
    bgr48,
    rgb48,
    planes,
    planesWithLuma,
    mono16BigEndian
};

struct Colour {
    int r, g, b;
    int bits = 8;      // of a channel: 8 or 16
    bool grey = false; // from a grey source
};

std::size_t bytesPerPixel(Output output);

// Writes pixel `index` of an image (of any output but the planes). Of a UYVY pair, the first pixel writes what both
// write, the second completes it.
void put(Byte* image, std::size_t index, Output output, const Colour& colour);

// Copies pixel `from` to pixel `to`: its colour only, or all its bytes.
void copyColour(Byte* image, std::size_t to, std::size_t from, Output output);
void copyPixel(Byte* image, std::size_t to, std::size_t from, Output output);

} // namespace reference
