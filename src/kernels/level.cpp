// The one place that looks at the CPU.
#include "kernels/level.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace kel {

namespace {

constexpr int undecided = -1;
std::atomic<int> current{undecided};

bool isAmd() {
#if defined(__x86_64__) && __has_builtin(__builtin_cpu_is)
    return __builtin_cpu_is("amd");
#else
    return false;
#endif
}

// Where an image does not fit the caches, Intel's own prefetching comes late: loops that write much gain up to a third by
// asking early. AMD's is in time, and slowed down by a tenth to a third if one interferes: loops over more than the caches
// hold go at a pace there.
void use(Level level) {
    __atomic_store_n(&prefetchAhead, isAmd() ? 0 : 1024, __ATOMIC_RELAXED);
    paceLoopsFrom(isAmd() ? 4 << 20 : UINTPTR_MAX);
    current.store(static_cast<int>(level), std::memory_order_relaxed);
}

} // namespace

std::uintptr_t prefetchAhead = 0, pacedFrom = UINTPTR_MAX;

void paceLoopsFrom(std::uintptr_t bytes) { __atomic_store_n(&pacedFrom, bytes, __ATOMIC_RELAXED); }

const char* nameOf(Level level) {
#define KEL_NAME(level, condition) #level,
    static constexpr const char* names[] = {KEL_LEVELS(KEL_NAME)};
    return names[static_cast<int>(level)];
}

Level highestLevel() {
#if __has_builtin(__builtin_cpu_init)
    __builtin_cpu_init();
#endif
    // __builtin_cpu_supports also asks whether the operating system saves the registers.
#define KEL_CONDITION(level, condition) condition,
    const bool machineHas[] = {KEL_LEVELS(KEL_CONDITION)};
    const auto missing = std::find(std::next(std::begin(machineHas)), std::end(machineHas), false);
    return static_cast<Level>(missing - std::begin(machineHas) - 1);
}

Level level() {
    // Threads that come first at once all find the same answer, so the store needs no order.
    int found = current.load(std::memory_order_relaxed);
    if (found == undecided) {
        found = static_cast<int>(highestLevel());
        use(static_cast<Level>(found));
    }
    return static_cast<Level>(found);
}

void limitLevel(Level limit) { use(std::min(limit, highestLevel())); }

} // namespace kel
