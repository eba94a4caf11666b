#include "correction/direct.h"
#include "correction/objects.h"
#include "correction/registry.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_CreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle) {
    return zeb(createColorCorrection(kindInt8, matrix, handle));
}

uint32_t ZEB_CreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle) {
    return zeb(createColorCorrection(kindInt16, matrix, handle));
}

uint32_t ZEB_DestroyColorCorrection(ColorCorrectionHandle handle) { return zeb(destroyColorCorrection(handle)); }

uint32_t ZEB_Raw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                          ColorCorrectionHandle handle) {
    return zeb(raw8ToBgrCorrected(destination, source, width, height, pattern, handle));
}

uint32_t ZEB_Raw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                         ColorCorrectionHandle handle) {
    return zeb(raw8ToY8Corrected(destination, source, width, height, pattern, handle));
}

uint32_t ZEB_Raw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                           ColorCorrectionHandle handle) {
    return zeb(raw12ToBgrCorrected(destination, source, width, height, pattern, handle));
}

uint32_t ZEB_Raw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return zeb(raw12ToBgr16Corrected(destination, source, width, height, pattern, handle));
}

uint32_t ZEB_Raw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return zeb(raw16ToBgr16Corrected(destination, source, width, height, pattern, handle));
}

uint32_t ZEB_Raw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                           ColorCorrectionHandle handle) {
    return zeb(raw16ToY16Corrected(destination, source, width, height, pattern, handle));
}
