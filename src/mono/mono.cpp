#include "mono/mono.h"

#include "support/faces.h"
#include "support/shift.h"

namespace kel {

Refusal convertY16(const RunCall& call, const OrvShiftRecord* record) {
    constexpr OrvShiftRecord bigEndianUnshifted{0, 0, 16, 1, 0};
    const OrvShiftRecord& shift = record ? *record : bigEndianUnshifted;
    const auto& kernels = monoKernels().y16Shifted;
    const Refusal refusal = firstRefusal({{call.destination, Refusal::destination},
                                          {call.source, Refusal::source},
                                          {call.pixels > 0, Refusal::count},
                                          checkShift(kernels, call.output, shift)});
    return unlessRefused(refusal, [&] {
        kernels[shift.Endianness][call.output](bytes(call.destination), bytes(call.source), call.pixels,
                                               leftShift(shift));
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvY8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(y8, {destination, source, n, output}));
}

OrvErrorType OrvY16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(y16BigEndian, {destination, source, n, output}));
}

OrvErrorType OrvY16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                    const OrvShiftRecord* shift) {
    return orv(convertY16({destination, source, n, output}, shift));
}

OrvErrorType OrvY12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(y12Packed, {destination, source, n, output}));
}

OrvErrorType OrvY10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(y10p, {destination, source, n, output}));
}

OrvErrorType OrvY12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(y12p, {destination, source, n, output}));
}
