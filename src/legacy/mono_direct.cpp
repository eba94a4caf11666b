#include "mono/direct.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

uint32_t ZEB_Y16ToY8(void* destination, const void* source, uint32_t n) { return zeb(y16ToY8(destination, source, n)); }

uint32_t ZEB_Y16ToY8_MMX(void* destination, const void* source, uint32_t n) {
    return zeb(y16ToY8InEights(destination, source, n, EmptyRun::allowed));
}

uint32_t ZEB_Y16ToY8_MT(void*, const void*, uint32_t) { return 0x88000014; }

uint32_t ZEB_Y16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                       uint32_t bits) {
    return zeb(y16ToY8Ex(destination, source, n, {swap, lsbAligned, bits}));
}

uint32_t ZEB_Y16ToBGR(void* destination, const void* source, uint32_t n) {
    return zeb(y16ToBgr(destination, source, n));
}

uint32_t ZEB_Y16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                        uint32_t bits) {
    return zeb(y16ToBgrEx(destination, source, n, {swap, lsbAligned, bits}));
}

uint32_t ZEB_Y8ToBGR(void* destination, const void* source, uint32_t n) { return zeb(y8ToBgr(destination, source, n)); }

uint32_t ZEB_Packed12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height) {
    return zeb(packed12To16(destination, source, width, height));
}

uint32_t ZEB_Packed12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height) {
    return zeb(packed12To8(destination, source, width, height));
}
