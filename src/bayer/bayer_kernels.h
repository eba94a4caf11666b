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

    u32 block; // pixels; rows that are shorter go through buffers
};

KEL_KERNEL_TABLES(BayerKernels, bayerKernels)

// For rows of so many pixels: those of the level in use, or of a lower one whose blocks such rows fill. That takes a half
// to a ninth of the time.
inline const BayerKernels& bayerKernels(u32 width) {
    static constexpr const BayerKernels* tables[] = {KEL_LEVELS(KEL_ADDRESS, bayerKernels)};
    auto table = tables + static_cast<int>(level());
    while (table > tables && width < table[0]->block && table[-1]->block < table[0]->block) --table;
    return **table;
}

} // namespace kel
