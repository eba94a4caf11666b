#include "numbers.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace tool {

namespace {

// With std::strtof, as not every standard library has std::from_chars for this; the program sets no locale.
std::optional<float> parseNumber(const std::string& text) {
    const bool plain = !text.empty() && text[0] != '+' && text.find_first_not_of("0123456789+-.eE") == text.npos;
    char* end = nullptr;
    const float number = plain ? std::strtof(text.c_str(), &end) : 0;
    if (!plain || *end != '\0' || !std::isfinite(number)) return {};
    return number;
}

} // namespace

std::optional<std::vector<float>> parseNumbers(std::string_view list) {
    std::vector<float> numbers;
    for (bool more = true; more;) {
        const std::size_t comma = list.find(',');
        const auto number = parseNumber(std::string(list.substr(0, comma)));
        if (!number) return {};
        numbers.push_back(*number);
        more = comma != list.npos;
        list.remove_prefix(more ? comma + 1 : list.size());
    }
    return numbers;
}

} // namespace tool
