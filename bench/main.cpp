// Measures the library: see usage in arguments.cpp, and docs/performance.md.
#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "bench/modes.h"

namespace {

struct Mode {
    std::string name;
    void (*run)(const bench::Arguments&);
};
const Mode modes[] = {
    {"table", bench::table}, {"scaling", bench::scaling}, {"linearity", bench::linearity}, {"machine", bench::machine}};

} // namespace

int main(int count, char** values) try {
#if defined(BENCH_SLOW_PLAIN_LOOPS)
    std::fputs("orvella_bench: built for tests, with slow plain loops; to compare with these, use preset bench\n",
               stderr);
#endif
    const bench::Arguments arguments = bench::parse(count, values);
    const auto mode = std::ranges::find(modes, arguments.mode, &Mode::name);
    if (mode == std::end(modes)) throw std::invalid_argument("there is no mode " + arguments.mode);
    mode->run(arguments);
    return 0;
} catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "orvella_bench: %s\n%s", error.what(), bench::usage);
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "orvella_bench: %s\n", error.what());
    return 1;
}
