#include "support/run_family.h"

namespace kel {

Refusal convert(const RunFamily& family, const RunCall& call) {
    const Run kernel = family.kernel(call.output);
    const Refusal refusal = firstRefusal({{call.destination, Refusal::destination},
                                          {call.source, Refusal::source},
                                          {family.count.allows(call.pixels), Refusal::count},
                                          {kernel != nullptr, Refusal::notOffered}});
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): refused where it is null
    return unlessRefused(refusal, [&] { kernel(bytes(call.destination), bytes(call.source), call.pixels); });
}

} // namespace kel
