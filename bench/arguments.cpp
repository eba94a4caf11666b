#include "bench/arguments.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <ranges>
#include <stdexcept>

namespace bench {

const char* const usage = "usage: orvella_bench [table|scaling|linearity|machine] [--filter REGEX] [--size WxH]...\n"
                          "                     [--levels LEVEL,...] [--peers all|none] [--quick] [--json FILE]\n";

namespace {

Size parseSize(const std::string& text) {
    Size size{};
    if (std::sscanf(text.c_str(), "%ux%u", &size.width, &size.height) != 2 || size.pixels() == 0)
        throw std::invalid_argument("--size wants WIDTHxHEIGHT, not " + text);
    return size;
}

std::vector<kel::Level> levelsOfThisMachine() {
    std::vector<kel::Level> levels(std::begin(kel::levels), std::end(kel::levels));
    std::erase_if(levels, [](kel::Level level) { return level > kel::highestLevel(); });
    return levels;
}

std::vector<kel::Level> parseLevels(const std::string& list) {
    std::vector<std::string> names;
    for (const auto name : std::views::split(list, ',')) names.emplace_back(name.begin(), name.end());
    std::vector<kel::Level> levels = levelsOfThisMachine();
    std::erase_if(levels, [&](kel::Level level) { return std::ranges::count(names, kel::nameOf(level)) == 0; });
    if (levels.size() != names.size())
        throw std::invalid_argument("--levels: this machine does not have all of " + list);
    return levels;
}

bool parsePeers(const std::string& value) {
    if (value != "all" && value != "none") throw std::invalid_argument("--peers wants all or none, not " + value);
    return value == "all";
}

} // namespace

Arguments parse(int count, char** values) {
    Arguments arguments;
    arguments.levels = levelsOfThisMachine();
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
            arguments.levels = parseLevels(value());
        else if (option == "--peers")
            arguments.withPeers = parsePeers(value());
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
