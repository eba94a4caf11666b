#include "bayer/bayer.h"

#include "bayer/phase.h"
#include "support/faces.h"
#include "support/shift.h"

namespace kel {

Refusal convertRaw16(void* destination, const void* source, u32 width, u32 height, u32 output,
                     const OrvShiftRecord* record) {
    constexpr i32 anyPattern = 0;
    const auto& kernels = bayerKernels(width).raw16Shifted;
    const Refusal refusal =
        firstRefusal({checkMosaic<const void>({destination, source, width, height, output, anyPattern}),
                      {record, Refusal::record},
                      record ? checkShift(kernels, output, *record) : Refusal::record});
    return unlessRefused(refusal, [&] {
        kernels[record->Endianness][output](bytes(destination), bytes(source), width, height,
                                            phaseOf(static_cast<i32>(record->BayerPattern)), leftShift(*record));
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvRaw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                   OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw8, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                       OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw8By3x3, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                           OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw8ByLcaa, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw8ByLcaav, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                             OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw8ByYuv422, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                     OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw10p, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw12Packed, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                     OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw12p, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return orv(convert(raw16, {destination, source, width, height, output, pattern}));
}

OrvErrorType OrvRaw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                      OrvOutputCode output, const OrvShiftRecord* record) {
    return orv(convertRaw16(destination, source, width, height, output, record));
}
