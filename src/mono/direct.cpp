#include "mono/direct.h"

#include <algorithm>

#include "mono/mono_kernels.h"
#include "support/faces.h"

namespace kel {

namespace {

constexpr WordLayout bigEndianWords{.swap = 1, .lsbAligned = 0, .bits = 16};

Result checkRun(const void* destination, const void* source, bool countIsGood) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    return countIsGood ? success : badArgument(3);
}

Result checkLayout(const WordLayout& layout) {
    if (layout.swap > 1) return badArgument(4);
    if (layout.lsbAligned > 1) return badArgument(5);
    return layout.bits > 16 ? badArgument(6) : success;
}

// The left shift that brings a sample to the top of its word. No bits are missing below eight.
constexpr int shiftOf(const WordLayout& layout) {
    return layout.lsbAligned ? 16 - static_cast<int>(std::max(layout.bits, 8u)) : 0;
}

void convert(const ShiftedRun (&kernels)[2], void* destination, const void* source, u64 pixels,
             const WordLayout& layout) {
    kernels[layout.swap](static_cast<u8*>(destination), static_cast<const u8*>(source), pixels, shiftOf(layout));
}

Result convertChecked(const ShiftedRun (&kernels)[2], void* destination, const void* source, u64 pixels,
                      const WordLayout& layout) {
    if (const Result refusal = checkRun(destination, source, pixels > 0); !refusal.ok()) return refusal;
    if (const Result refusal = checkLayout(layout); !refusal.ok()) return refusal;
    convert(kernels, destination, source, pixels, layout);
    return success;
}

constexpr bool isOdd(i32 width) { return width & 1; }

// A size of zero or less holds no pixels.
void unpack(Run kernel, void* destination, const void* source, i64 width, i64 height) {
    const i64 pixels = std::max<i64>(width * height, 0);
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), static_cast<size_t>(pixels));
}

} // namespace

Result y16ToY8(void* destination, const void* source, u64 pixels) {
    if (const Result refusal = checkRun(destination, source, true); !refusal.ok()) return refusal;
    convert(monoKernels().y16ToY8, destination, source, pixels, bigEndianWords);
    return success;
}

Result y16ToY8InEights(void* destination, const void* source, u64 pixels, EmptyRun empty) {
    const bool countIsGood = pixels % 8 == 0 && (pixels > 0 || empty == EmptyRun::allowed);
    if (const Result refusal = checkRun(destination, source, countIsGood); !refusal.ok()) return refusal;
    return y16ToY8(destination, source, pixels);
}

Result y16ToY8Ex(void* destination, const void* source, u64 pixels, const WordLayout& layout) {
    return convertChecked(monoKernels().y16ToY8, destination, source, pixels, layout);
}

Result y16ToBgr(void* destination, const void* source, u64 pixels) {
    return y16ToBgrEx(destination, source, pixels, bigEndianWords);
}

Result y16ToBgrEx(void* destination, const void* source, u64 pixels, const WordLayout& layout) {
    return convertChecked(monoKernels().y16ToBgr, destination, source, pixels, layout);
}

Result y8ToBgr(void* destination, const void* source, u64 pixels) {
    return y8ImageTransform(destination, source, pixels, OrvOutputBgr24);
}

Result packed12To16(void* destination, const void* source, i32 width, u32 height) {
    if (isOdd(width)) return badArgument(3);
    if (const Result refusal = checkRun(destination, source, true); !refusal.ok()) return refusal;
    unpack(monoKernels().packed12ToY16, destination, source, width, height);
    return success;
}

Result packed12To8(void* destination, const void* source, i32 width, i32 height) {
    if (const Result refusal = checkRun(destination, source, !isOdd(width)); !refusal.ok()) return refusal;
    unpack(monoKernels().y12[OrvOutputMono8], destination, source, width, height);
    return success;
}

} // namespace kel

// ---- The current face

OrvErrorType OrvY16ToY8(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::y16ToY8(destination, source, n));
}

OrvErrorType OrvY16ToY8_MMX(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::y16ToY8InEights(destination, source, n));
}

OrvErrorType OrvY16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                          uint32_t bits) {
    return kel::orv(kel::y16ToY8Ex(destination, source, n, {swap, lsbAligned, bits}));
}

OrvErrorType OrvY16ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::y16ToBgr(destination, source, n));
}

OrvErrorType OrvY16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                           uint32_t bits) {
    return kel::orv(kel::y16ToBgrEx(destination, source, n, {swap, lsbAligned, bits}));
}

OrvErrorType OrvY8ToBGR(void* destination, const void* source, uint32_t n) {
    return kel::orv(kel::y8ToBgr(destination, source, n));
}

OrvErrorType OrvPacked12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height) {
    const kel::Result result = kel::packed12To16(destination, source, width, height);
    // An odd width has always been answered in the legacy face's words.
    return result.argument == 3 ? static_cast<OrvErrorType>(kel::zeb(result)) : kel::orv(result);
}

OrvErrorType OrvPacked12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height) {
    return kel::orv(kel::packed12To8(destination, source, width, height));
}
