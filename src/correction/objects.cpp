#include "correction/objects.h"

#include <new>

#include "correction/registry.h"
#include "orvella/exceptions.hpp"
#include "support/faces.h"

namespace kel {

Result createColorCorrection(u32 kind, const float* matrix, ColorCorrectionHandle* handle) {
    if (!matrix) return badArgument(1);
    if (!handle) return badArgument(2);
    try {
        std::unique_ptr<ColorCorrection> object(new ColorCorrection{{kind}, fixedPoint(matrix)});
        *handle = registry().adopt(std::move(object));
        return success;
    } catch (const std::bad_alloc&) {
        return noMemory;
    }
}

Result destroyColorCorrection(ColorCorrectionHandle handle) {
    try {
        if (handle) registry().remove(static_cast<const FunctorBase*>(handle));
    } catch (const thread::KELThreadException&) {
        // The answer is the same.
    }
    return badArgument(1);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvCreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle) {
    return kel::orv(kel::createColorCorrection(kel::kindInt8, matrix, handle));
}

OrvErrorType OrvCreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle) {
    return kel::orv(kel::createColorCorrection(kel::kindInt16, matrix, handle));
}

OrvErrorType OrvDestroyColorCorrection(ColorCorrectionHandle handle) {
    return kel::orv(kel::destroyColorCorrection(handle));
}
