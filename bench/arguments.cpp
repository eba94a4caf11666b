#include "bench/arguments.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace bench {

const char* const usage = "usage: orvella_bench [table|scaling|linearity|machine] [--filter REGEX] [--size WxH]...\n"
                          "                     [--levels all|best] [--peers all|none] [--quick] [--json FILE]\n";

namespace {

Size parseSize(const std::string& text) {
    Size size{};
    if (std::sscanf(text.c_str(), "%ux%u", &size.width, &size.height) != 2 || size.pixels() == 0)
        throw std::invalid_argument("--size wants WIDTHxHEIGHT, not " + text);
    return size;
}

bool isFirst(const std::string& value, const std::string& first, const std::string& second, const std::string& option) {
    if (value != first && value != second)
        throw std::invalid_argument(option + " wants " + first + " or " + second + ", not " + value);
    return value == first;
}

} // namespace

std::string text(Size size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

Arguments parse(int count, char** values) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string option = values[i];
        const auto value = [&]() -> std::string {
            if (i + 1 == count) throw std::invalid_argument(option + " wants a value");
            return values[++i];
        };
        if (i == 1 && !option.starts_with("-"))
            arguments.mode = option;
        else if (option == "--filter")
            arguments.filter = std::regex(value(), std::regex::icase);
        else if (option == "--size")
            arguments.sizes.push_back(parseSize(value()));
        else if (option == "--levels")
            arguments.allLevels = isFirst(value(), "all", "best", option);
        else if (option == "--peers")
            arguments.withPeers = isFirst(value(), "all", "none", option);
        else if (option == "--quick")
            arguments.quick = true;
        else if (option == "--json")
            arguments.json = value();
        else
            throw std::invalid_argument("unknown option " + option);
    }
    return arguments;
}

std::vector<const catalogue::Conversion*> select(const Arguments& arguments, const std::vector<std::string>& names) {
    std::vector<const catalogue::Conversion*> result;
    for (const catalogue::Conversion& conversion : catalogue::conversions()) {
        const std::string name = conversion.name();
        if (arguments.filter ? std::regex_search(name, *arguments.filter) : std::ranges::count(names, name) > 0)
            result.push_back(&conversion);
    }
    if (!arguments.filter && result.size() != names.size())
        throw std::runtime_error("a conversion to be measured is not in the catalogue");
    return result;
}

} // namespace bench
