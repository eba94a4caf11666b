#include "mono/mono.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_Y8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(y8ImageTransform(destination, source, n, output, EmptyRun::allowed));
}

uint32_t ZEB_Y16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    if (destination && source && output > OrvOutputMono8Rec709) return zeb(notImplemented);
    return zeb(y16BigEndianImageTransform(destination, source, n, output, EmptyRun::allowed));
}

uint32_t ZEB_Y16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                 const OrvShiftRecord* shift) {
    return zeb(y16ImageTransformEx(destination, source, n, output, shift));
}

uint32_t ZEB_Y12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(y12ImageTransform(destination, source, n, output));
}

uint32_t ZEB_Y10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(y10pImageTransform(destination, source, n, output));
}

uint32_t ZEB_Y12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output) {
    return zeb(y12pImageTransform(destination, source, n, output));
}
