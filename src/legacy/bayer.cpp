#include "bayer/bayer.h"

#include "bayer/converters.h"
#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

// ---- The families

uint32_t ZEB_Raw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw8, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw8By3x3, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw8ByLcaa, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw8ByLcaav, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                          OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw8ByYuv422, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                  OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw10p, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                 OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw12Packed, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                  OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw12p, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                 OrvOutputCode output, int32_t pattern) {
    return zeb(convert(raw16, {destination, source, width, height, output, pattern}), familyArguments);
}

uint32_t ZEB_Raw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                   OrvOutputCode output, const OrvShiftRecord* record) {
    return zeb(convertRaw16(destination, source, width, height, output, record), shiftedFamilyArguments);
}

// ---- The one-call converters

uint32_t ZEB_Raw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8By3x3, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8ByLcaa, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8ByLcaav, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8ByYuv422, {destination, source, width, height, OrvOutputBgr24, pattern}),
               converterArguments);
}

uint32_t ZEB_Raw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8AsGrey, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw8, {destination, source, width, height, OrvOutputMono8, pattern}), converterArguments);
}

uint32_t ZEB_Raw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw12Packed, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw12PackedWhole, {destination, source, width, height, OrvOutputBgr48, pattern}),
               converterArguments);
}

uint32_t ZEB_Raw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw16, {destination, source, width, height, OrvOutputBgr24, pattern}), converterArguments);
}

uint32_t ZEB_Raw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw16Whole, {destination, source, width, height, OrvOutputBgr48, pattern}), converterArguments);
}

uint32_t ZEB_Raw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(convert(raw16Whole, {destination, source, width, height, OrvOutputMono16, pattern}), converterArguments);
}
