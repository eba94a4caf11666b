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
        row2x2({fields.line(y), fields.line(y + 1)}, width, Samples8(), RowSink<W>{d, W()}, CygmRule(y));
    std::memcpy(d, d - pitch, pitch);
}

// ---- Binning: one pixel for each block of columns 2c, 2c + 1 and lines 2r, 2r + 1

// N pixels from 2 N samples of each line.
INLINE Rgb binnedBlock(const u8* upper, const u8* lower, const CygmFactors& factors) {
    if constexpr (separatesAsItLoads) {
        using Samples = PlainSamples<Apart<Bytes>>;
        return blockColours<-1, 1>(Samples::samples<0>(upper), Samples::samples<0>(lower), factors);
    }
    const Halves u = loadHalves(upper), l = loadHalves(lower);
    const CygmTerms a = blockTerms<-1, 1>(as<Bytes>(u.a), as<Bytes>(l.a));
    const CygmTerms b = blockTerms<-1, 1>(as<Bytes>(u.b), as<Bytes>(l.b));
    return {clampHalves(factors.red(a), factors.red(b)), clampHalves(factors.green(a), factors.green(b)),
            clampHalves(factors.blue(a), factors.blue(b))};
}

template <class W> void binnedKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pixels = width / 2;
    for (size_t y = 0; y < height; y += 2, d += pixels * W::bytes) {
        const u8 *upper = fields.line(y), *lower = fields.line(y + 1);
        const CygmFactors factors(y);
        const RowSink<W> row{d, W()};
        size_t x = 0;
        for (; x + N <= pixels; x += N) row.put(x, binnedBlock(upper + 2 * x, lower + 2 * x, factors));
        if (x == pixels) continue;
        alignas(N) u8 lastUpper[2 * N] = {}, lastLower[2 * N] = {};
        std::memcpy(lastUpper, upper + 2 * x, width - 2 * x);
        std::memcpy(lastLower, lower + 2 * x, width - 2 * x);
        row.putPart(x, binnedBlock(lastUpper, lastLower, factors), pixels - x);
    }
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
