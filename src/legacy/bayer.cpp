#include "bayer/bayer.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_Raw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                OrvOutputCode output, int32_t pattern) {
    return zeb(raw8ImageTransform(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                    OrvOutputCode output, int32_t pattern) {
    return zeb(raw8ImageTransform3x3(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, int32_t pattern) {
    return zeb(raw8ImageTransformIntLCAA(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, int32_t pattern) {
    return zeb(raw8ImageTransformIntLCAAV(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                          OrvOutputCode output, int32_t pattern) {
    return zeb(raw8ImageTransformIntYUV422(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                  OrvOutputCode output, int32_t pattern) {
    return zeb(raw10pImageTransform(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                 OrvOutputCode output, int32_t pattern) {
    return zeb(raw12ImageTransform(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                  OrvOutputCode output, int32_t pattern) {
    return zeb(raw12pImageTransform(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                 OrvOutputCode output, int32_t pattern) {
    return zeb(raw16ImageTransform(destination, source, width, height, output, pattern));
}

uint32_t ZEB_Raw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                   OrvOutputCode output, const OrvShiftRecord* record) {
    return zeb(raw16ImageTransformEx(destination, source, width, height, output, record));
}
