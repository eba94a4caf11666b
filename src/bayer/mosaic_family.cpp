#include "bayer/mosaic_family.h"

#include <cstdlib>
#include <memory>

#include "bayer/phase.h"
#include "bayer/scratch.h"

namespace kel {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

} // namespace

Refusal convert(const MosaicFamily& family, const MosaicCall& call) {
    const Mosaic kernel = family.kernel(bayerKernels(call.width - family.borders), call.output);
    const Refusal refusal = firstRefusal({checkMosaic(call), {kernel != nullptr, Refusal::notOffered}});
    return unlessRefused(refusal, [&] {
        // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): refused where it is null
        kernel(bytes(call.destination), bytes(call.source), call.width, call.height, phaseOf(call.pattern));
    });
}

Refusal convert(const FilteredFamily& family, const FilteredCall& call) {
    const FilteredMosaic kernel = family.kernel(bayerKernels(call.width), call.output);
    const Refusal refusal = firstRefusal({checkMosaic(call), {kernel != nullptr, Refusal::notOffered}});
    return unlessRefused(refusal, [&] {
        const std::unique_ptr<u8, Free> scratch(static_cast<u8*>(std::malloc(scratchSize(call.width))));
        if (scratch)
            kernel(bytes(call.destination), bytes(call.source), call.width, call.height, phaseOf(call.pattern),
                   alignedLines(scratch.get()));
    });
}

} // namespace kel
