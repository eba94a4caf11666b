// Compiled once per instruction-set level.
#include "mono/mono_kernels.h"

#include "mono/mono_readers.h"

namespace kel {
namespace {

template <Endian endian> constexpr ByOutput<Run> fullDepth() {
    return runs<Mono16MainByte<endian>, 0, 5>() | runs<Mono16Tinted<endian>, 1, 2, 3, 4>() | copies<2, 7, 8>();
}

struct Mono16BigEndian {
    static constexpr int bytes = 2;
    static constexpr bool keeps = false;
    static INLINE void put(u8* d, Grey16 p) { storeHalves(d, {swapped(p.v.a), swapped(p.v.b)}); }
};

} // namespace

namespace KEL_LEVEL {

extern const MonoKernels monoKernels;
constexpr MonoKernels monoKernels{
    .y8 = copies<1, 0, 5>() | runs<Mono8Reader, 1, 2, 3, 4, 6>(),
    .y16BigEndian = fullDepth<Endian::big>(),
    .y16LittleEndian = fullDepth<Endian::little>(),
    .y16Shifted = {shiftedRuns<Mono16Shifted<Endian::little>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(),
                   shiftedRuns<Mono16Shifted<Endian::big>, 0, 1, 2, 3, 4, 5, 7, 8, 9>()},
    .y12 = runs<Top12, 0, 1, 2, 3, 4, 5>(),
    .y10p = runs<Packed<Bits10>, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .y12p = runs<Packed<Bits12>, 0, 1, 2, 3, 4, 5, 7, 8>(),
    .y16ToY8 = {shiftedRunKernel<Mono16ShiftedRounded<Endian::little>, WriterOf<0>>,
                shiftedRunKernel<Mono16ShiftedRounded<Endian::big>, WriterOf<0>>},
    .y16ToBgr = {shiftedRunKernel<Mono16ShiftedTinted<Endian::little>, WriterOf<1>>,
                 shiftedRunKernel<Mono16ShiftedTinted<Endian::big>, WriterOf<1>>},
    .packed12ToY16 = runKernel<Whole12, Mono16BigEndian>,
};

} // namespace KEL_LEVEL
} // namespace kel
