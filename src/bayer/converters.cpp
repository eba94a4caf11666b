#include "bayer/converters.h"

#include "support/faces.h"

using namespace kel;

OrvErrorType OrvRaw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8By3x3, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8ByLcaa, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8ByLcaav, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8ByYuv422, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height,
                               int32_t pattern) {
    return orv(convert(raw8AsGrey, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw8, {destination, source, width, height, OrvOutputMono8, pattern}));
}

OrvErrorType OrvRaw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw12Packed, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw12PackedWhole, {destination, source, width, height, OrvOutputBgr48, pattern}));
}

OrvErrorType OrvRaw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw16, {destination, source, width, height, OrvOutputBgr24, pattern}));
}

OrvErrorType OrvRaw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw16Whole, {destination, source, width, height, OrvOutputBgr48, pattern}));
}

OrvErrorType OrvRaw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return orv(convert(raw16Whole, {destination, source, width, height, OrvOutputMono16, pattern}));
}
