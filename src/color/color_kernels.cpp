// Compiled once per instruction-set level.
#include "color/color_kernels.h"

#include "color/interleaved_luma.h"
#include "color/plane_kernels.h"
#include "color/rgb_readers.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

void rgb8ToY8(u8* d, const u8* s, size_t n) {
    lumaRun<rgb8ToY8Weights>(d, s, n, [](size_t, const Rgb&, size_t) {});
}

template <class Set> constexpr ByOutput<Run> swaps32(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return runKernel<Pixels32Reader, Swapped32>; });
}

} // namespace

namespace KEL_LEVEL {

extern const ColorKernels colorKernels;
constexpr ColorKernels colorKernels{
    .rgb8 = lumas<Pixels24Reader, Rgb24Reader<Order::rgb>, Order::rgb>() |
            runs<Rgb24Reader<Order::rgb>>(bgr24 + bgra32 + rgba32) | copies<3>(rgb24),
    .bgr8 = lumas<Pixels24Reader, Rgb24Reader<Order::bgr>, Order::bgr>() |
            runs<Rgb24Reader<Order::bgr>>(bgra32 + rgb24 + rgba32) | copies<3>(bgr24),
    .rgba8 = lumas<Pixels32Reader, Rgb32Reader<Order::rgb>, Order::rgb>() |
             runs<Rgb32Reader<Order::rgb>>(bgr24 + rgb24) | swaps32(bgra32) | copies<4>(rgba32),
    .bgra8 = lumas<Pixels32Reader, Rgb32Reader<Order::bgr>, Order::bgr>() |
             runs<Rgb32Reader<Order::bgr>>(bgr24 + rgb24) | swaps32(rgba32) | copies<4>(bgra32),
    .yuv411 = runs<YuvReader<Yuv411Layout>>(mono8 + colour8),
    .yuv422 = runs<YuvReader<Yuv422Layout>>(mono8 + colour8),
    .yuv444 = runs<YuvReader<Yuv444Layout>>(mono8 + colour8),
    .rgb8ToY8 = rgb8ToY8,
    .rgb8Planes = {.withoutLuma = planesKernel<RgbSplitter, false>, .withLuma = rgbPlanesWithLuma},
    .yuv411Planes = planeKernels<YuvSplitter<Yuv411Layout, TruncatedSums>>(),
    .yuv422Planes = planeKernels<YuvSplitter<Yuv422Layout, TruncatedProducts>>(),
    .yuv444Planes = planeKernels<YuvSplitter<Yuv444Layout, TruncatedSums>>(),
};

} // namespace KEL_LEVEL
} // namespace kel
