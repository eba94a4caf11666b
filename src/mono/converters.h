// The one-call converters of mono data: a fixed output. Arguments and refusals: orvella/orv.h.
#pragma once
#include "mono/mono.h"

namespace kel {

constexpr RunFamily y16ToY8{
    [](u32) -> Run { return [](u8* d, const u8* s, size_t n) { monoKernels().y16ToY8[1](d, s, n, 0); }; }};
constexpr RunFamily y16ToY8InEights{y16ToY8.kernel, {.multipleOf = 8, .least = 1}};

// How samples lie in 16-bit words, as a caller says it.
struct WordLayout {
    u32 swap;       // 1: big-endian
    u32 lsbAligned; // 1: in the low `bits` bits; 0: at the top
    u32 bits;
};
constexpr WordLayout bigEndianWords{.swap = 1, .lsbAligned = 0, .bits = 16};

Refusal convertWordsToY8(void* destination, const void* source, u64 pixels, const WordLayout& layout);
Refusal convertWordsToBgr(void* destination, const void* source, u64 pixels, const WordLayout& layout);

Refusal unpack12To16(void* destination, const void* source, i32 width, u32 height);
Refusal unpack12To8(void* destination, const void* source, i32 width, i32 height);

} // namespace kel
