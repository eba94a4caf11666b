// Compiled once per instruction-set level.
#include "cygm/cygm_kernels.h"

#include "cygm/cygm3x3.h"

namespace kel {
namespace {

using Samples8 = MosaicReader<Raw8Samples>;

// ---- Every pixel from its block

template <class W> void cygmKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pitch = width * W::bytes;
    for (size_t y = 0; y + 1 < height; ++y, d += pitch)
        withCygmRule(fields, y, [&](const u8* first, const u8* second, const auto& rule) {
            row2x2({first, second, fields.line(y + 1)}, width, Samples8(), RowSink<W>{d, W()}, rule);
        });
    std::memcpy(d, d - pitch, pitch);
}

// ---- Binning: one pixel for each block of columns 2c, 2c + 1 and lines 2r, 2r + 1

template <class W> void binnedKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pixels = width / 2;
    for (size_t y = 0; y < height; y += 2)
        withCygmRule(fields, y, [&](const u8* first, const u8* second, const auto& rule) {
            size_t left = pixels;
            for (; left >= N; left -= N) {
                prefetch<N * W::bytes, true>(d);
                W::put(d, rule.binned(first, second));
                moveOn<true>(first, 2 * N), moveOn<true>(second, 2 * N), moveOn<W::weaves>(d, N * W::bytes);
            }
            if (left == 0) return;
            alignas(N) u8 lastFirst[2 * N] = {}, lastSecond[2 * N] = {};
            std::memcpy(lastFirst, first, 2 * left);
            std::memcpy(lastSecond, second, 2 * left);
            putPart(W(), d, rule.binned(lastFirst, lastSecond), left);
            d += left * W::bytes;
        });
}

} // namespace

namespace KEL_LEVEL {

extern const CygmKernels cygmKernels;
constexpr CygmKernels cygmKernels{
    .cygm8 = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return cygmKernel<WriterOf<output>>; }),
    .binned = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return binnedKernel<WriterOf<output>>; }),
    .by3x3 = tableOf<CygmMosaic>(mono8 + colour8 + uyvy, []<u32 output>() { return cygm3x3Kernel<WriterOf<output>>; }),
};

} // namespace KEL_LEVEL
} // namespace kel
