// The kernels of the colour sources.
#pragma once
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

struct PlaneBytes {
    u8 *r, *g, *b, *y; // y: only where there is a luma plane
};
using ToPlanes = void (*)(const PlaneBytes& planes, const u8* source, size_t pixels);

struct PlaneKernels {
    ToPlanes withoutLuma, withLuma;
};

struct ColorKernels {
    // by output
    ByOutput<Run> rgb8, bgr8, rgba8, bgra8;
    ByOutput<Run> yuv411, yuv422, yuv444;

    Run rgb8ToY8;
    PlaneKernels rgb8Planes, yuv411Planes, yuv422Planes, yuv444Planes;
};

KEL_KERNEL_TABLES(ColorKernels, colorKernels)
inline const ColorKernels& colorKernels() { KEL_RETURN_TABLE_IN_USE(ColorKernels, colorKernels) }

} // namespace kel
