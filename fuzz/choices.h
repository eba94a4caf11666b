// What libFuzzer's bytes choose.
#pragma once
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace fuzz {

class Choices : public FuzzedDataProvider {
public:
    using FuzzedDataProvider::FuzzedDataProvider;

    std::uint32_t below(std::uint32_t limit) { return ConsumeIntegralInRange<std::uint32_t>(0, limit - 1); }
    bool once(std::uint32_t in) { return below(in) == in - 1; } // not if the bytes have ended

    // Mostly small; otherwise any word, at whose ends sizes overflow.
    std::uint32_t size() {
        const std::uint32_t kind = below(16);
        if (kind < 10) return below(34);
        if (kind < 14) return below(300);
        return kind == 14 ? ConsumeIntegral<std::uint32_t>() : 0U - below(9);
    }
    // Mostly one of the first `known`.
    std::uint32_t code(std::uint32_t known) { return once(16) ? ConsumeIntegral<std::uint32_t>() : below(known + 1); }
    float coefficient() {
        if (once(4)) return ConsumeFloatingPoint<float>();
        return once(16) ? __builtin_nanf("") : ConsumeFloatingPointInRange<float>(-2, 2);
    }
};

} // namespace fuzz
