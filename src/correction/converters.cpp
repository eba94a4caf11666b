#include "correction/converters.h"

#include "bayer/phase.h"
#include "support/faces.h"

namespace kel {

// The object is read through the handle; the registry is not asked.
Refusal convert(const CorrectedFamily& family, const MosaicCall& call, ColorCorrectionHandle handle) {
    if (!handle) return convert(family.plain, call);
    const auto* object = static_cast<const ColorCorrection*>(handle);
    Refusal refusal = checkMosaic(call);
    if (refusal == Refusal::none && object->kind != family.kind) refusal = Refusal::object;
    return unlessRefused(refusal, [&] {
        family.kernel(call.output)(bytes(call.destination), bytes(call.source), call.width, call.height,
                                   phaseOf(call.pattern), object->matrix);
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvRaw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return orv(convert(raw8Corrected, {destination, source, width, height, OrvOutputBgr24, pattern}, handle));
}

OrvErrorType OrvRaw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                            ColorCorrectionHandle handle) {
    return orv(convert(raw8Corrected, {destination, source, width, height, OrvOutputMono8, pattern}, handle));
}

OrvErrorType OrvRaw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                              ColorCorrectionHandle handle) {
    return orv(convert(raw12PackedCorrected, {destination, source, width, height, OrvOutputBgr24, pattern}, handle));
}

OrvErrorType OrvRaw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                                ColorCorrectionHandle handle) {
    return orv(
        convert(raw12PackedWholeCorrected, {destination, source, width, height, OrvOutputBgr48, pattern}, handle));
}

OrvErrorType OrvRaw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                                ColorCorrectionHandle handle) {
    return orv(convert(raw16WholeCorrected, {destination, source, width, height, OrvOutputBgr48, pattern}, handle));
}

OrvErrorType OrvRaw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                              ColorCorrectionHandle handle) {
    return orv(convert(raw16WholeCorrected, {destination, source, width, height, OrvOutputMono16, pattern}, handle));
}
