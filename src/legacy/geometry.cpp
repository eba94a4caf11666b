#include "geometry/geometry.h"

#include "legacy/words.h"
#include "orvella/zeb.h"

using namespace kel;

namespace {

// What both faces of resampling answer to a good call.
constexpr uint32_t oneOnSuccess(Refusal refusal, std::span<const Refusal> arguments) {
    return refusal == Refusal::none ? 1 : zeb(refusal, arguments);
}

constexpr Refusal sisArguments[] = {Refusal::destination, Refusal::source, Refusal::width, Refusal::height,
                                    Refusal::index,       Refusal::line,   Refusal::kind};

} // namespace

uint32_t ZEB_Flip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding) {
    constexpr Refusal arguments[] = {Refusal::image, Refusal::width, Refusal::height, Refusal::mode, Refusal::coding};
    return zeb(flip(image, width, height, mode, coding), arguments);
}

uint32_t ZEB_FlipVertical(void* image, uint32_t lineLength, uint32_t height) {
    constexpr Refusal arguments[] = {Refusal::image, Refusal::lineLength, Refusal::height};
    return zeb(flipVertical(image, lineLength, height), arguments);
}

uint32_t ZEB_ResampleScanlinesEx(void* destination, const void* source, int32_t destinationLength,
                                 int32_t destinationPitch, int32_t sourceLength, int32_t sourcePitch, int32_t lines,
                                 uint32_t bytesPerPixel, uint32_t mode, float a, float b) {
    constexpr Refusal arguments[] = {
        Refusal::destination,   Refusal::source, unchecked, unchecked,     unchecked, unchecked, unchecked,
        Refusal::bytesPerPixel, Refusal::mode,   unchecked, Refusal::ratio};
    return oneOnSuccess(
        resampleScanlines(destination, source,
                          {destinationLength, destinationPitch, sourceLength, sourcePitch, lines, bytesPerPixel}, mode,
                          a, b),
        arguments);
}

uint32_t ZEB_ResampleScanlines(void* destination, const void* source, int32_t destinationLength, int32_t sourceLength,
                               int32_t lines, uint32_t bytesPerPixel, uint32_t mode, float a, float b) {
    constexpr Refusal arguments[] = {Refusal::destination,   Refusal::source, unchecked, unchecked,     unchecked,
                                     Refusal::bytesPerPixel, Refusal::mode,   unchecked, Refusal::ratio};
    return oneOnSuccess(resampleScanlines(destination, source,
                                          dense(destinationLength, sourceLength, lines, bytesPerPixel), mode, a, b),
                        arguments);
}

uint32_t ZEB_GetResampledScanlineLength(uint32_t* result, int32_t sourceLength, float a, float b) {
    constexpr Refusal arguments[] = {Refusal::destination, unchecked, unchecked, Refusal::ratio};
    return zeb(resampledScanlineLength(result, sourceLength, a, b), arguments);
}

uint32_t ZEB_InterlacedToProgressive(void* destination, const void* source, uint32_t lineLength, uint32_t lines) {
    constexpr Refusal arguments[] = {Refusal::destination, Refusal::source, unchecked, Refusal::lines};
    return zeb(interlacedToProgressive(destination, source, lineLength, lines), arguments);
}

uint32_t ZEB_GetSIS(void* destination, const void* image, uint32_t width, uint32_t height, uint32_t formatIndex,
                    int32_t line, int32_t kind) {
    return zeb(extractSis(destination, image, width, height, formatIndex, line, kind), sisArguments);
}
