#include "correction/objects.h"

#include <new>

#include "correction/registry.h"
#include "orvella/exceptions.hpp"
#include "support/faces.h"

namespace kel {

Refusal createColorCorrection(u32 kind, const float* matrix, ColorCorrectionHandle* handle) {
    if (!matrix) return Refusal::matrix;
    if (!handle) return Refusal::handle;
    try {
        std::unique_ptr<ColorCorrection> object(new ColorCorrection{{kind}, fixedPoint(matrix)});
        *handle = registry().adopt(std::move(object));
        return Refusal::none;
    } catch (const std::bad_alloc&) {
        return Refusal::noMemory;
    }
}

Refusal destroyColorCorrection(ColorCorrectionHandle handle) {
    try {
        if (handle) registry().remove(static_cast<const FunctorBase*>(handle));
    } catch (const thread::KELThreadException&) {
        // The answer is the same.
    }
    return Refusal::handle;
}

} // namespace kel

using namespace kel;

OrvErrorType OrvCreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle) {
    return orv(createColorCorrection(kindInt8, matrix, handle));
}

OrvErrorType OrvCreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle) {
    return orv(createColorCorrection(kindInt16, matrix, handle));
}

OrvErrorType OrvDestroyColorCorrection(ColorCorrectionHandle handle) { return orv(destroyColorCorrection(handle)); }
