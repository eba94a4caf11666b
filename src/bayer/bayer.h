// The Bayer mosaics. Arguments and refusals: orvella/orv.h.
#pragma once
#include "bayer/bayer_kernels.h"
#include "bayer/mosaic_family.h"
#include "orvella/orv.h"

namespace kel {

constexpr MosaicFamily raw8{[](u32 output) { return bayerKernels().raw8[output]; }};
constexpr MosaicFamily raw8By3x3{[](u32 output) { return bayerKernels().raw8_3x3[output]; }};
constexpr FilteredFamily raw8ByLcaa{[](u32 output) { return bayerKernels().raw8Lcaa[output]; }};
constexpr FilteredFamily raw8ByLcaav{[](u32 output) { return bayerKernels().raw8Lcaav[output]; }};
constexpr FilteredFamily raw8ByYuv422{[](u32 output) { return bayerKernels().raw8Yuv422[output]; }};

// By 2x2
constexpr MosaicFamily raw10p{[](u32 output) { return bayerKernels().raw10p[output]; }};
constexpr MosaicFamily raw12p{[](u32 output) { return bayerKernels().raw12p[output]; }};
constexpr MosaicFamily raw12Packed{[](u32 output) { return bayerKernels().raw12[output]; }};
constexpr MosaicFamily raw16{[](u32 output) { return bayerKernels().raw16[output]; }};

// 16-bit words of either byte order, shifted to the top, by 2x2. The record has the pattern.
Refusal convertRaw16(void* destination, const void* source, u32 width, u32 height, u32 output,
                     const OrvShiftRecord* record);

} // namespace kel
