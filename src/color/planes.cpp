#include "color/planes.h"

#include "orvella/orv.h"
#include "support/faces.h"

namespace kel {

Refusal convert(const PlaneFamily& family, const PlaneCall& call) {
    const bool goodWidth = call.width >= family.leastSize && call.width % family.widthMultiple == 0;
    const Refusal refusal = firstRefusal({{call.red, Refusal::red},
                                          {call.green, Refusal::green},
                                          {call.blue, Refusal::blue},
                                          {call.source, Refusal::source},
                                          {goodWidth, Refusal::width},
                                          {call.height >= family.leastSize, Refusal::height}});
    return unlessRefused(refusal, [&] {
        const PlaneKernels& kernels = family.kernels();
        const auto kernel = call.luma ? kernels.withLuma : kernels.withoutLuma;
        kernel({bytes(call.red), bytes(call.green), bytes(call.blue), bytes(call.luma)}, bytes(call.source),
               u64{call.width} * call.height);
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvRGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                 uint32_t height) {
    return orv(convert(rgb8Planes, {r, g, b, y, source, width, height}));
}

OrvErrorType OrvYUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return orv(convert(yuv411Planes, {r, g, b, y, source, width, height}));
}

OrvErrorType OrvYUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return orv(convert(yuv422Planes, {r, g, b, y, source, width, height}));
}

OrvErrorType OrvYUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return orv(convert(yuv444Planes, {r, g, b, y, source, width, height}));
}

OrvErrorType OrvYUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(yuv411Planes, {r, g, b, nullptr, source, width, height}));
}

OrvErrorType OrvYUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(yuv422ColourPlanes, {r, g, b, nullptr, source, width, height}));
}

OrvErrorType OrvYUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(yuv444ColourPlanes, {r, g, b, nullptr, source, width, height}));
}
