// Sources that only the one-call converters of mosaics know, by 2x2; the others are those of bayer/bayer.h. With colour
// correction: correction/converters.h.
#pragma once
#include "bayer/bayer.h"

namespace kel {

// One output each: luma as a grey BGR24; all bits to BGR48; big-endian words to BGR48 or Mono16.
constexpr MosaicFamily raw8AsGrey{[](const BayerKernels& kernels, u32) { return kernels.raw8ToGreyBgr24; }};
constexpr MosaicFamily raw12PackedWhole{[](const BayerKernels& kernels, u32) { return kernels.raw12ToBgr48; }};
constexpr MosaicFamily raw16Whole{[](const BayerKernels& kernels, u32 output) {
    return output == OrvOutputBgr48 ? kernels.raw16ToBgr48 : kernels.raw16ToMono16;
}};

} // namespace kel
