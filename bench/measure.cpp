#include "bench/measure.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <numeric>
#include <random>

namespace bench {

namespace {

double cpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// The first call is not counted: it finds in the caches what somebody else's left there.
double secondsFor(const Contestant& contestant, int calls) {
    if (contestant.enter) contestant.enter();
    contestant.run();
    const double start = cpuSeconds();
    for (int i = 0; i < calls; ++i) contestant.run();
    return cpuSeconds() - start;
}

// How many calls fill a turn; warms page tables as well.
int callsPerTurn(const Contestant& contestant, double seconds) {
    secondsFor(contestant, 1);
    const double once = std::max(secondsFor(contestant, 1), 1e-7);
    return std::max(1, static_cast<int>(std::lround(seconds / once)));
}

} // namespace

std::vector<double> measure(const std::vector<Contestant>& contestants, Effort effort) {
    const std::size_t count = contestants.size();
    std::vector<int> calls;
    for (const Contestant& contestant : contestants) calls.push_back(callsPerTurn(contestant, effort.secondsPerTurn));

    std::vector<std::vector<double>> times(count);
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::mt19937 chance;
    for (int round = 0; round < effort.rounds; ++round) {
        std::ranges::shuffle(order, chance);
        for (const std::size_t i : order) times[i].push_back(secondsFor(contestants[i], calls[i]) / calls[i]);
    }

    std::vector<double> result;
    for (const std::vector<double>& samples : times) result.push_back(lowQuantile(samples));
    return result;
}

double lowQuantile(std::vector<double> samples) {
    const auto quartile = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 4);
    std::ranges::nth_element(samples, quartile);
    return *quartile;
}

} // namespace bench
