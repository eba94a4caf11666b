// The one-call converters of mosaics with a colour-correction object. Arguments and refusals: orvella/orv.h.
#pragma once
#include "bayer/converters.h"
#include "correction/correction_kernels.h"
#include "correction/registry.h"

namespace kel {

struct CorrectedFamily {
    u32 kind;                              // of the object that it takes
    const MosaicFamily& plain;             // without an object
    CorrectedMosaic (*kernel)(u32 output); // of the outputs that there are converters for
};

template <u32 output>
void correctBigEndian16(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const Matrix& matrix) {
    correctionKernels().raw16Shifted[1][output](d, s, width, height, phase, 0, matrix);
}

constexpr CorrectedFamily raw8Corrected{kindInt8, raw8, [](u32 output) { return correctionKernels().raw8[output]; }};
constexpr CorrectedFamily raw12PackedCorrected{kindInt8, raw12Packed,
                                               [](u32) { return correctionKernels().raw12ToBgr24; }};
constexpr CorrectedFamily raw12PackedWholeCorrected{kindInt16, raw12PackedWhole,
                                                    [](u32 output) { return correctionKernels().raw12[output]; }};
constexpr CorrectedFamily raw16WholeCorrected{kindInt16, raw16Whole, [](u32 output) -> CorrectedMosaic {
                                                  return output == OrvOutputBgr48 ? correctBigEndian16<OrvOutputBgr48>
                                                                                  : correctBigEndian16<OrvOutputMono16>;
                                              }};

Refusal convert(const CorrectedFamily& family, const MosaicCall& call, ColorCorrectionHandle handle);

} // namespace kel
