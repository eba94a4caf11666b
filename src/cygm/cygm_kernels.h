// The kernels of complementary-colour mosaics, by output.
#pragma once
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

using CygmMosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height);

struct CygmKernels {
    ByOutput<CygmMosaic> cygm8;
    ByOutput<CygmMosaic> binned; // half as wide and half as high
    ByOutput<CygmMosaic> by3x3;
};

KEL_KERNEL_TABLES(CygmKernels, cygmKernels)
inline const CygmKernels& cygmKernels() { KEL_RETURN_TABLE_IN_USE(CygmKernels, cygmKernels) }

} // namespace kel
