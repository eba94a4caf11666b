// The kernels of the Bayer families, by output.
#pragma once
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

struct BayerKernels {
    ByOutput<Mosaic> raw8, raw8_3x3;
    ByOutput<FilteredMosaic> raw8Lcaa, raw8Lcaav, raw8Yuv422;

    // by 2x2
    ByOutput<Mosaic> raw10p, raw12p;
    ByOutput<Mosaic> raw12;                  // 12Packed
    ByOutput<Mosaic> raw16;                  // the first byte of each sample
    ByOutput<ShiftedMosaic> raw16Shifted[2]; // by Endianness
};

KEL_KERNEL_TABLE(BayerKernels, bayerKernels)

} // namespace kel
