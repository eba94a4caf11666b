// Luma of pixels that stay interleaved.
#pragma once
#include "color/rgb_readers.h"

namespace kel {
namespace {

constexpr Weights inOrder(Order order, Weights k) { return order == Order::rgb ? k : Weights{k.b, k.g, k.r, k.add}; }

template <int bytes, Weights k> struct LumaReader : Reader<8 * bytes> {
    static constexpr bool separates = true;
    static INLINE Grey get(const u8* s) { return {luma<bytes, k>(s)}; }
};

template <int bytes, Order order> constexpr ByOutput<Run> lumas() {
    ByOutput<Run> table;
    table.set(OrvOutputMono8, runKernel<LumaReader<bytes, inOrder(order, bt601)>, WriterOf<OrvOutputMono8>>);
    table.set(OrvOutputMono8Rec709, runKernel<LumaReader<bytes, inOrder(order, bt709)>, WriterOf<OrvOutputMono8>>);
    return table;
}

} // namespace
} // namespace kel
