// The names of camera pixel formats and of outputs, and how frames lie in memory: the only place in the program that
// lists them.
#pragma once
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "orvella/orv.h"

namespace tool {

// What a pixel's samples are, in memory order.
enum class Samples { grey, rggb, grbg, gbrg, bggr, rgb, bgr, rgba, bgra, yuv411, yuv422, yuv444, cygm };

enum class Packing {
    bytes,
    words,    // 16-bit words, by default little-endian with the sample in the low bits
    packed12, // two samples in three bytes, their low nibbles in the middle one
    bitStream // sample after sample from the lowest bit up
};

struct PixelFormat {
    std::string_view name; // without the prefix "PixelFormat"
    OrvPixelFormatType code;
    Samples samples;
    unsigned bits; // of a sample
    Packing packing;
};

struct Output {
    std::array<std::string_view, 3> names; // the first is shown, all are understood; unused ones are empty
    OrvOutputCode code;                    // of planes, of each one
    std::string_view description;
    std::string_view planes = ""; // a picture for each of these letters; for none, a single picture
};

std::span<const PixelFormat> pixelFormats(); // 49
const PixelFormat& cygm8();                  // complementary colours, which have no PFNC code
std::span<const Output> outputs();           // 11, by their code
std::span<const Output> planeOutputs();      // 2

// By name, whatever the case of its letters, with or without the prefix "PixelFormat" or "OrvPixelFormat".
// Throws Error for an unknown name; the message suggests similar ones.
const PixelFormat& pixelFormatNamed(std::string_view name);
const Output& outputNamed(std::string_view name);

// Null for an unknown code.
const PixelFormat* pixelFormatWithCode(OrvPixelFormatType code);

constexpr bool isMosaic(Samples samples) { return samples >= Samples::rggb && samples <= Samples::bggr; }

} // namespace tool
