// The camera pixel formats: one row per name.
#pragma once
#include <span>
#include <string_view>

#include "orvella/orv.h"
#include "support/integers.h"

namespace kel {

enum class Answer : u8 { no, yes, unknown }; // unknown: the query refuses the format

struct PixelFormat {
    std::string_view name; // behind "PixelFormat"
    OrvPixelFormatType code;
    u32 bitsUsed;
    OrvPixelLayout layout;
    OrvBayerPattern pattern;
    OrvColorSpace colorSpace;
    Answer hasBayerPattern, isColor;
};

std::span<const PixelFormat> pixelFormats();

// The row of a code; null if unknown.
const PixelFormat* findPixelFormat(OrvPixelFormatType code);

} // namespace kel
