// Transforms of n pixels in a row. What differs between the sources is data.
#pragma once
#include "kernels/table.h"
#include "support/refusal.h"

namespace kel {

// Which counts of pixels a source can have.
struct CountRule {
    u32 multipleOf = 1;
    u32 least = 0;

    constexpr bool allows(u64 pixels) const { return pixels >= least && pixels % multipleOf == 0; }
};
constexpr CountRule anyCount{};
constexpr CountRule notEmpty{.least = 1};

struct RunFamily {
    Run (*kernel)(u32 output); // null: not offered
    CountRule count = anyCount;
};

struct RunCall {
    void* destination;
    const void* source;
    u64 pixels;
    u32 output;
};

Refusal convert(const RunFamily& family, const RunCall& call);

} // namespace kel
