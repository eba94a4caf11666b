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

    // of the one-call converters only
    Mosaic raw8ToGreyBgr24;
    Mosaic raw12ToBgr48;
    Mosaic raw16ToBgr48, raw16ToMono16; // big-endian, all 16 bits
};

KEL_KERNEL_TABLES(BayerKernels, bayerKernels)
inline const BayerKernels& bayerKernels() { KEL_RETURN_TABLE_IN_USE(BayerKernels, bayerKernels) }

} // namespace kel
