#include "frames/names.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace frames {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The least number of letters to insert, drop or change to turn one name into the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1); // distances from a's beginning so far to each beginning of b
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t change = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({change, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string suggestion(std::string_view name, std::span<const std::string_view> known) {
    std::size_t least = std::max<std::size_t>(2, name.size() / 3);
    for (const auto candidate : known) least = std::min(least, distance(name, candidate));
    std::string list;
    for (const auto candidate : known) {
        if (distance(name, candidate) <= least) list.append(list.empty() ? "" : ", ").append(candidate);
    }
    return list.empty() ? "" : "did you mean " + list + "? ";
}

} // namespace frames
