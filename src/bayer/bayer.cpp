#include "bayer/bayer.h"

#include <cstdlib>
#include <memory>

#include "bayer/bayer_kernels.h"
#include "bayer/checks.h"
#include "bayer/phase.h"
#include "bayer/scratch.h"
#include "support/faces.h"
#include "support/shift.h"

namespace kel {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

Result transformMosaic(const ByOutput<Mosaic>& kernels, void* destination, const void* source, u32 width, u32 height,
                       u32 output, i32 pattern) {
    if (const Result refusal = checkMosaic(destination, source, width, height, pattern, 6); !refusal.ok())
        return refusal;
    const Mosaic kernel = kernels[output];
    if (!kernel) return notImplemented;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), width, height,
           phaseOf(static_cast<u32>(pattern)));
    return success;
}

Result transformMosaic(const ByOutput<FilteredMosaic>& kernels, void* destination, void* source, u32 width, u32 height,
                       u32 output, i32 pattern) {
    if (const Result refusal = checkMosaic(destination, source, width, height, pattern, 6); !refusal.ok())
        return refusal;
    const FilteredMosaic kernel = kernels[output];
    if (!kernel) return notImplemented;
    const std::unique_ptr<u8, Free> scratch(static_cast<u8*>(std::malloc(scratchSize(width))));
    if (scratch)
        kernel(static_cast<u8*>(destination), static_cast<u8*>(source), width, height,
               phaseOf(static_cast<u32>(pattern)), scratch.get());
    return success;
}

} // namespace

Result raw8ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8, destination, source, width, height, output, pattern);
}

Result raw8ImageTransform3x3(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8_3x3, destination, source, width, height, output, pattern);
}

Result raw8ImageTransformIntLCAA(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8Lcaa, destination, source, width, height, output, pattern);
}

Result raw8ImageTransformIntLCAAV(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8Lcaav, destination, source, width, height, output, pattern);
}

Result raw8ImageTransformIntYUV422(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw8Yuv422, destination, source, width, height, output, pattern);
}

Result raw10pImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw10p, destination, source, width, height, output, pattern);
}

Result raw12ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw12, destination, source, width, height, output, pattern);
}

Result raw12pImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw12p, destination, source, width, height, output, pattern);
}

Result raw16ImageTransform(void* destination, const void* source, u32 width, u32 height, u32 output, i32 pattern) {
    return transformMosaic(bayerKernels().raw16, destination, source, width, height, output, pattern);
}

Result raw16ImageTransformEx(void* destination, const void* source, u32 width, u32 height, u32 output,
                             const OrvShiftRecord* record) {
    if (const Result refusal = checkMosaic(destination, source, width, height); !refusal.ok()) return refusal;
    if (!record) return badArgument(6);
    if (!bayerKernels().raw16Shifted[0][output] || record->Alignment > 1) return notImplemented;
    const int shift = shiftOf(*record);
    if (shift < 0 || record->Endianness > 1) return fault;
    bayerKernels().raw16Shifted[record->Endianness][output](static_cast<u8*>(destination),
                                                            static_cast<const u8*>(source), width, height,
                                                            phaseOf(record->BayerPattern), shift);
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvRaw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                   OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransform(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                       OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransform3x3(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                           OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransformIntLCAA(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransformIntLCAAV(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                             OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw8ImageTransformIntYUV422(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                     OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw10pImageTransform(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw12ImageTransform(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                     OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw12pImageTransform(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return kel::orv(kel::raw16ImageTransform(destination, source, width, height, output, pattern));
}

OrvErrorType OrvRaw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                      OrvOutputCode output, const OrvShiftRecord* record) {
    return kel::orv(kel::raw16ImageTransformEx(destination, source, width, height, output, record));
}
