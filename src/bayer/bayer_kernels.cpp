// Compiled once per instruction-set level.
#include "bayer/bayer_kernels.h"

#include "bayer/bayer_readers.h"
#include "bayer/mosaic3x3.h"
#include "bayer/mosaic_filtered.h"
#include "kernels/packed_samples.h"

namespace kel {
namespace {

template <Endian endian> constexpr ByOutput<ShiftedMosaic> shifted16() {
    return shiftedMosaics2x2<Raw16TopBits<endian>>(mono8 + colour8 + mono16) |
           shiftedMosaics2x2<Raw16Samples<endian>>(bgr48);
}

// In planes of bytes or, where vectors have 64 bytes and one instruction makes bytes of the words of two, in words.
template <class S> constexpr ByOutput<Mosaic> deepMosaics() {
    using Either = std::conditional_t<N == 64, S, DeepSamples<S>>;
    return mosaics2x2<DeepSamples<S>>(mono8 + bgra32 + rgba32) | mosaics2x2<Either>(bgr24 + rgb24 + mono16);
}

// Luma as a grey colour.
struct GreyBgr24 {
    static constexpr int bytes = 3;
    static constexpr bool keeps = false;
    template <class Colours> static INLINE void put(u8* d, const Colours& p) {
        WriterOf<OrvOutputBgr24>::put(d, greyOf(p));
    }

private:
    template <class Colours> static INLINE Grey greyOf(const Colours& p) { return {grey<bt601>(p)}; }
    template <class Colours> static INLINE Apart<Grey> greyOf(const Apart<Colours>& p) {
        return {greyOf(p.even), greyOf(p.odd)};
    }
};

struct Raw16BigEndian : Raw16Samples<Endian::big> {
    INLINE Raw16BigEndian() : Raw16Samples(0) {}
};

} // namespace

namespace KEL_LEVEL {

extern const BayerKernels bayerKernels;
constexpr BayerKernels bayerKernels{
    .raw8 = mosaics2x2<Raw8Samples>(mono8 + colour8 + uyvy + mono16),
    .raw8_3x3 = mosaics3x3(mono8 + colour8 + mono16),
    .raw8Lcaa = filteredMosaics<LcaaFilter>(mono8 + colour8 + mono16),
    .raw8Lcaav = filteredMosaics<LcaavFilter>(mono8 + colour8 + mono16),
    .raw8Yuv422 = filteredMosaics<PairFilter>(mono8 + colour8 + mono16),
    .raw10p = deepMosaics<Samples10p>(),
    .raw12p = deepMosaics<Samples12p>(),
    .raw12 = mosaics2x2<std::conditional_t<separatesAsItLoads, Apart12Packed, Top12Packed>>(mono8 + colour8 + mono16),
    .raw16 = mosaics2x2<Raw16FirstByte>(mono8 + colour8),
    .raw16Shifted = {shifted16<Endian::little>(), shifted16<Endian::big>()},
    .raw8ToGreyBgr24 = mosaic2x2Kernel<Raw8Samples, GreyBgr24>,
    .raw12ToBgr48 = mosaic2x2Kernel<Samples12Packed, WriterOf<OrvOutputBgr48>>,
    .raw16ToBgr48 = mosaic2x2Kernel<Raw16BigEndian, WriterOf<OrvOutputBgr48>>,
    .raw16ToMono16 = mosaic2x2Kernel<Raw16BigEndian, WriterOf<OrvOutputMono16>>,
    .block = N,
};

} // namespace KEL_LEVEL
} // namespace kel
