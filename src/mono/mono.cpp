#include "mono/mono.h"

#include "mono/mono_kernels.h"
#include "support/faces.h"
#include "support/shift.h"
#include "support/transform.h"

namespace kel {

Result y8ImageTransform(void* destination, const void* source, u64 pixels, u32 output, EmptyRun empty) {
    return transformRun(monoKernels().y8, destination, source, pixels, pixels > 0 || empty == EmptyRun::allowed,
                        output);
}

Result y16BigEndianImageTransform(void* destination, const void* source, u64 pixels, u32 output, EmptyRun empty) {
    return transformRun(monoKernels().y16BigEndian, destination, source, pixels,
                        pixels > 0 || empty == EmptyRun::allowed, output);
}

Result y16LittleEndianImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(monoKernels().y16LittleEndian, destination, source, pixels, pixels > 0, output);
}

Result y16ImageTransformEx(void* destination, const void* source, u64 pixels, u32 output, const OrvShiftRecord* shift) {
    constexpr OrvShiftRecord bigEndianUnshifted{0, 0, 16, 1, 0};
    const OrvShiftRecord& record = shift ? *shift : bigEndianUnshifted;
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (pixels == 0) return badArgument(3);
    if (record.Alignment > 1 || !monoKernels().y16Shifted[0][output]) return notImplemented;
    const int by = shiftOf(record);
    if (by < 0 || record.Endianness > 1) return fault;
    return transformRun(monoKernels().y16Shifted[record.Endianness], destination, source, pixels, true, output, by);
}

Result y12ImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(monoKernels().y12, destination, source, pixels, pixels % 2 == 0, output);
}

Result y10pImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(monoKernels().y10p, destination, source, pixels, true, output);
}

Result y12pImageTransform(void* destination, const void* source, u64 pixels, u32 output) {
    return transformRun(monoKernels().y12p, destination, source, pixels, pixels % 2 == 0, output);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvY8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::y8ImageTransform(destination, source, n, output));
}

OrvErrorType OrvY16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::y16BigEndianImageTransform(destination, source, n, output));
}

OrvErrorType OrvY16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                    const OrvShiftRecord* shift) {
    return kel::orv(kel::y16ImageTransformEx(destination, source, n, output, shift));
}

OrvErrorType OrvY12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::y12ImageTransform(destination, source, n, output));
}

OrvErrorType OrvY10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::y10pImageTransform(destination, source, n, output));
}

OrvErrorType OrvY12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return kel::orv(kel::y12pImageTransform(destination, source, n, output));
}
