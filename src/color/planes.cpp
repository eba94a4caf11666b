#include "color/planes.h"

#include "color/color_kernels.h"
#include "support/faces.h"

namespace kel {

namespace {

// Null planes, then a null source; `position` of the source differs between the sets.
Result checkPointers(PlaneSet set, const PlanePointers& planes, const void* source) {
    if (!planes.r) return badArgument(1);
    if (!planes.g) return badArgument(2);
    if (!planes.b) return badArgument(3);
    if (!source) return badArgument(set == PlaneSet::rgb ? 4 : 5);
    return success;
}

Result badWidth(PlaneSet set) { return badArgument(set == PlaneSet::rgb ? 5 : 6); }
Result badHeight(PlaneSet set) { return badArgument(set == PlaneSet::rgb ? 6 : 7); }

void convert(const PlaneKernels& kernels, const PlanePointers& planes, const void* source, u32 width, u32 height) {
    const Planes kernel = planes.y ? kernels.withLuma : kernels.withoutLuma;
    kernel({static_cast<u8*>(planes.r), static_cast<u8*>(planes.g), static_cast<u8*>(planes.b),
            static_cast<u8*>(planes.y)},
           static_cast<const u8*>(source), u64{width} * height);
}

} // namespace

Result rgb8ToPlanes(const PlanePointers& planes, const void* source, u32 width, u32 height) {
    if (const Result refusal = checkPointers(PlaneSet::rgby, planes, source); !refusal.ok()) return refusal;
    convert(colorKernels().rgb8Planes, planes, source, width, height);
    return success;
}

Result yuv411ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height) {
    if (const Result refusal = checkPointers(set, planes, source); !refusal.ok()) return refusal;
    if (width % 4 != 0) return badWidth(set);
    convert(colorKernels().yuv411Planes, planes, source, width, height);
    return success;
}

Result yuv422ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height) {
    if (const Result refusal = checkPointers(set, planes, source); !refusal.ok()) return refusal;
    const u32 smallest = set == PlaneSet::rgb ? 2 : 0;
    if (width < smallest || width % 2 != 0) return badWidth(set);
    if (height < smallest) return badHeight(set);
    convert(colorKernels().yuv422Planes, planes, source, width, height);
    return success;
}

Result yuv444ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height) {
    if (const Result refusal = checkPointers(set, planes, source); !refusal.ok()) return refusal;
    if (set == PlaneSet::rgb && width == 0) return badWidth(set);
    if (set == PlaneSet::rgb && height == 0) return badHeight(set);
    convert(colorKernels().yuv444Planes, planes, source, width, height);
    return success;
}

} // namespace kel

// ---- The current face

using kel::PlaneSet;

OrvErrorType OrvRGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                 uint32_t height) {
    return kel::orv(kel::rgb8ToPlanes({r, g, b, y}, source, width, height));
}

OrvErrorType OrvYUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return kel::orv(kel::yuv411ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

OrvErrorType OrvYUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return kel::orv(kel::yuv422ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

OrvErrorType OrvYUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                   uint32_t height) {
    return kel::orv(kel::yuv444ToPlanes(PlaneSet::rgby, {r, g, b, y}, source, width, height));
}

OrvErrorType OrvYUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::yuv411ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}

OrvErrorType OrvYUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::yuv422ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}

OrvErrorType OrvYUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::yuv444ToPlanes(PlaneSet::rgb, {r, g, b, nullptr}, source, width, height));
}
