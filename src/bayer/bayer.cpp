#include "bayer/bayer.h"

#include "bayer/bayer_kernels.h"
#include "bayer/phase.h"
#include "support/faces.h"

namespace kel {

namespace {

constexpr bool isEven(u32 size) { return size > 0 && size % 2 == 0; }

Result transformMosaic(const ByOutput<Mosaic>& kernels, void* destination, const void* source, u32 width, u32 height,
                       u32 output, i32 pattern) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (!isEven(width)) return badArgument(3);
    if (!isEven(height)) return badArgument(4);
    if (pattern < -1 || pattern > 3) return badArgument(6);
    const Mosaic kernel = kernels[output];
    if (!kernel) return notImplemented;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), width, height,
           phaseOf(static_cast<u32>(pattern)));
    return success;
}

} // namespace

Result raw8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8, destination, source, width, height, output, pattern);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvRaw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                   OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransform(destination, source, width, height, output, pattern));
}
