// The colour sources. Arguments and refusals: orvella/orv.h.
#pragma once
#include "color/color_kernels.h"
#include "orvella/orv.h"
#include "support/run_family.h"

namespace kel {

constexpr RunFamily rgb8{[](u32 output) { return colorKernels().rgb8[output]; }};
constexpr RunFamily bgr8{[](u32 output) { return colorKernels().bgr8[output]; }};
constexpr RunFamily rgba8{[](u32 output) { return colorKernels().rgba8[output]; }};
constexpr RunFamily bgra8{[](u32 output) { return colorKernels().bgra8[output]; }};

constexpr RunFamily yuv411{[](u32 output) { return colorKernels().yuv411[output]; }, {.multipleOf = 4, .least = 1}};
constexpr RunFamily yuv422{[](u32 output) { return colorKernels().yuv422[output]; }, {.multipleOf = 2, .least = 1}};
constexpr RunFamily yuv444{[](u32 output) { return colorKernels().yuv444[output]; }};

// One-call converters with a rule of their own.
constexpr RunFamily rgb8ToY8{[](u32) { return colorKernels().rgb8ToY8; }};
constexpr RunFamily yuv444ToBgr{yuv444.kernel, notEmpty};
Refusal convertRgb8ToBgr(void* destination, const void* source, u32 pixels);

} // namespace kel
