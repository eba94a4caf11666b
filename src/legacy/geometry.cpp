#include "geometry/geometry.h"
#include "orvella/zeb.h"
#include "support/faces.h"

using namespace kel;

namespace {

// What both faces of resampling answer to a good call.
constexpr uint32_t oneOnSuccess(Result result) { return result.ok() ? 1 : zeb(result); }

} // namespace

uint32_t ZEB_Flip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding) {
    return zeb(flip(image, width, height, mode, coding));
}

uint32_t ZEB_FlipVertical(void* image, uint32_t lineLength, uint32_t height) {
    return zeb(flipVertical(image, lineLength, height));
}

uint32_t ZEB_ResampleScanlinesEx(void* destination, const void* source, int32_t destinationLength,
                                 int32_t destinationPitch, int32_t sourceLength, int32_t sourcePitch, int32_t lines,
                                 uint32_t bytesPerPixel, uint32_t mode, float a, float b) {
    return oneOnSuccess(resampleScanlinesEx(
        destination, source, {destinationLength, destinationPitch, sourceLength, sourcePitch, lines, bytesPerPixel},
        mode, a, b));
}

uint32_t ZEB_ResampleScanlines(void* destination, const void* source, int32_t destinationLength, int32_t sourceLength,
                               int32_t lines, uint32_t bytesPerPixel, uint32_t mode, float a, float b) {
    return oneOnSuccess(
        resampleScanlines(destination, source, destinationLength, sourceLength, lines, bytesPerPixel, mode, a, b));
}

uint32_t ZEB_GetResampledScanlineLength(uint32_t* result, int32_t sourceLength, float a, float b) {
    return zeb(resampledScanlineLength(result, sourceLength, a, b));
}

uint32_t ZEB_InterlacedToProgressive(void* destination, const void* source, uint32_t lineLength, uint32_t lines) {
    return zeb(interlacedToProgressive(destination, source, lineLength, lines));
}

uint32_t ZEB_GetSIS(void* destination, const void* image, uint32_t width, uint32_t height, uint32_t formatIndex,
                    int32_t line, int32_t kind) {
    return zeb(extractSis(destination, image, width, height, formatIndex, line, kind));
}
