// The weights of luma in double precision, and their products with every sample.
#pragma once

namespace kel {

struct LumaProducts {
    double r[256], g[256], b[256];
};
extern const LumaProducts rgb8ToY8Products, planeProducts;

struct DoubleWeights {
    double r, g, b;
    int unit; // the weights are multiples of 1 / unit
    const LumaProducts& products;
};
inline constexpr DoubleWeights rgb8ToY8Weights{0.21, 0.72, 0.07, 100, rgb8ToY8Products};
inline constexpr DoubleWeights planeWeights{0.299, 0.587, 0.114, 1000, planeProducts}; // ITU-R BT.601

} // namespace kel
