// Compiled once per instruction-set level.
#include "color/color_kernels.h"

#include "color/interleaved_luma.h"
#include "color/plane_kernels.h"
#include "color/reorder.h"
#include "color/yuv422_quads.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

void rgb8ToY8(u8* d, const u8* s, size_t n) {
    lumaRun<rgb8ToY8Weights>(d, s, n, [](size_t, const Rgb&, size_t) {});
}

} // namespace

namespace KEL_LEVEL {

extern const ColorKernels colorKernels;
constexpr ColorKernels colorKernels{
    .rgb8 = lumas<3, Order::rgb>() | reordered24<Order::rgb>(rgb24, rgba32, bgr24, bgra32),
    .bgr8 = lumas<3, Order::bgr>() | reordered24<Order::bgr>(bgr24, bgra32, rgb24, rgba32),
    .rgba8 = lumas<4, Order::rgb>() | reordered32<Order::rgb>(rgb24, rgba32, bgr24, bgra32),
    .bgra8 = lumas<4, Order::bgr>() | reordered32<Order::bgr>(bgr24, bgra32, rgb24, rgba32),
    .yuv411 = runs<YuvReader<Yuv411Layout>>(mono8 + colour8),
    .yuv422 = runs<YuvReader<Yuv422Layout>>(mono8 + bgr24 + rgb24) | yuv422ToQuads(bgra32 + rgba32),
    .yuv444 = runs<YuvReader<Yuv444Layout>>(mono8 + colour8),
    .rgb8ToY8 = rgb8ToY8,
    .rgb8Planes = {.withoutLuma = planesKernel<RgbSplitter, false>, .withLuma = rgbPlanesWithLuma},
    .yuv411Planes = planeKernels<YuvSplitter<Yuv411Layout, TruncatedSums>>(),
    .yuv422Planes = planeKernels<YuvSplitter<Yuv422Layout, TruncatedProducts>>(),
    .yuv444Planes = planeKernels<YuvSplitter<Yuv444Layout, TruncatedSums>>(),
};

} // namespace KEL_LEVEL
} // namespace kel
