// The kernels of the mono families, by output.
#pragma once
#include "kernels/level.h"
#include "kernels/table.h"

namespace kel {

struct MonoKernels {
    ByOutput<Run> y8;
    ByOutput<Run> y16BigEndian, y16LittleEndian; // all 16 bits used
    ByOutput<ShiftedRun> y16Shifted[2];          // by Endianness
    ByOutput<Run> y12;                           // 12Packed
    ByOutput<Run> y10p, y12p;

    // of the one-call converters
    ShiftedRun y16ToY8[2], y16ToBgr[2]; // by byte order: 0 little-endian, 1 big-endian
    Run packed12ToY16;
};

KEL_KERNEL_TABLES(MonoKernels, monoKernels)
inline const MonoKernels& monoKernels() { KEL_RETURN_TABLE_IN_USE(MonoKernels, monoKernels) }

} // namespace kel
