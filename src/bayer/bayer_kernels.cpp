// Compiled once per instruction-set level.
#include "bayer/bayer_kernels.h"

#include "bayer/bayer_readers.h"

namespace kel::KEL_LEVEL {

extern const BayerKernels bayerKernels;
constexpr BayerKernels bayerKernels{
    .raw8 = mosaics2x2<Raw8Samples, 0, 1, 2, 3, 4, 5, 6, 7, 8>(),
};

} // namespace kel::KEL_LEVEL
