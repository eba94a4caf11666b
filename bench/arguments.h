// The command line of orvella_bench.
#pragma once
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "bench/measure.h"
#include "bench/size.h"
#include "catalogue/conversions.h"
#include "kernels/level.h"

namespace bench {

struct Arguments {
    std::string mode = "table";
    std::optional<std::regex> filter;
    std::vector<Size> sizes;        // empty: those of the mode
    std::vector<kel::Level> levels; // from low to high, all of this machine unless asked for others
    bool withPeers = true, quick = false;
    std::string json;

    Effort effort() const { return quick ? Effort{5, 0.0005} : Effort{25, 0.002}; }
};

extern const char* const usage;

// Throws std::invalid_argument.
Arguments parse(int count, char** values);

// The conversions whose names match the filter; without a filter, those with these names.
std::vector<const catalogue::Conversion*> select(const Arguments& arguments, const std::vector<std::string>& names);

} // namespace bench
