#include "bayer/direct.h"

#include "bayer/bayer.h"
#include "bayer/bayer_kernels.h"
#include "bayer/checks.h"
#include "bayer/phase.h"
#include "support/faces.h"

namespace kel {

namespace {

// The converters' own pattern is their fifth argument, a family's the sixth.
constexpr Result atPatternOfConverter(Result result) {
    return result.failure == Failure::badArgument && result.argument == 6 ? badArgument(5) : result;
}

Result convertMosaic(Mosaic kernel, void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    if (const Result refusal = checkMosaic(destination, source, width, height, pattern, 5); !refusal.ok())
        return refusal;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), width, height,
           phaseOf(static_cast<u32>(pattern)));
    return success;
}

} // namespace

Result raw8ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw8[OrvOutputBgr24], destination, source, width, height, pattern);
}

Result raw8ToBgr3x3(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw8_3x3[OrvOutputBgr24], destination, source, width, height, pattern);
}

Result raw8ToBgrIntLCAA(void* destination, void* source, u32 width, u32 height, i32 pattern) {
    return atPatternOfConverter(raw8ImageTransformIntLCAA(destination, source, width, height, OrvOutputBgr24, pattern));
}

Result raw8ToBgrIntLCAAV(void* destination, void* source, u32 width, u32 height, i32 pattern) {
    return atPatternOfConverter(
        raw8ImageTransformIntLCAAV(destination, source, width, height, OrvOutputBgr24, pattern));
}

Result raw8ToBgrIntYUV422(void* destination, void* source, u32 width, u32 height, i32 pattern) {
    return atPatternOfConverter(
        raw8ImageTransformIntYUV422(destination, source, width, height, OrvOutputBgr24, pattern));
}

Result raw8ToBgrMono(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw8ToGreyBgr24, destination, source, width, height, pattern);
}

Result raw8ToY8(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw8[OrvOutputMono8], destination, source, width, height, pattern);
}

Result raw12ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw12[OrvOutputBgr24], destination, source, width, height, pattern);
}

Result raw12ToBgr16(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw12ToBgr48, destination, source, width, height, pattern);
}

Result raw16ToBgr(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw16[OrvOutputBgr24], destination, source, width, height, pattern);
}

Result raw16ToBgr16(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw16ToBgr48, destination, source, width, height, pattern);
}

Result raw16ToY16(void* destination, const void* source, u32 width, u32 height, i32 pattern) {
    return convertMosaic(bayerKernels().raw16ToMono16, destination, source, width, height, pattern);
}

} // namespace kel

// ---- The current face

OrvErrorType OrvRaw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToBgr(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToBgr3x3(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToBgrIntLCAA(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToBgrIntLCAAV(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToBgrIntYUV422(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height,
                               int32_t pattern) {
    return kel::orv(kel::raw8ToBgrMono(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw8ToY8(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw12ToBgr(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw12ToBgr16(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw16ToBgr(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw16ToBgr16(destination, source, width, height, pattern));
}

OrvErrorType OrvRaw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return kel::orv(kel::raw16ToY16(destination, source, width, height, pattern));
}
