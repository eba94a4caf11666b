#include "frame/pixel_formats.h"

#include "frame/bits_per_index.h"
#include "support/faces.h"

namespace kel {

namespace {

// Storage bits from the byte of effective bits in a PFNC code; 0 for a byte that no format has.
constexpr u32 storageBits(OrvPixelFormatType code) {
    const u32 bits = code >> 16 & 0xFF;
    switch (bits) {
    case 8:
    case 10:
    case 12:
    case 14:
    case 16:
    case 24:
    case 32:
    case 48: return bits;
    default: return 0;
    }
}

// Storage bits of the small format indices, a numbering of its own; 0 for an unknown one.
constexpr u32 storageBitsOfIndex(u32 index) {
    switch (index) {
    case 0:
    case 9:
    case 128:
    case 129:
    case 130: return 8;
    case 1:
    case 132:
    case 134:
    case 136:
    case 144:
    case 145:
    case 148:
    case 149: return 12;
    case 2:
    case 5:
    case 7:
    case 10: return 16;
    case 3:
    case 4: return 24;
    case 141: return 32;
    case 133:
    case 135: return 36;
    case 6:
    case 8: return 48;
    default: return 0;
    }
}

OrvErrorType answer(uint8_t* out, OrvPixelFormatType code, Answer PixelFormat::*column) {
    const PixelFormat* format = findPixelFormat(code);
    if (!out || !format || format->*column == Answer::unknown) return OrvErrorBadParameter;
    *out = format->*column == Answer::yes;
    return OrvErrorSuccess;
}

OrvErrorType answer(uint32_t* out, OrvPixelFormatType code, u32 PixelFormat::*column) {
    const PixelFormat* format = findPixelFormat(code);
    if (!out || !format) return OrvErrorBadParameter;
    *out = format->*column;
    return OrvErrorSuccess;
}

} // namespace

Result bitsPerPixelOfIndex(u32 index, u32* bits) {
    const u32 found = storageBitsOfIndex(index);
    if (found == 0) return badArgument(1);
    if (!bits) return badArgument(2);
    *bits = found;
    return success;
}

} // namespace kel

using kel::PixelFormat;

OrvErrorType OrvBitsPerPixel(uint32_t* bits, OrvPixelFormatType format) {
    const kel::u32 found = kel::storageBits(format);
    if (!bits || found == 0) return OrvErrorBadParameter;
    *bits = found;
    return OrvErrorSuccess;
}

OrvErrorType OrvBitsPerPixelUsed(uint32_t* bits, OrvPixelFormatType format) {
    return kel::answer(bits, format, &PixelFormat::bitsUsed);
}

OrvErrorType OrvGetBayerPattern(OrvBayerPattern* pattern, OrvPixelFormatType format) {
    return kel::answer(pattern, format, &PixelFormat::pattern);
}

OrvErrorType OrvHasBayerPattern(uint8_t* has, OrvPixelFormatType format) {
    return kel::answer(has, format, &PixelFormat::hasBayerPattern);
}

OrvErrorType OrvIsColor(uint8_t* is, OrvPixelFormatType format) {
    return kel::answer(is, format, &PixelFormat::isColor);
}

OrvErrorType OrvGetPixelLayout(OrvPixelLayout* layout, OrvPixelFormatType format) {
    const PixelFormat* row = kel::findPixelFormat(format);
    if (!row) return OrvErrorBadParameter;
    *layout = row->layout;
    return OrvErrorSuccess;
}

OrvErrorType OrvGetColorSpace(OrvColorSpace* space, OrvPixelFormatType format) {
    const PixelFormat* row = kel::findPixelFormat(format);
    *space = row ? row->colorSpace : OrvColorSpace{OrvColorSpaceNone};
    return OrvErrorSuccess;
}

OrvErrorType OrvGetBitsPerPixel(uint32_t index, uint32_t* bits) {
    return kel::orv(kel::bitsPerPixelOfIndex(index, bits));
}
