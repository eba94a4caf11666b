// Colour-correction matrices in fixed point.
#pragma once
#include "support/integers.h"

namespace kel {

// In steps of 1/1024. Each row makes one channel of the result from (R, G, B).
struct Matrix {
    i32 r[3], g[3], b[3];
};

// Of nine floats, row by row: truncated toward zero, in single precision. What no i32 can hold becomes the nearest one;
// NaN becomes 0.
Matrix fixedPoint(const float* coefficients);

} // namespace kel
