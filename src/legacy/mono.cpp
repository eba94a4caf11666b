#include "mono/mono.h"
#include "legacy/words.h"
#include "mono/converters.h"
#include "orvella/zeb.h"

using namespace kel;

namespace {

// Where this face differs: a count of 0 is no fault, and 16 bits are not copied.
constexpr RunFamily y8OrNothing{y8.kernel};
constexpr RunFamily y16OrNothing{
    [](u32 output) { return output <= OrvOutputMono8Rec709 ? y16BigEndian.kernel(output) : nullptr; }};
constexpr RunFamily y16ToY8InEightsOrNothing{y16ToY8.kernel, {.multipleOf = 8}};

constexpr Refusal wordsArguments[] = {Refusal::destination, Refusal::source,    Refusal::count,
                                      Refusal::byteOrder,   Refusal::alignment, Refusal::bits};
constexpr Refusal unpackArguments[] = {Refusal::destination, Refusal::source, Refusal::width};

} // namespace

// ---- The families

uint32_t ZEB_Y8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(y8OrNothing, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_Y16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(y16OrNothing, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_Y16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                 const OrvShiftRecord* shift) {
    return zeb(convertY16({destination, source, n, output}, shift), runArguments);
}

uint32_t ZEB_Y12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(y12Packed, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_Y10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(y10p, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_Y12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(y12p, {destination, source, n, output}), runArguments);
}

// ---- The one-call converters

uint32_t ZEB_Y16ToY8(void* destination, const void* source, uint32_t n) {
    return zeb(convert(y16ToY8, {destination, source, n, OrvOutputMono8}), runArguments);
}

uint32_t ZEB_Y16ToY8_MMX(void* destination, const void* source, uint32_t n) {
    return zeb(convert(y16ToY8InEightsOrNothing, {destination, source, n, OrvOutputMono8}), runArguments);
}

uint32_t ZEB_Y16ToY8_MT(void*, const void*, uint32_t) { return legacyNotAvailable; }

uint32_t ZEB_Y16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                       uint32_t bits) {
    return zeb(convertWordsToY8(destination, source, n, {swap, lsbAligned, bits}), wordsArguments);
}

uint32_t ZEB_Y16ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convertWordsToBgr(destination, source, n, bigEndianWords), wordsArguments);
}

uint32_t ZEB_Y16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                        uint32_t bits) {
    return zeb(convertWordsToBgr(destination, source, n, {swap, lsbAligned, bits}), wordsArguments);
}

uint32_t ZEB_Y8ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convert(y8, {destination, source, n, OrvOutputBgr24}), runArguments);
}

uint32_t ZEB_Packed12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height) {
    return zeb(unpack12To16(destination, source, width, height), unpackArguments);
}

uint32_t ZEB_Packed12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height) {
    return zeb(unpack12To8(destination, source, width, height), unpackArguments);
}
