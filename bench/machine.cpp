#include <cstdio>

#include "bench/contest.h"
#include "bench/json.h"
#include "bench/modes.h"

namespace bench {

namespace {

#if defined(__clang__)
constexpr const char* compiler = "clang " __clang_version__;
#else
constexpr const char* compiler = "g++ " __VERSION__;
#endif

// A chain of additions, each of which waits for the one before: one cycle each.
constexpr int chain = 1000000;
void additions() {
    std::uint64_t sum = 1;
    for (int i = 0; i < chain / 8; ++i)
        asm volatile("add %0, %0\n add %0, %0\n add %0, %0\n add %0, %0\n"
                     "add %0, %0\n add %0, %0\n add %0, %0\n add %0, %0\n"
                     : "+r"(sum));
}

} // namespace

void machine(const Arguments& arguments) {
    const double gigahertz = chain / measure({{"additions", additions}}, arguments.effort())[0] * 1e-9;
    std::printf("compiled by: %s\nhighest level: %s\nclock: %.2f GHz\n", compiler, kel::nameOf(kel::highestLevel()),
                gigahertz);
    writeJson(arguments.json,
              {{{"compiler", compiler}, {"level", kel::nameOf(kel::highestLevel())}, {"gigahertz", gigahertz}}});
}

} // namespace bench
