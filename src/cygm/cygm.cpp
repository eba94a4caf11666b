#include "cygm/cygm.h"

#include "cygm/cygm_kernels.h"
#include "support/faces.h"

namespace kel {

namespace {

Result checkCygm(const void* destination, const void* source, u32 width, u32 height) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (width == 0 || width % 2 != 0) return badArgument(3);
    if (height == 0 || height % 4 != 0) return badArgument(4);
    return success;
}

Result transform(const ByOutput<CygmMosaic>& kernels, void* destination, const void* source, u32 width, u32 height,
                 u32 output) {
    if (const Result refusal = checkCygm(destination, source, width, height); !refusal.ok()) return refusal;
    const CygmMosaic kernel = kernels[output];
    if (!kernel) return notImplemented;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), width, height);
    return success;
}

} // namespace

Result cygm8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output) {
    return transform(cygmKernels().cygm8, destination, source, width, height, output);
}

Result cygm8ImageTransformBinned(void* destination, const void* source, u32 width, u32 height, u32 output) {
    if (const Result refusal = checkCygm(destination, source, width, height); !refusal.ok()) return refusal;
    if (output == OrvOutputYuv422 && width % 4 != 0) return badArgument(3); // pairs of pixels, two columns each
    return transform(cygmKernels().binned, destination, source, width, height, output);
}

Result cygm8ImageTransform3x3(void* destination, const void* source, u32 width, u32 height, u32 output) {
    if (destination && source && width == 2) return badArgument(3); // no inner pixel
    return transform(cygmKernels().by3x3, destination, source, width, height, output);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvIRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, uint32_t) {
    return kel::orv(kel::cygm8ImageTransform(destination, source, width, height, output));
}

OrvErrorType OrvIRaw8CYGMToBGR(void* destination, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::cygm8ImageTransform(destination, source, width, height, OrvOutputBgr24));
}

OrvErrorType OrvIRaw8CYGMToMono(void* destination, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::cygm8ImageTransform(destination, source, width, height, OrvOutputMono8));
}

OrvErrorType OrvIRaw8CYGMImageTransform_Bin(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, uint32_t) {
    return kel::orv(kel::cygm8ImageTransformBinned(destination, source, width, height, output));
}

OrvErrorType OrvIRaw8CYGMToBGR_Bin(void* destination, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::cygm8ImageTransformBinned(destination, source, width, height, OrvOutputBgr24));
}

OrvErrorType OrvIRaw8CYGMImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, uint32_t) {
    return kel::orv(kel::cygm8ImageTransform3x3(destination, source, width, height, output));
}

OrvErrorType OrvIRaw8CYGMToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height) {
    return kel::orv(kel::cygm8ImageTransform3x3(destination, source, width, height, OrvOutputBgr24));
}
