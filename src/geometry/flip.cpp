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

Refusal flip(void* image, u32 width, u32 height, i32 mode, u32 coding) {
    const bool known = elementOf(coding) != 0;
    const u32 element = known ? elementOf(coding) : 1;
    const u64 lineLength = u64{width} * element;
    const Refusal refusal = firstRefusal({{image, Refusal::image},
                                          {width > 0, Refusal::width},
                                          {height >= 2, Refusal::height},
                                          {mode >= horizontal && mode <= both, Refusal::mode},
                                          {known || mode == vertical, Refusal::coding},
                                          {lineLength <= std::numeric_limits<u32>::max(), Refusal::width}});
    if (refusal != Refusal::none) return refusal;

    if (mode == vertical) return flipVertical(image, static_cast<u32>(lineLength), height);
    const Reverse reverse = geometryKernels().reverse[element];
    if (mode == both)
        reverse(bytes(image), size_t{width} * height);
    else
        for (size_t y = 0; y < height; ++y) reverse(bytes(image) + y * lineLength, width);
    return Refusal::none;
}

Refusal flipVertical(void* image, u32 lineLength, u32 height) {
    const Refusal refusal =
        firstRefusal({{image, Refusal::image}, {lineLength > 0, Refusal::lineLength}, {height >= 2, Refusal::height}});
    return unlessRefused(refusal, [&] {
        const Exchange exchange = geometryKernels().exchange;
        u8* top = bytes(image);
        u8* bottom = top + size_t{lineLength} * (height - 1);
        for (; top < bottom; top += lineLength, bottom -= lineLength) exchange(top, bottom, lineLength);
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvFlip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding) {
    return orv(flip(image, width, height, mode, coding));
}

OrvErrorType OrvFlipVertical(void* image, uint32_t lineLength, uint32_t height) {
    return orv(flipVertical(image, lineLength, height));
}
