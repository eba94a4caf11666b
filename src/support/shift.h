// The left shift that brings the samples of a 16-bit source to the top of their words.
#pragma once
#include "orvella/orv.h"

namespace kel {

// Of a record whose Alignment is 0 or 1: 0 to 4 or 6; -1 for the amounts that no kernel offers.
constexpr int shiftOf(const OrvShiftRecord& record) {
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

} // namespace kel
