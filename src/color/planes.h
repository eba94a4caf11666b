// Colour sources split into planes. Arguments and refusals: orvella/orv.h.
#pragma once
#include "color/color_kernels.h"
#include "support/refusal.h"

namespace kel {

struct PlaneFamily {
    const PlaneKernels& (*kernels)();
    u32 widthMultiple = 1;
    u32 leastSize = 0; // of the width and of the height
};

struct PlaneCall {
    void *red, *green, *blue, *luma; // luma: may be null
    const void* source;
    u32 width, height;
};

constexpr PlaneFamily rgb8Planes{[]() -> const PlaneKernels& { return colorKernels().rgb8Planes; }};
constexpr PlaneFamily yuv411Planes{[]() -> const PlaneKernels& { return colorKernels().yuv411Planes; }, 4};
constexpr PlaneFamily yuv422Planes{[]() -> const PlaneKernels& { return colorKernels().yuv422Planes; }, 2};
constexpr PlaneFamily yuv444Planes{[]() -> const PlaneKernels& { return colorKernels().yuv444Planes; }};

// The functions without luma mind the size.
constexpr PlaneFamily yuv422ColourPlanes{yuv422Planes.kernels, 2, 2};
constexpr PlaneFamily yuv444ColourPlanes{yuv444Planes.kernels, 1, 1};

Refusal convert(const PlaneFamily& family, const PlaneCall& call);

} // namespace kel
