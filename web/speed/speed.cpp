// How long conversions, named by the arguments, take for a frame of 5 megapixels at each level of this build. Prints
// "conversion<tab>level<tab>milliseconds", the quickest of some.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include "catalogue/conversions.h"
#include "kernels/level.h"

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(const catalogue::Conversion& conversion) {
    constexpr std::uint32_t width = 2448, height = 2048;
    std::vector<std::uint8_t> from(conversion.sourceSize(width, height) + conversion.beyond);
    std::vector<std::uint8_t> to(conversion.destinationSize(width, height));
    std::mt19937 noise;
    for (std::uint8_t& byte : from) byte = static_cast<std::uint8_t>(noise());
    double least = 1e9;
    for (int turn = 0; turn < 20; ++turn) { // node compiles what it finds hot in the first ones
        const auto start = Clock::now();
        conversion.convert(to.data(), from.data(), width, height, 0);
        least = std::min(least, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    return least;
}

} // namespace

int main(int argc, char** argv) {
    for (const catalogue::Conversion& conversion : catalogue::conversions()) {
        if (std::find(argv + 1, argv + argc, conversion.name()) == argv + argc) continue;
        for (const kel::Level level : kel::levels) {
            if (level > kel::highestLevel()) continue;
            kel::limitLevel(level);
            std::printf("%s\t%s\t%.4f\n", conversion.name().c_str(), kel::nameOf(level), milliseconds(conversion));
        }
    }
}
