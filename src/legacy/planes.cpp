#include "color/planes.h"

#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

namespace {

constexpr Refusal planesArguments[] = {Refusal::red,    Refusal::green, Refusal::blue,  unchecked,
                                       Refusal::source, Refusal::width, Refusal::height};
constexpr Refusal colourPlanesArguments[] = {Refusal::red,    Refusal::green, Refusal::blue,
                                             Refusal::source, Refusal::width, Refusal::height};

} // namespace

uint32_t ZEB_RGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(rgb8Planes, {r, g, b, y, source, width, height}), planesArguments);
}

uint32_t ZEB_YUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(convert(yuv411Planes, {r, g, b, y, source, width, height}), planesArguments);
}

uint32_t ZEB_YUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(convert(yuv422Planes, {r, g, b, y, source, width, height}), planesArguments);
}

uint32_t ZEB_YUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                uint32_t height) {
    return zeb(convert(yuv444Planes, {r, g, b, y, source, width, height}), planesArguments);
}

uint32_t ZEB_YUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(yuv411Planes, {r, g, b, nullptr, source, width, height}), colourPlanesArguments);
}

uint32_t ZEB_YUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(yuv422ColourPlanes, {r, g, b, nullptr, source, width, height}), colourPlanesArguments);
}

uint32_t ZEB_YUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(yuv444ColourPlanes, {r, g, b, nullptr, source, width, height}), colourPlanesArguments);
}
