// Where a mosaic has its colours.
#pragma once
#include "support/integers.h"

namespace kel {

// The internal phase: bit 1 is set where the first row holds blue samples, bit 0 where red samples sit in odd columns.
//
//     phase 0   R G   1   G R   2   G B   3   B G
//               G B       B G       R G       G R
//
// A Bayer pattern code counts GBRG as 1 and GRBG as 2: those two are exchanged. Of other codes (-1, and whatever
// reaches a family that does not check) the two low bits count.
constexpr unsigned phaseOf(i32 pattern) {
    if (pattern == 1) return 2;
    if (pattern == 2) return 1;
    return static_cast<unsigned>(pattern) & 3;
}

} // namespace kel
