#include "correction/matrix.h"

#include <cmath>
#include <limits>

namespace kel {

namespace {

i32 fixedPoint(float coefficient) {
    constexpr float limit = 2147483648.0F;
    const float scaled = coefficient * 1024.0F;
    if (std::isnan(scaled)) return 0;
    if (scaled >= limit) return std::numeric_limits<i32>::max();
    if (scaled < -limit) return std::numeric_limits<i32>::min();
    return static_cast<i32>(scaled);
}

} // namespace

Matrix fixedPoint(const float* m) {
    return {{fixedPoint(m[0]), fixedPoint(m[1]), fixedPoint(m[2])},
            {fixedPoint(m[3]), fixedPoint(m[4]), fixedPoint(m[5])},
            {fixedPoint(m[6]), fixedPoint(m[7]), fixedPoint(m[8])}};
}

} // namespace kel
