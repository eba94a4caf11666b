#include "color/color.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_RGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(rgb8ImageTransform(destination, source, n, output));
}

uint32_t ZEB_BGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(bgr8ImageTransform(destination, source, n, output));
}

uint32_t ZEB_RGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(rgba8ImageTransform(destination, source, n, output));
}

uint32_t ZEB_BGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(bgra8ImageTransform(destination, source, n, output));
}

uint32_t ZEB_RGB8ToY8(void* destination, const void* source, uint32_t n) {
    return zeb(rgb8ToY8(destination, source, n));
}

uint32_t ZEB_RGB8ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(rgb8ToBgr(destination, source, n));
}

uint32_t ZEB_YUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(yuv411ImageTransform(destination, source, n, output));
}

uint32_t ZEB_YUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(yuv422ImageTransform(destination, source, n, output));
}

uint32_t ZEB_YUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(yuv444ImageTransform(destination, source, n, output));
}

uint32_t ZEB_YUV411ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(yuv411ToBgr(destination, source, n));
}

uint32_t ZEB_YUV422ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(yuv422ToBgr(destination, source, n));
}

uint32_t ZEB_YUV444ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(yuv444ToBgr(destination, source, n));
}
