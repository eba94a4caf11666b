// Complementary-colour mosaics. Arguments and refusals: orvella/orv.h.
#pragma once
#include "cygm/cygm_kernels.h"
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

struct CygmFamily {
    CygmMosaic (*kernel)(u32 output);
    u32 leastWidth = 2;
    u32 columnsPerPixel = 1;
};

struct CygmCall {
    void* destination;
    const void* source;
    u32 width, height;
    u32 output;
};

constexpr CygmFamily cygm8{[](u32 output) { return cygmKernels().cygm8[output]; }};
constexpr CygmFamily cygm8Binned{[](u32 output) { return cygmKernels().binned[output]; }, 2, 2};
constexpr CygmFamily cygm8By3x3{[](u32 output) { return cygmKernels().by3x3[output]; }, 4};

Refusal convert(const CygmFamily& family, const CygmCall& call);

} // namespace kel
