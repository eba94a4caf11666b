#include "color/color.h"
#include "support/faces.h"

using namespace kel;

OrvErrorType OrvYUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(yuv411, {destination, source, n, output}));
}

OrvErrorType OrvYUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(yuv422, {destination, source, n, output}));
}

OrvErrorType OrvYUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return orv(convert(yuv444, {destination, source, n, output}));
}

OrvErrorType OrvYUV411ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convert(yuv411, {destination, source, n, OrvOutputBgr24}));
}

OrvErrorType OrvYUV422ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convert(yuv422, {destination, source, n, OrvOutputBgr24}));
}

OrvErrorType OrvYUV444ToBGR(void* destination, const void* source, uint32_t n) {
    return orv(convert(yuv444ToBgr, {destination, source, n, OrvOutputBgr24}));
}
