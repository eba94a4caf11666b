// The kernels that apply a matrix, by output.
#pragma once
#include "correction/matrix.h"
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

using CorrectedRun = void (*)(u8* destination, const u8* source, size_t pixels, const Matrix& matrix);
using CorrectedMosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase,
                                 const Matrix& matrix);
using CorrectedShiftedMosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase,
                                        int shift, const Matrix& matrix);

struct CorrectionKernels {
    ByOutput<CorrectedRun> rgb8, bgr8, rgba8, bgra8;

    // by 2x2, width and height from 2 up, also odd
    ByOutput<CorrectedMosaic> raw8;
    ByOutput<CorrectedMosaic> raw12;                  // 12Packed
    ByOutput<CorrectedShiftedMosaic> raw16Shifted[2]; // by Endianness

    CorrectedMosaic raw12ToBgr24; // of the one-call converter: top bytes, 8-bit rule
};

KEL_KERNEL_TABLES(CorrectionKernels, correctionKernels)
inline const CorrectionKernels& correctionKernels() { KEL_RETURN_TABLE_IN_USE(CorrectionKernels, correctionKernels) }

} // namespace kel
