// Compiled once per instruction-set level.
#include "color/color_kernels.h"

#include "color/packed_luma.h"
#include "color/plane_kernels.h"
#include "color/rgb_readers.h"
#include "color/yuv_readers.h"

namespace kel {
namespace {

// Mono8 by the double-precision formula.
struct DoubleLumaWriter {
    static constexpr int bytes = 1;
    static constexpr bool keeps = false;
    static INLINE void put(u8* d, const Rgb& p) { store(d, doubleLuma<rgb8ToY8Weights>(p)); }
};

template <int output> constexpr ByOutput<Run> swaps32() {
    ByOutput<Run> table;
    table.set(output, runKernel<Pixels32Reader, Swapped32>);
    return table;
}

} // namespace

namespace KEL_LEVEL {

extern const ColorKernels colorKernels;
constexpr ColorKernels colorKernels{
    .rgb8 = packedLumas<Pixels24Reader, Order::rgb>() | runs<Rgb24Reader<Order::rgb>, 1, 2, 4>() | copies<3, 3>(),
    .bgr8 = packedLumas<Pixels24Reader, Order::bgr>() | runs<Rgb24Reader<Order::bgr>, 2, 3, 4>() | copies<3, 1>(),
    .rgba8 = packedLumas<Pixels32Reader, Order::rgb>() | runs<Rgb32Reader<Order::rgb>, 1, 3>() | swaps32<2>() |
             copies<4, 4>(),
    .bgra8 = packedLumas<Pixels32Reader, Order::bgr>() | runs<Rgb32Reader<Order::bgr>, 1, 3>() | swaps32<4>() |
             copies<4, 2>(),
    .yuv411 = runs<YuvReader<Yuv411Layout>, 0, 1, 2, 3, 4, 5>(),
    .yuv422 = runs<YuvReader<Yuv422Layout>, 0, 1, 2, 3, 4, 5>(),
    .yuv444 = runs<YuvReader<Yuv444Layout>, 0, 1, 2, 3, 4, 5>(),
    .rgb8ToY8 = runKernel<Rgb24Reader<Order::rgb>, DoubleLumaWriter>,
    .rgb8Planes = planes<RgbSplitter>(),
    .yuv411Planes = planes<YuvSplitter<Yuv411Layout, TruncatedSums>>(),
    .yuv422Planes = planes<YuvSplitter<Yuv422Layout, TruncatedProducts>>(),
    .yuv444Planes = planes<YuvSplitter<Yuv444Layout, TruncatedSums>>(),
};

} // namespace KEL_LEVEL
} // namespace kel
