// The kernels of the Bayer families, by output.
#pragma once
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

struct BayerKernels {
    ByOutput<Mosaic> raw8;
};

KEL_KERNEL_TABLE(BayerKernels, bayerKernels)

} // namespace kel
