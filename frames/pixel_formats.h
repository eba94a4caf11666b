// The pixel formats of cameras: how they are called and how their samples lie in memory.
#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "orvella/orv.h"

namespace frames {

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

std::span<const PixelFormat> pixelFormats(); // 49; all but their names is what the library says
const PixelFormat& cygm8();                  // complementary colours, which have no PFNC code

constexpr bool isMosaic(Samples samples) { return samples >= Samples::rggb && samples <= Samples::bggr; }
constexpr bool isDeepColour(const PixelFormat& format) { // which the library describes, but does not convert
    return format.samples == Samples::rgb && format.packing == Packing::words;
}
constexpr bool isColour(Samples samples) { return samples >= Samples::rgb; } // of each pixel

// Null for an unknown code.
const PixelFormat* pixelFormatWithCode(OrvPixelFormatType code);

// By name, whatever the case of its letters: the library's names with or without the prefix "PixelFormat" or
// "OrvPixelFormat"; those of PFNC and GigE Vision, like YUV422_8_UYVY and RGB8Packed; PFNC codes, like 0x01080009;
// depths that come in 16-bit words, like BayerRG14.
std::optional<PixelFormat> findPixelFormat(std::string_view name);

// What to say of a name that is not found: "did you mean BayerRG8? " or what tells the formats of that kind apart.
std::string hintFor(std::string_view name);

} // namespace frames
