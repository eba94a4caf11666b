// Compiled once per instruction-set level.
#include "geometry/geometry_kernels.h"

#include "geometry/resample.h"
#include "geometry/reverse.h"

namespace kel {
namespace {

// A plain loop is what compilers vectorise best. Not unrolled it is so short that it takes a fifth longer where it lies
// across two cache lines.
void exchange(u8* __restrict a, u8* __restrict b, size_t bytes) {
#pragma GCC unroll 4
    for (size_t i = 0; i < bytes; ++i) {
        const u8 byte = a[i];
        a[i] = b[i];
        b[i] = byte;
    }
}

} // namespace

namespace KEL_LEVEL {

extern const GeometryKernels geometryKernels;
constexpr GeometryKernels geometryKernels{
    .reverse = {nullptr, reverse<1>, reverse<2>, reverse<3>, nullptr, nullptr, reverse<6>},
    .exchange = exchange,
    .resample = {resample<false>, resample<true>},
};

} // namespace KEL_LEVEL
} // namespace kel
