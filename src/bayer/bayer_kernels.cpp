// Compiled once per instruction-set level.
#include "bayer/bayer_kernels.h"

#include "bayer/bayer_readers.h"
#include "bayer/mosaic3x3.h"
#include "bayer/mosaic_filtered.h"
#include "kernels/packed_samples.h"

namespace kel {
namespace {

template <Endian endian> constexpr ByOutput<ShiftedMosaic> shifted16() {
    return shiftedMosaics2x2<Raw16TopBits<endian>, 0, 1, 2, 3, 4, 5, 7, 8>() |
           shiftedMosaics2x2<Raw16Samples<endian>, 9>();
}

// Luma as a grey colour.
struct GreyBgr24 {
    static constexpr int bytes = 3;
    static constexpr bool keeps = false;
    static INLINE void put(u8* d, Rgb p) { WriterOf<1>::put(d, Grey{highBytes(weigh<bt601>(p))}); }
};

struct Raw16BigEndian : Raw16Samples<Endian::big> {
    INLINE Raw16BigEndian() : Raw16Samples(0) {}
};

} // namespace

namespace KEL_LEVEL {

extern const BayerKernels bayerKernels;
constexpr BayerKernels bayerKernels{
    .raw8 = mosaics2x2<Raw8Samples, 0, 1, 2, 3, 4, 5, 6, 7, 8>(),
    .raw8_3x3 = mosaics3x3<0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw8Lcaa = filteredMosaics<LcaaFilter, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw8Lcaav = filteredMosaics<LcaavFilter, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw8Yuv422 = filteredMosaics<PairFilter, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw10p = mosaics2x2<Packed<Bits10>, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw12p = mosaics2x2<Packed<Bits12>, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw12 = mosaics2x2<Top12, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .raw16 = mosaics2x2<Raw16FirstByte, 0, 1, 2, 3, 4, 5>(),
    .raw16Shifted = {shifted16<Endian::little>(), shifted16<Endian::big>()},
    .raw8ToGreyBgr24 = mosaic2x2Kernel<Raw8Samples, GreyBgr24>,
    .raw12ToBgr48 = mosaic2x2Kernel<Whole12, WriterOf<9>>,
    .raw16ToBgr48 = mosaic2x2Kernel<Raw16BigEndian, WriterOf<9>>,
    .raw16ToMono16 = mosaic2x2Kernel<Raw16BigEndian, WriterOf<7>>,
};

} // namespace KEL_LEVEL
} // namespace kel
