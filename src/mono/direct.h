// The one-call converters of mono data. Arguments and refusals: orvella/orv.h.
#pragma once
#include "mono/mono.h"

namespace kel {

// How samples lie in 16-bit words, as a caller says it.
struct WordLayout {
    u32 swap;       // 1: big-endian
    u32 lsbAligned; // 1: in the low `bits` bits; 0: at the top
    u32 bits;
};

Result y16ToY8(void* destination, const void* source, u64 pixels);
Result y16ToY8InEights(void* destination, const void* source, u64 pixels, EmptyRun empty = EmptyRun::refused);
Result y16ToY8Ex(void* destination, const void* source, u64 pixels, const WordLayout& layout);
Result y16ToBgr(void* destination, const void* source, u64 pixels);
Result y16ToBgrEx(void* destination, const void* source, u64 pixels, const WordLayout& layout);
Result y8ToBgr(void* destination, const void* source, u64 pixels);
Result packed12To16(void* destination, const void* source, i32 width, u32 height);
Result packed12To8(void* destination, const void* source, i32 width, i32 height);

} // namespace kel
