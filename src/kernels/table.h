// Kernel tables: plain function pointers, so that those who call them see no vector type.
#pragma once
#include "orvella/orv.h"
#include "support/integers.h"

namespace kel {

using Run = void (*)(u8* destination, const u8* source, size_t pixels);
using ShiftedRun = void (*)(u8* destination, const u8* source, size_t pixels, int shift);
using Mosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase);
using ShiftedMosaic = void (*)(u8* destination, const u8* source, size_t width, size_t height, unsigned phase,
                               int shift);
// Overwrites the source; scratch: scratchSize(width) bytes, from an address that alignedLines gives.
using FilteredMosaic = void (*)(u8* destination, u8* source, size_t width, size_t height, unsigned phase, u8* scratch);

constexpr unsigned outputCount = OrvOutputRgb48 + 1;

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

// Sets of outputs.
template <u32... codes> struct Outputs {};
template <u32... a, u32... b> constexpr Outputs<a..., b...> operator+(Outputs<a...>, Outputs<b...>) { return {}; }

constexpr Outputs<OrvOutputBgr24> bgr24;
constexpr Outputs<OrvOutputBgra32> bgra32;
constexpr Outputs<OrvOutputRgb24> rgb24;
constexpr Outputs<OrvOutputRgba32> rgba32;
constexpr Outputs<OrvOutputYuv422> uyvy;
constexpr Outputs<OrvOutputBgr48> bgr48;
constexpr Outputs<OrvOutputMono8, OrvOutputMono8Rec709> mono8;
constexpr Outputs<OrvOutputMono16, OrvOutputMono16Rec709> mono16;
constexpr auto colour8 = bgr24 + bgra32 + rgb24 + rgba32;

// The kernels for a set of outputs: kernelFor is a lambda []<u32 output>() that returns the one for an output.
template <class Kernel, u32... codes, class KernelFor>
constexpr ByOutput<Kernel> tableOf(Outputs<codes...>, KernelFor kernelFor) {
    ByOutput<Kernel> table;
    (table.set(codes, kernelFor.template operator()<codes>()), ...);
    return table;
}

} // namespace kel
