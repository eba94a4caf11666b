#include <cstring>

#include "color/color.h"
#include "color/color_kernels.h"
#include "support/faces.h"
#include "support/transform.h"

namespace kel {

Result rgb8ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().rgb8, destination, source, pixels, true, output);
}

Result bgr8ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().bgr8, destination, source, pixels, true, output);
}

Result rgba8ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().rgba8, destination, source, pixels, true, output);
}

Result bgra8ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().bgra8, destination, source, pixels, true, output);
}

Result rgb8ToY8(void* destination, const void* source, u32 pixels) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    colorKernels().rgb8ToY8(static_cast<u8*>(destination), static_cast<const u8*>(source), pixels);
    return success;
}

Result rgb8ToBgr(void* destination, const void* source, u32 pixels) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    const Run swap = colorKernels().rgb8[OrvOutputBgr24];
    auto* d = static_cast<u8*>(destination);
    const u32 copied = 3 * pixels;
    if (copied == u64{3} * pixels) {
        swap(d, static_cast<const u8*>(source), pixels);
    } else { // the byte count of the copy wraps, that of the swap does not
        std::memcpy(d, source, copied);
        swap(d, d, pixels);
    }
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvRGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::rgb8ImageTransform(destination, source, n, output));
}

OrvErrorType OrvBGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::bgr8ImageTransform(destination, source, n, output));
}

OrvErrorType OrvRGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::rgba8ImageTransform(destination, source, n, output));
}

OrvErrorType OrvBGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::bgra8ImageTransform(destination, source, n, output));
}

OrvErrorType OrvRGB8ToY8(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::rgb8ToY8(destination, source, n));
}

OrvErrorType OrvRGB8ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::rgb8ToBgr(destination, source, n));
}
