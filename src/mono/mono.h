// The mono sources. Arguments and refusals: orvella/orv.h.
#pragma once
#include "mono/mono_kernels.h"
#include "orvella/orv.h"
#include "support/run_family.h"

namespace kel {

constexpr RunFamily y8{[](u32 output) { return monoKernels().y8[output]; }, notEmpty};
constexpr RunFamily y16BigEndian{[](u32 output) { return monoKernels().y16BigEndian[output]; }, notEmpty};
constexpr RunFamily y16LittleEndian{[](u32 output) { return monoKernels().y16LittleEndian[output]; }, notEmpty};
constexpr RunFamily y12Packed{[](u32 output) { return monoKernels().y12[output]; }, {.multipleOf = 2}};
constexpr RunFamily y10p{[](u32 output) { return monoKernels().y10p[output]; }};
constexpr RunFamily y12p{[](u32 output) { return monoKernels().y12p[output]; }, {.multipleOf = 2}};

// 16-bit words with fewer bits used; no record: big-endian, unshifted.
Refusal convertY16(const RunCall& call, const OrvShiftRecord* record);

} // namespace kel
