#include "color/planes.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_RGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width, uint32_t height) {
    return zeb(rgb8ToPlanes({r, g, b, y}, source, width, height));
}

uint32_t ZEB_YUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(yuv411ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

uint32_t ZEB_YUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(yuv422ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

uint32_t ZEB_YUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(yuv444ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

uint32_t ZEB_YUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(yuv411ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}

uint32_t ZEB_YUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(yuv422ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}

uint32_t ZEB_YUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(yuv444ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}
