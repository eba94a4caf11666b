// Colour sources split into planes. Arguments and refusals: orvella/orv.h.
#pragma once
#include "support/result.h"

namespace kel {

// Where the planes go; y may be null.
struct PlanePointers {
    void *r, *g, *b, *y;
};

// The functions without a luma plane: fewer arguments, other checks of the size.
enum class PlaneSet { rgb, rgby };

Result rgb8ToPlanes(const PlanePointers& planes, const void* source, u32 width, u32 height);
Result yuv411ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height);
Result yuv422ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height);
Result yuv444ToPlanes(PlaneSet set, const PlanePointers& planes, const void* source, u32 width, u32 height);

} // namespace kel
