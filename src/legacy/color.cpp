#include "color/color.h"

#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

uint32_t ZEB_RGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(rgb8, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_BGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(bgr8, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_RGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(rgba8, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_BGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(bgra8, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_RGB8ToY8(void* destination, const void* source, uint32_t n) {
    return zeb(convert(rgb8ToY8, {destination, source, n, OrvOutputMono8}), runArguments);
}

uint32_t ZEB_RGB8ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convertRgb8ToBgr(destination, source, n), runArguments);
}

uint32_t ZEB_YUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(yuv411, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_YUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(yuv422, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_YUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(convert(yuv444, {destination, source, n, output}), runArguments);
}

uint32_t ZEB_YUV411ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convert(yuv411, {destination, source, n, OrvOutputBgr24}), runArguments);
}

uint32_t ZEB_YUV422ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convert(yuv422, {destination, source, n, OrvOutputBgr24}), runArguments);
}

uint32_t ZEB_YUV444ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(convert(yuv444ToBgr, {destination, source, n, OrvOutputBgr24}), runArguments);
}
