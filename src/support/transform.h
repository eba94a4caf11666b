// The checks and the kernel call that the transform families have in common.
#pragma once
#include "kernels/table.h"
#include "support/result.h"

namespace kel {

// (destination, source, pixels, output): null buffers, the family's rule for the count, outputs without a kernel.
template <class Kernel, class... Options>
Result transformRun(const ByOutput<Kernel>& kernels, void* destination, const void* source, u64 pixels,
                    bool countIsGood, u32 output, Options... options) {
    if (!destination) return badArgument(1);
    if (!source) return badArgument(2);
    if (!countIsGood) return badArgument(3);
    const Kernel kernel = kernels[output];
    if (!kernel) return notImplemented;
    kernel(static_cast<u8*>(destination), static_cast<const u8*>(source), pixels, options...);
    return success;
}

} // namespace kel
