#include <limits>

#include "geometry/geometry.h"
#include "geometry/geometry_kernels.h"
#include "support/faces.h"

namespace kel {

namespace {

enum Mode : i32 { horizontal = 1, vertical = 2, both = 3 };

// Bytes that a flip moves as one, by colour coding; 0: unknown coding.
constexpr u32 elementOf(u32 coding) {
    constexpr u8 elements[] = {
        1, // Mono8
        2, // YUV 4:1:1
        2, // YUV 4:2:2
        2, // YUV 4:4:4
        3, // RGB8
        2, // Mono16
        6, // RGB16
        2, // signed Mono16
        6, // signed RGB16
        1, // Raw8
        2, // Raw16
    };
    if (coding < sizeof elements) return elements[coding];
    return coding >= 128 && coding <= 130 ? 1 : 0; // Y8 red, green, blue
}

} // namespace

Result flip(void* image, u32 width, u32 height, i32 mode, u32 coding) {
    if (!image) return badArgument(1);
    if (width == 0) return badArgument(2);
    if (height < 2) return badArgument(3);
    if (mode < horizontal || mode > both) return badArgument(4);
    u32 element = elementOf(coding);
    if (element == 0 && mode != vertical) return badArgument(5);
    if (element == 0) element = 1;
    const u64 lineLength = u64{width} * element;
    if (lineLength > std::numeric_limits<u32>::max()) return badArgument(2);

    if (mode == vertical) return flipVertical(image, static_cast<u32>(lineLength), height);
    u8* const bytes = static_cast<u8*>(image);
    const Reverse reverse = geometryKernels().reverse[element];
    if (mode == both)
        reverse(bytes, size_t{width} * height);
    else
        for (size_t y = 0; y < height; ++y) reverse(bytes + y * lineLength, width);
    return success;
}

Result flipVertical(void* image, u32 lineLength, u32 height) {
    if (!image) return badArgument(1);
    if (lineLength == 0) return badArgument(2);
    if (height < 2) return badArgument(3);

    u8* top = static_cast<u8*>(image);
    u8* bottom = top + size_t{lineLength} * (height - 1);
    for (; top < bottom; top += lineLength, bottom -= lineLength) geometryKernels().exchange(top, bottom, lineLength);
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvFlip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding) {
    return kel::orv(kel::flip(image, width, height, mode, coding));
}

OrvErrorType OrvFlipVertical(void* image, uint32_t lineLength, uint32_t height) {
    return kel::orv(kel::flipVertical(image, lineLength, height));
}
