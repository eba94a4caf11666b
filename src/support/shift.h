// The left shift that brings the samples of a 16-bit source to the top of their words.
#pragma once
#include "kernels/table.h"
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

// Of a record whose Alignment is 0 or 1: 0 to 4 or 6; -1 for the amounts that no kernel offers.
constexpr int leftShift(const OrvShiftRecord& record) {
    if (record.Alignment == 0) return 0;
    switch (record.BitsUsed) {
    case 16: return 0;
    case 15: return 1;
    case 14: return 2;
    case 13: return 3;
    case 12: return 4;
    case 10: return 6;
    default: return -1;
    }
}

// Of the record and the output of a source whose kernels are tabled by byte order, little-endian first.
template <class Kernel>
Refusal checkShift(const ByOutput<Kernel> (&kernels)[2], u32 output, const OrvShiftRecord& record) {
    return firstRefusal({{record.Alignment <= 1 && kernels[0][output] != nullptr, Refusal::notOffered},
                         {leftShift(record) >= 0 && record.Endianness <= 1, Refusal::kernelFault}});
}

} // namespace kel
