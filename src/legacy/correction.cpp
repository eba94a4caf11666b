#include "correction/converters.h"
#include "correction/objects.h"
#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

// ---- The objects

namespace {

constexpr Refusal createArguments[] = {Refusal::matrix, Refusal::handle};
constexpr Refusal destroyArguments[] = {Refusal::handle};

} // namespace

uint32_t ZEB_CreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle) {
    return zeb(createColorCorrection(kindInt8, matrix, handle), createArguments);
}

uint32_t ZEB_CreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle) {
    return zeb(createColorCorrection(kindInt16, matrix, handle), createArguments);
}

uint32_t ZEB_DestroyColorCorrection(ColorCorrectionHandle handle) {
    return zeb(destroyColorCorrection(handle), destroyArguments);
}

// ---- The one-call converters

uint32_t ZEB_Raw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                          ColorCorrectionHandle handle) {
    return zeb(convert(raw8Corrected, {destination, source, width, height, OrvOutputBgr24, pattern}, handle),
               converterArguments);
}

uint32_t ZEB_Raw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                         ColorCorrectionHandle handle) {
    return zeb(convert(raw8Corrected, {destination, source, width, height, OrvOutputMono8, pattern}, handle),
               converterArguments);
}

uint32_t ZEB_Raw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                           ColorCorrectionHandle handle) {
    return zeb(convert(raw12PackedCorrected, {destination, source, width, height, OrvOutputBgr24, pattern}, handle),
               converterArguments);
}

uint32_t ZEB_Raw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return zeb(
        convert(raw12PackedWholeCorrected, {destination, source, width, height, OrvOutputBgr48, pattern}, handle),
        converterArguments);
}

uint32_t ZEB_Raw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return zeb(convert(raw16WholeCorrected, {destination, source, width, height, OrvOutputBgr48, pattern}, handle),
               converterArguments);
}

uint32_t ZEB_Raw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                           ColorCorrectionHandle handle) {
    return zeb(convert(raw16WholeCorrected, {destination, source, width, height, OrvOutputMono16, pattern}, handle),
               converterArguments);
}
