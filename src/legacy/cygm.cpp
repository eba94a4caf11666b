#include "cygm/cygm.h"

#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

uint32_t ZEB_IRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                     OrvOutputCode output, uint32_t) {
    return zeb(convert(cygm8, {destination, source, width, height, output}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMToBGR(void* destination, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(cygm8, {destination, source, width, height, OrvOutputBgr24}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMToMono(void* destination, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(cygm8, {destination, source, width, height, OrvOutputMono8}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMImageTransform_Bin(void* destination, const void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, uint32_t) {
    return zeb(convert(cygm8Binned, {destination, source, width, height, output}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMToBGR_Bin(void* destination, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(cygm8Binned, {destination, source, width, height, OrvOutputBgr24}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, uint32_t) {
    return zeb(convert(cygm8By3x3, {destination, source, width, height, output}), familyArguments);
}

uint32_t ZEB_IRaw8CYGMToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height) {
    return zeb(convert(cygm8By3x3, {destination, source, width, height, OrvOutputBgr24}), familyArguments);
}
