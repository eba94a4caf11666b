// Times every conversion of the catalogue against memcpy moving the same number of bytes (read + written).
//
//     orvella_bench [--filter REGEX] [--size WxH]... [--levels all|best] [--quick] [--json FILE]
//
// The figures are memcpy's time over the conversion's: 1.00 is as fast as memcpy, more is faster.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <regex>
#include <stdexcept>

#include "bench/buffer.h"
#include "bench/measure.h"
#include "catalogue/conversions.h"
#include "kernels/level.h"

namespace {

struct Size {
    std::uint32_t width, height;
};

struct Arguments {
    std::regex filter{""};
    std::vector<Size> sizes;
    bool allLevels = true;
    bench::Effort effort{25, 0.002};
    std::string json;
};

struct Row {
    std::string name;
    Size size;
    std::vector<double> ratios; // to memcpy, by level
    double nanosecondsPerPixel; // at the highest level
};

Size parseSize(const std::string& text) {
    Size size{};
    if (std::sscanf(text.c_str(), "%ux%u", &size.width, &size.height) != 2)
        throw std::invalid_argument("--size wants WIDTHxHEIGHT, not " + text);
    return size;
}

Arguments parse(int count, char** values) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string option = values[i];
        const auto value = [&]() -> std::string {
            if (i + 1 == count) throw std::invalid_argument(option + " wants a value");
            return values[++i];
        };
        if (option == "--filter")
            arguments.filter = std::regex(value(), std::regex::icase);
        else if (option == "--size")
            arguments.sizes.push_back(parseSize(value()));
        else if (option == "--levels")
            arguments.allLevels = value() == "all";
        else if (option == "--quick")
            arguments.effort = {7, 0.0005};
        else if (option == "--json")
            arguments.json = value();
        else
            throw std::invalid_argument(
                "unknown option " + option +
                "; options: --filter REGEX, --size WxH, --levels all|best, --quick, --json FILE");
    }
    if (arguments.sizes.empty()) arguments.sizes = {{640, 480}, {2448, 2048}};
    return arguments;
}

std::vector<kel::Level> levelsToTime(bool all) {
    std::vector<kel::Level> result;
    for (const kel::Level level : kel::levels)
        if (level == kel::highestLevel() || (all && level < kel::highestLevel())) result.push_back(level);
    return result;
}

OrvErrorType convert(const catalogue::Conversion& conversion, const bench::Buffer& to, const bench::Buffer& from,
                     Size size) {
    return conversion.convert(conversion.onlyInPlace ? from.data() : to.data(), from.data(), size.width, size.height,
                              0);
}

// A conversion that refuses would look very fast.
void requireSuccess(const catalogue::Conversion& conversion, const bench::Buffer& to, const bench::Buffer& from,
                    Size size) {
    const OrvErrorType result = convert(conversion, to, from, size);
    if (result != OrvErrorSuccess) throw std::runtime_error(conversion.name() + " answers " + std::to_string(result));
}

Row time(const catalogue::Conversion& conversion, Size size, const std::vector<kel::Level>& levels,
         bench::Effort effort) {
    const std::size_t read = conversion.sourceSize(size.width, size.height);
    const std::size_t written = conversion.destinationSize(size.width, size.height);
    const std::size_t moved = (read + written) / 2; // memcpy reads and writes each byte
    const bench::Buffer from(read + conversion.beyond), to(written), copyFrom(moved), copyTo(moved);
    requireSuccess(conversion, to, from, size);

    std::vector<bench::Contestant> contestants{{"memcpy", [&] {
                                                    std::memcpy(copyTo.data(), copyFrom.data(), moved);
                                                    asm volatile("" ::: "memory");
                                                }}};
    for (const kel::Level level : levels)
        contestants.push_back({kel::nameOf(level), [&, level] {
                                   kel::limitLevel(level);
                                   convert(conversion, to, from, size);
                               }});

    const std::vector<double> seconds = bench::measure(contestants, effort);
    Row row{conversion.name(), size, {}, 0};
    for (std::size_t i = 1; i < seconds.size(); ++i) row.ratios.push_back(seconds[0] / seconds[i]);
    row.nanosecondsPerPixel = seconds.back() * 1e9 / size.width / size.height;
    return row;
}

void printHeader(const std::vector<kel::Level>& levels) {
    std::printf("| %-38s | %-9s |", "conversion", "size");
    for (const kel::Level level : levels) std::printf(" %8s |", kel::nameOf(level));
    std::printf(" %8s |\n|%s|%s|", "ns/pixel", std::string(40, '-').c_str(), std::string(11, '-').c_str());
    for (std::size_t i = 0; i <= levels.size(); ++i) std::printf("---------:|");
    std::printf("\n");
}

void print(const Row& row) {
    const std::string size = std::to_string(row.size.width) + "x" + std::to_string(row.size.height);
    std::printf("| %-38s | %-9s |", row.name.c_str(), size.c_str());
    for (const double ratio : row.ratios) std::printf(" %8.2f |", ratio);
    std::printf(" %8.3f |\n", row.nanosecondsPerPixel);
    std::fflush(stdout);
}

void writeJson(const std::string& file, const std::vector<Row>& rows, const std::vector<kel::Level>& levels) {
    std::ofstream out(file);
    out << "[";
    for (const Row& row : rows) {
        out << (&row == rows.data() ? "\n" : ",\n") << R"( {"conversion": ")" << row.name << R"(", "width": )"
            << row.size.width << R"(, "height": )" << row.size.height << R"(, "nsPerPixel": )"
            << row.nanosecondsPerPixel;
        for (std::size_t i = 0; i < levels.size(); ++i)
            out << R"(, ")" << kel::nameOf(levels[i]) << R"(": )" << row.ratios[i];
        out << "}";
    }
    out << "\n]\n";
    if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

void benchmark(const Arguments& arguments) {
    const std::vector<kel::Level> levels = levelsToTime(arguments.allLevels);
    std::vector<Row> rows;
    printHeader(levels);
    for (const Size size : arguments.sizes)
        for (const catalogue::Conversion& conversion : catalogue::conversions()) {
            if (!std::regex_search(conversion.name(), arguments.filter)) continue;
            rows.push_back(time(conversion, size, levels, arguments.effort));
            print(rows.back());
        }
    if (!arguments.json.empty()) writeJson(arguments.json, rows, levels);
}

} // namespace

int main(int count, char** values) try {
    benchmark(parse(count, values));
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "orvella_bench: %s\n", error.what());
    return 1;
}
