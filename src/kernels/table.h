// Kernel tables: plain function pointers, so that those who call them see no vector type.
#pragma once
#include "support/integers.h"

namespace kel {

using Run = void (*)(u8* destination, const u8* source, size_t pixels);
using ShiftedRun = void (*)(u8* destination, const u8* source, size_t pixels, int shift);
using Mosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase);
using ShiftedMosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase,
                               int shift);
// Overwrites the source; scratch: scratchSize(width) bytes.
using FilteredMosaic = void (*)(u8* destination, u8* source, size_t width, size_t height, unsigned phase, u8* scratch);

constexpr unsigned outputCount = 11;

// One kernel per OrvOutputCode; null: not offered.
template <class Kernel> class ByOutput {
public:
    constexpr void set(u32 output, Kernel kernel) {
        kernels_[output] = kernel;
        offered_ |= 1U << output;
    }
    constexpr Kernel operator[](u32 output) const { return output < outputCount ? kernels_[output] : nullptr; }

    // Both tables in one; they have no output in common.
    friend constexpr ByOutput operator|(ByOutput a, const ByOutput& b) {
        for (u32 output = 0; output < outputCount; ++output)
            if (b.offered_ >> output & 1) a.set(output, b.kernels_[output]);
        return a;
    }

private:
    Kernel kernels_[outputCount] = {};
    u32 offered_ = 0; // one bit each: g++ compares no function with null in a constant under -fsanitize=undefined
};

// The kernels for a list of outputs: kernelFor is a lambda []<int output>() that returns the one for an output.
template <class Kernel, int... outputs, class KernelFor> constexpr ByOutput<Kernel> tableOf(KernelFor kernelFor) {
    ByOutput<Kernel> table;
    (table.set(outputs, kernelFor.template operator()<outputs>()), ...);
    return table;
}

} // namespace kel
