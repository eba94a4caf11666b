#include "cygm/cygm.h"

#include "cygm/cygm_kernels.h"
#include "support/faces.h"

namespace kel {

Result cygm8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (width == 0 || width % 2 != 0) return badArgument(3);
    if (height == 0 || height % 4 != 0) return badArgument(4);
    const CygmMosaic kernel = cygmKernels().cygm8[output];
    if (!kernel) return notImplemented;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), width, height);
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvIRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, uint32_t) {
    return kel::orv(kel::cygm8ImageTransform(destination, source, width, height, output));
}
