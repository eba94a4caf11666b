#include "bayer/direct.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_Raw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgr(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgr3x3(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgrIntLCAA(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgrIntLCAAV(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgrIntYUV422(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToBgrMono(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw8ToY8(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw12ToBgr(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw12ToBgr16(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw16ToBgr(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw16ToBgr16(destination, source, width, height, pattern));
}

uint32_t ZEB_Raw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern) {
    return zeb(raw16ToY16(destination, source, width, height, pattern));
}
