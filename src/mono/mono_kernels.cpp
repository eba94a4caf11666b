// Compiled once per instruction-set level.
#include "mono/mono_kernels.h"

#include "mono/mono_readers.h"

namespace kel {
namespace {

template <Endian endian> constexpr ByOutput<Run> fullDepth() {
    return runs<Mono16MainByte<endian>>(mono8) | runs<Mono16Tinted<endian>>(colour8) | copies<2>(mono16);
}

template <Endian endian> constexpr ByOutput<ShiftedRun> fewerBits() {
    return shiftedRuns<Mono16ShiftedRow<endian>>(mono8 + mono16) | shiftedRuns<Mono16Shifted<endian>>(colour8 + bgr48);
}

struct Mono16BigEndian {
    static constexpr int bytes = 2;
    static constexpr bool keeps = false, weaves = true;
    static INLINE void put(u8* d, Grey16 p) { storeHalves(d, {swapped(p.v.a), swapped(p.v.b)}); }
    static INLINE void put(u8* d, const Apart<DeepBytes>& p) {
        store4(d, p.even.high, p.even.low, p.odd.high, p.odd.low);
    }
};

} // namespace

namespace KEL_LEVEL {

extern const MonoKernels monoKernels;
constexpr MonoKernels monoKernels{
    .y8 = copies<1>(mono8) | runs<Mono8Reader>(colour8 + uyvy),
    .y16BigEndian = fullDepth<Endian::big>(),
    .y16LittleEndian = fullDepth<Endian::little>(),
    .y16Shifted = {fewerBits<Endian::little>(), fewerBits<Endian::big>()},
    .y12 = runs<Top12Packed>(mono8 + colour8),
    .y10p = runs<Samples10p>(mono8 + colour8 + mono16),
    .y12p = runs<Samples12p>(mono8 + colour8 + mono16),
    .y16ToY8 = {shiftedRunKernel<Mono16ShiftedRounded<Endian::little>, WriterOf<OrvOutputMono8>>,
                shiftedRunKernel<Mono16ShiftedRounded<Endian::big>, WriterOf<OrvOutputMono8>>},
    .y16ToBgr = {shiftedRunKernel<Mono16ShiftedTinted<Endian::little>, WriterOf<OrvOutputBgr24>>,
                 shiftedRunKernel<Mono16ShiftedTinted<Endian::big>, WriterOf<OrvOutputBgr24>>},
    .packed12ToY16 = runKernel<Samples12Packed, Mono16BigEndian>,
};

} // namespace KEL_LEVEL
} // namespace kel
