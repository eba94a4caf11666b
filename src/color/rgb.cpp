#include <cstring>

#include "color/color.h"
#include "support/faces.h"

namespace kel {

Refusal convertRgb8ToBgr(void* destination, const void* source, u32 pixels) {
    const u32 copied = 3 * pixels;
    if (copied == u64{3} * pixels || !destination || !source)
        return convert(rgb8, {destination, source, pixels, OrvOutputBgr24});
    // The byte count of the copy wraps, that of the exchange does not.
    std::memcpy(destination, source, copied);
    return convert(rgb8, {destination, destination, pixels, OrvOutputBgr24});
}

} // namespace kel

using namespace kel;

OrvErrorType OrvRGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(rgb8, {destination, source, n, output}));
}

OrvErrorType OrvBGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(bgr8, {destination, source, n, output}));
}

OrvErrorType OrvRGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(rgba8, {destination, source, n, output}));
}

OrvErrorType OrvBGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(bgra8, {destination, source, n, output}));
}

OrvErrorType OrvRGB8ToY8(void* destination, const void* source, uint32_t n) {
    return orv(convert(rgb8ToY8, {destination, source, n, OrvOutputMono8}));
}

OrvErrorType OrvRGB8ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convertRgb8ToBgr(destination, source, n));
}
