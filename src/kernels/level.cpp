// The one place that looks at the CPU.
#include "kernels/level.h"

#include <algorithm>
#include <atomic>

namespace kel {

namespace {

constexpr int undecided = -1;
std::atomic<int> current{undecided};

bool machineHas(Level level) {
    // __builtin_cpu_supports also asks whether the operating system saves the registers.
    switch (level) {
    case Level::avx512:
        return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
               __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
               __builtin_cpu_supports("avx512vnni");
    case Level::avx2: return __builtin_cpu_supports("avx2");
    case Level::sse4: return __builtin_cpu_supports("ssse3") && __builtin_cpu_supports("sse4.1");
    case Level::baseline: break;
    }
    return true;
}

} // namespace

const char* nameOf(Level level) {
    static constexpr const char* names[] = {"baseline", "sse4", "avx2", "avx512"};
    return names[static_cast<int>(level)];
}

Level highestLevel() {
    __builtin_cpu_init();
    int highest = 0;
    while (highest < KEL_TOP_LEVEL && machineHas(static_cast<Level>(highest + 1))) ++highest;
    return static_cast<Level>(highest);
}

Level level() {
    // Threads that come first at once all find the same answer, so the store needs no order.
    int found = current.load(std::memory_order_relaxed);
    if (found == undecided) {
        found = static_cast<int>(highestLevel());
        current.store(found, std::memory_order_relaxed);
    }
    return static_cast<Level>(found);
}

void limitLevel(Level limit) {
    current.store(static_cast<int>(std::min(limit, highestLevel())), std::memory_order_relaxed);
}

} // namespace kel
