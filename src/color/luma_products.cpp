#include "color/luma_products.h"

namespace kel {
namespace {

constexpr LumaProducts productsOf(const DoubleWeights& k) {
    LumaProducts products{};
    for (int v = 0; v < 256; ++v) products.r[v] = k.r * v, products.g[v] = k.g * v, products.b[v] = k.b * v;
    return products;
}

} // namespace

constinit const LumaProducts rgb8ToY8Products = productsOf(rgb8ToY8Weights), planeProducts = productsOf(planeWeights);

} // namespace kel
