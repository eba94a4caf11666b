// Timing several ways to do one job against each other, in one process.
#pragma once
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Contestant {
    std::string name;
    std::function<void()> run;
    std::function<void()> enter = nullptr; // called before a turn, which does not count it; may be empty
};

struct Effort {
    int rounds;
    double secondsPerTurn;
};

// Seconds of CPU time per call of each contestant. They take turns, each for about secondsPerTurn; the result is the low
// quantile of the rounds. The order is another one in each round: what a turn finds in the shared cache depends on whose
// turn was before, and shows for longer than one call where an image is converted in place.
std::vector<double> measure(const std::vector<Contestant>& contestants, Effort effort);

// The lower quartile, which is steadier on a shared machine than the median.
double lowQuantile(std::vector<double> samples);

} // namespace bench
