// Luma by formulas in double precision, each operation rounded in the order written and the sum truncated. An integer
// formula would differ: binary fractions put 0.21 * 255 + 0.72 * 255 + 0.07 * 255 just below 255.
#pragma once
#include "kernels/pixels.h"

namespace kel {
namespace {

struct DoubleWeights {
    double r, g, b;
};
constexpr DoubleWeights rgb8ToY8Weights{0.21, 0.72, 0.07};
constexpr DoubleWeights planeWeights{0.299, 0.587, 0.114}; // ITU-R BT.601

// A plain loop of its own: the form in which compilers vectorise conversions to double and back.
template <const DoubleWeights& k> INLINE Bytes doubleLuma(const Rgb& p) {
    alignas(N) u8 r[N], g[N], b[N], y[N];
    store(r, p.r), store(g, p.g), store(b, p.b);
    for (int i = 0; i < N; ++i) y[i] = static_cast<u8>(static_cast<int>(k.r * r[i] + k.g * g[i] + k.b * b[i]));
    return load(y);
}

} // namespace
} // namespace kel
