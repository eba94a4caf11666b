#include "mono/converters.h"

#include <algorithm>

#include "legacy/words.h"
#include "support/faces.h"

namespace kel {

namespace {

// The left shift that brings a sample to the top of its word. No bits are missing below eight.
constexpr int leftShift(const WordLayout& layout) {
    return layout.lsbAligned ? 16 - static_cast<int>(std::max(layout.bits, 8u)) : 0;
}

Refusal convertWords(const ShiftedRun (&kernels)[2], void* destination, const void* source, u64 pixels,
                     const WordLayout& layout) {
    const Refusal refusal = firstRefusal({{destination, Refusal::destination},
                                          {source, Refusal::source},
                                          {pixels > 0, Refusal::count},
                                          {layout.swap <= 1, Refusal::byteOrder},
                                          {layout.lsbAligned <= 1, Refusal::alignment},
                                          {layout.bits <= 16, Refusal::bits}});
    return unlessRefused(refusal,
                         [&] { kernels[layout.swap](bytes(destination), bytes(source), pixels, leftShift(layout)); });
}

constexpr bool isEven(i32 width) { return width % 2 == 0; }

// A size of zero or less holds no pixels.
constexpr size_t pixelsOf(i64 width, i64 height) { return static_cast<size_t>(std::max<i64>(width * height, 0)); }

} // namespace

Refusal convertWordsToY8(void* destination, const void* source, u64 pixels, const WordLayout& layout) {
    return convertWords(monoKernels().y16ToY8, destination, source, pixels, layout);
}

Refusal convertWordsToBgr(void* destination, const void* source, u64 pixels, const WordLayout& layout) {
    return convertWords(monoKernels().y16ToBgr, destination, source, pixels, layout);
}

Refusal unpack12To16(void* destination, const void* source, i32 width, u32 height) {
    const Refusal refusal =
        firstRefusal({{isEven(width), Refusal::width}, {destination, Refusal::destination}, {source, Refusal::source}});
    return unlessRefused(
        refusal, [&] { monoKernels().packed12ToY16(bytes(destination), bytes(source), pixelsOf(width, height)); });
}

Refusal unpack12To8(void* destination, const void* source, i32 width, i32 height) {
    const Refusal refusal =
        firstRefusal({{destination, Refusal::destination}, {source, Refusal::source}, {isEven(width), Refusal::width}});
    return unlessRefused(refusal, [&] {
        monoKernels().y12[OrvOutputMono8](bytes(destination), bytes(source), pixelsOf(width, height));
    });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvY16ToY8(void* destination, const void* source, uint32_t n) {
    return orv(convert(y16ToY8, {destination, source, n, OrvOutputMono8}));
}

OrvErrorType OrvY16ToY8_MMX(void* destination, const void* source, uint32_t n) {
    return orv(convert(y16ToY8InEights, {destination, source, n, OrvOutputMono8}));
}

OrvErrorType OrvY16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                          uint32_t bits) {
    return orv(convertWordsToY8(destination, source, n, {swap, lsbAligned, bits}));
}

OrvErrorType OrvY16ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convertWordsToBgr(destination, source, n, bigEndianWords));
}

OrvErrorType OrvY16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                           uint32_t bits) {
    return orv(convertWordsToBgr(destination, source, n, {swap, lsbAligned, bits}));
}

OrvErrorType OrvY8ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convert(y8, {destination, source, n, OrvOutputBgr24}));
}

OrvErrorType OrvPacked12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height) {
    const Refusal refusal = unpack12To16(destination, source, width, height);
    // An odd width is answered in the legacy face's words.
    return refusal == Refusal::width ? static_cast<OrvErrorType>(legacyParameter(3)) : orv(refusal);
}

OrvErrorType OrvPacked12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height) {
    return orv(unpack12To8(destination, source, width, height));
}
