#include "bench/plausible.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace bench {

namespace {

bool hasWords(const std::string& output) {
    return output.starts_with("Mono16") || output.starts_with("BGR48") || output.starts_with("RGB48");
}

} // namespace

double usualDifference(const catalogue::Conversion& conversion, std::span<const std::uint8_t> a,
                       std::span<const std::uint8_t> b) {
    std::vector<double> differences;
    if (hasWords(conversion.output)) {
        const auto word = [](std::span<const std::uint8_t> s, std::size_t i) { return s[i] + 256 * s[i + 1]; };
        for (std::size_t i = 0; i + 1 < a.size(); i += 2)
            differences.push_back(std::abs(word(a, i) - word(b, i)) / 256.0);
    } else {
        for (std::size_t i = 0; i < a.size(); ++i)
            if (!conversion.keepsFourthByte || i % 4 != 3) differences.push_back(std::abs(a[i] - b[i]));
    }
    const auto nineTenths = differences.begin() + static_cast<std::ptrdiff_t>(differences.size() * 9 / 10);
    std::ranges::nth_element(differences, nineTenths);
    return *nineTenths;
}

} // namespace bench
