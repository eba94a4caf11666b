#include "color/color.h"
#include "color/color_kernels.h"
#include "support/faces.h"
#include "support/transform.h"

namespace kel {

namespace {

// Counts that the families take: whole groups of pixels.
constexpr bool isYuv411Count(u64 pixels) { return pixels >= 2 && pixels % 4 == 0; }
constexpr bool isYuv422Count(u64 pixels) { return pixels >= 2 && pixels % 2 == 0; }

} // namespace

Result yuv411ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().yuv411, destination, source, pixels, isYuv411Count(pixels), output);
}

Result yuv422ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().yuv422, destination, source, pixels, isYuv422Count(pixels), output);
}

Result yuv444ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(colorKernels().yuv444, destination, source, pixels, true, output);
}

Result yuv411ToBgr(void* destination, const void* source, u32 pixels) {
    return yuv411ImageTransform(destination, source, pixels, OrvOutputBgr24);
}

Result yuv422ToBgr(void* destination, const void* source, u32 pixels) {
    return yuv422ImageTransform(destination, source, pixels, OrvOutputBgr24);
}

Result yuv444ToBgr(void* destination, const void* source, u32 pixels) {
    return transformRun(colorKernels().yuv444, destination, source, pixels, pixels > 0, OrvOutputBgr24);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvYUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::yuv411ImageTransform(destination, source, n, output));
}

OrvErrorType OrvYUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::yuv422ImageTransform(destination, source, n, output));
}

OrvErrorType OrvYUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::yuv444ImageTransform(destination, source, n, output));
}

OrvErrorType OrvYUV411ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::yuv411ToBgr(destination, source, n));
}

OrvErrorType OrvYUV422ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::yuv422ToBgr(destination, source, n));
}

OrvErrorType OrvYUV444ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::yuv444ToBgr(destination, source, n));
}
