#include <algorithm>
#include <cstdio>

#include "bench/contest.h"
#include "bench/json.h"
#include "bench/modes.h"

namespace bench {

namespace {

int widthFor(const std::string& name) { return std::max(6, static_cast<int>(name.size())); }

void printHeader(const std::vector<std::string>& names) {
    std::printf("| %-42s | %-9s |", "conversion", "size");
    for (const std::string& name : names) std::printf(" %*s |", widthFor(name), name.c_str());
    std::printf(" ns/pixel |\n|%s|%s|", std::string(44, '-').c_str(), std::string(11, '-').c_str());
    for (const std::string& name : names) std::printf("%s:|", std::string(widthFor(name) + 1, '-').c_str());
    std::printf("---------:|\n");
}

double nanosecondsPerPixel(const Outcome& outcome, double seconds) {
    return seconds * 1e9 / static_cast<double>(outcome.size.pixels());
}

void print(const Outcome& outcome, const std::vector<std::string>& names, const std::string& best) {
    std::printf("| %-42s | %-9s |", outcome.conversion->name().c_str(), text(outcome.size).c_str());
    for (const std::string& name : names) {
        char figure[16] = "";
        if (const Result* result = outcome.find(name))
            std::snprintf(figure, sizeof figure, "%s%.3f", result->likeness == Likeness::near ? "~" : "",
                          outcome.copySeconds / result->seconds);
        std::printf(" %*s |", widthFor(name), figure);
    }
    std::printf(" %8.3f |\n", nanosecondsPerPixel(outcome, outcome.find(best)->seconds));
    std::fflush(stdout);
}

std::vector<Field> fieldsOf(const Outcome& outcome, const std::string& best) {
    std::vector<Field> fields{
        {"conversion", outcome.conversion->name()},
        {"width", double(outcome.size.width)},
        {"height", double(outcome.size.height)},
        {"bytesPerPixel", outcome.conversion->sourceBits / 8.0 + outcome.conversion->destinationBytes},
        {"nsPerPixel", nanosecondsPerPixel(outcome, outcome.find(best)->seconds)},
        {"memcpyNsPerPixel", nanosecondsPerPixel(outcome, outcome.copySeconds)}};
    std::string near;
    for (const Result& result : outcome.results) {
        fields.push_back({result.name, outcome.copySeconds / result.seconds});
        if (result.likeness == Likeness::near) near += (near.empty() ? "" : ",") + result.name;
    }
    fields.push_back({"near", near});
    return fields;
}

} // namespace

void table(const Arguments& arguments) {
    const std::vector<Size> sizes = !arguments.sizes.empty() ? arguments.sizes
                                    : arguments.quick        ? std::vector<Size>{{640, 480}}
                                                             : std::vector<Size>{{640, 480}, {2448, 2048}};
    Conversions conversions;
    for (const catalogue::Conversion& conversion : catalogue::conversions())
        if (!arguments.filter || std::regex_search(conversion.name(), *arguments.filter))
            conversions.push_back(&conversion);

    const Contest contest(arguments.levels, arguments.withPeers);
    for (const catalogue::Conversion* conversion : conversions) contest.check(*conversion);

    const Memory memory(conversions, sizes);
    std::vector<std::vector<Field>> rows;
    printHeader(contest.names());
    for (const Size size : sizes)
        for (const catalogue::Conversion* conversion : conversions) {
            const Outcome outcome = contest.run(*conversion, size, memory, arguments.effort());
            print(outcome, contest.names(), contest.best());
            rows.push_back(fieldsOf(outcome, contest.best()));
        }
    writeJson(arguments.json, rows);
}

} // namespace bench
