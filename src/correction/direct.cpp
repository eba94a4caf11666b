#include "correction/direct.h"

#include "bayer/checks.h"
#include "bayer/direct.h"
#include "bayer/phase.h"
#include "correction/correction_kernels.h"
#include "correction/registry.h"
#include "support/faces.h"

namespace kel {

namespace {

struct Arguments {
    void* destination;
    const void* source;
    u32 width, height;
    i32 pattern;
    ColorCorrectionHandle handle;
};
using Plain = Result (*)(void* destination, const void* source, u32 width, u32 height, i32 pattern);

// The object is read through the handle; the registry is not asked. shift: of kernels that take one.
template <class Kernel, class... Shift>
Result convert(u32 kind, Plain plain, Kernel kernel, const Arguments& a, Shift... shift) {
    if (!a.handle) return plain(a.destination, a.source, a.width, a.height, a.pattern);
    if (const Result refusal = checkMosaic(a.destination, a.source, a.width, a.height, a.pattern, 5); !refusal.ok())
        return refusal;
    const auto& object = *static_cast<const ColorCorrection*>(a.handle);
    if (object.kind != kind) return badArgument(6);
    kernel(static_cast<u8*>(a.destination), static_cast<const u8*>(a.source), a.width, a.height,
           phaseOf(static_cast<u32>(a.pattern)), shift..., object.matrix);
    return success;
}

} // namespace

Result raw8ToBgrCorrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                          ColorCorrectionHandle handle) {
    return convert(kindInt8, raw8ToBgr, correctionKernels().raw8[OrvOutputBgr24],
                   {destination, source, width, height, pattern, handle});
}

Result raw8ToY8Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                         ColorCorrectionHandle handle) {
    return convert(kindInt8, raw8ToY8, correctionKernels().raw8[OrvOutputMono8],
                   {destination, source, width, height, pattern, handle});
}

Result raw12ToBgrCorrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                           ColorCorrectionHandle handle) {
    return convert(kindInt8, raw12ToBgr, correctionKernels().raw12ToBgr24,
                   {destination, source, width, height, pattern, handle});
}

Result raw12ToBgr16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                             ColorCorrectionHandle handle) {
    return convert(kindInt16, raw12ToBgr16, correctionKernels().raw12[OrvOutputBgr48],
                   {destination, source, width, height, pattern, handle});
}

Result raw16ToBgr16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                             ColorCorrectionHandle handle) {
    return convert(kindInt16, raw16ToBgr16, correctionKernels().raw16Shifted[1][OrvOutputBgr48],
                   {destination, source, width, height, pattern, handle}, 0);
}

Result raw16ToY16Corrected(void* destination, const void* source, u32 width, u32 height, i32 pattern,
                           ColorCorrectionHandle handle) {
    return convert(kindInt16, raw16ToY16, correctionKernels().raw16Shifted[1][OrvOutputMono16],
                   {destination, source, width, height, pattern, handle}, 0);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvRaw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                             ColorCorrectionHandle handle) {
    return kel::orv(kel::raw8ToBgrCorrected(destination, source, width, height, pattern, handle));
}

OrvErrorType OrvRaw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                            ColorCorrectionHandle handle) {
    return kel::orv(kel::raw8ToY8Corrected(destination, source, width, height, pattern, handle));
}

OrvErrorType OrvRaw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                              ColorCorrectionHandle handle) {
    return kel::orv(kel::raw12ToBgrCorrected(destination, source, width, height, pattern, handle));
}

OrvErrorType OrvRaw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                                ColorCorrectionHandle handle) {
    return kel::orv(kel::raw12ToBgr16Corrected(destination, source, width, height, pattern, handle));
}

OrvErrorType OrvRaw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                                ColorCorrectionHandle handle) {
    return kel::orv(kel::raw16ToBgr16Corrected(destination, source, width, height, pattern, handle));
}

OrvErrorType OrvRaw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern,
                              ColorCorrectionHandle handle) {
    return kel::orv(kel::raw16ToY16Corrected(destination, source, width, height, pattern, handle));
}
