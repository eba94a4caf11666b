#include "cygm/cygm.h"

#include "support/faces.h"

namespace kel {

Refusal convert(const CygmFamily& family, const CygmCall& call) {
    const CygmMosaic kernel = family.kernel(call.output);
    const u32 columns = call.output == OrvOutputYuv422 ? 2 * family.columnsPerPixel : 2; // that belong together
    const Refusal refusal = firstRefusal({{call.destination, Refusal::destination},
                                          {call.source, Refusal::source},
                                          {call.width >= family.leastWidth && call.width % 2 == 0, Refusal::width},
                                          {call.height > 0 && call.height % 4 == 0, Refusal::height},
                                          {call.width % columns == 0, Refusal::width},
                                          {kernel != nullptr, Refusal::notOffered}});
    return unlessRefused(refusal,
                         // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): refused where it is null
                         [&] { kernel(bytes(call.destination), bytes(call.source), call.width, call.height); });
}

} // namespace kel

using namespace kel;

OrvErrorType OrvIRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, uint32_t) {
    return orv(convert(cygm8, {destination, source, width, height, output}));
}

OrvErrorType OrvIRaw8CYGMToBGR(void* destination, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(cygm8, {destination, source, width, height, OrvOutputBgr24}));
}

OrvErrorType OrvIRaw8CYGMToMono(void* destination, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(cygm8, {destination, source, width, height, OrvOutputMono8}));
}

OrvErrorType OrvIRaw8CYGMImageTransform_Bin(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, uint32_t) {
    return orv(convert(cygm8Binned, {destination, source, width, height, output}));
}

OrvErrorType OrvIRaw8CYGMToBGR_Bin(void* destination, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(cygm8Binned, {destination, source, width, height, OrvOutputBgr24}));
}

OrvErrorType OrvIRaw8CYGMImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, uint32_t) {
    return orv(convert(cygm8By3x3, {destination, source, width, height, output}));
}

OrvErrorType OrvIRaw8CYGMToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height) {
    return orv(convert(cygm8By3x3, {destination, source, width, height, OrvOutputBgr24}));
}
