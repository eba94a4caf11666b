// The Bayer mosaics. Arguments and refusals: orvella/orv.h.
#pragma once
#include "bayer/bayer_kernels.h"
#include "bayer/mosaic_family.h"
#include "orvella/orv.h"

namespace kel {

constexpr MosaicFamily raw8{[](const BayerKernels& kernels, u32 output) { return kernels.raw8[output]; }};
constexpr MosaicFamily raw8By3x3{[](const BayerKernels& kernels, u32 output) { return kernels.raw8_3x3[output]; }, 2};
constexpr FilteredFamily raw8ByLcaa{[](const BayerKernels& kernels, u32 output) { return kernels.raw8Lcaa[output]; }};
constexpr FilteredFamily raw8ByLcaav{[](const BayerKernels& kernels, u32 output) { return kernels.raw8Lcaav[output]; }};
constexpr FilteredFamily raw8ByYuv422{
    [](const BayerKernels& kernels, u32 output) { return kernels.raw8Yuv422[output]; }};

// By 2x2
constexpr MosaicFamily raw10p{[](const BayerKernels& kernels, u32 output) { return kernels.raw10p[output]; }};
constexpr MosaicFamily raw12p{[](const BayerKernels& kernels, u32 output) { return kernels.raw12p[output]; }};
constexpr MosaicFamily raw12Packed{[](const BayerKernels& kernels, u32 output) { return kernels.raw12[output]; }};
constexpr MosaicFamily raw16{[](const BayerKernels& kernels, u32 output) { return kernels.raw16[output]; }};

// 16-bit words of either byte order, shifted to the top, by 2x2. The record has the pattern.
Refusal convertRaw16(void* destination, const void* source, u32 width, u32 height, u32 output,
                     const OrvShiftRecord* record);

} // namespace kel
