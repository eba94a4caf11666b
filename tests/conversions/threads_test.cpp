// Many threads at once, from the library's very first call on: they race to find the instruction-set level, too.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "catalogue/colour_matrix.h"
#include "catalogue/conversions.h"
#include "definition/definition.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/start_line.h"

namespace {

using catalogue::Conversion;
using support::Bytes;

constexpr std::uint32_t width = 132, height = 12;

// A conversion with buffers of its own.
struct Job {
    const Conversion* conversion;
    Bytes source, destination, expected;
    OrvErrorType result = OrvErrorOther;

    Job(const Conversion& c, support::Random& random)
        : conversion(&c),
          source(support::filled(c.sourceSize(width, height) + c.beyond, support::Contents::noise, random)),
          destination(support::filled(c.destinationSize(width, height), support::Contents::noise, random)),
          expected(destination) {
        Bytes scratch = source;
        definition::find(c.name())({expected.data(), scratch.data(), width, height, 0, catalogue::colourMatrix});
        if (c.onlyInPlace) destination = source, expected = scratch;
    }

    void run() {
        Bytes& from = conversion->onlyInPlace ? destination : source;
        result = conversion->convert(destination.data(), from.data(), width, height, 0);
    }
};

TEST(Threads, ConvertAtOnce) {
    constexpr std::size_t threadCount = 4;
    support::Random random{support::seed()};
    std::vector<std::vector<Job>> jobs(threadCount); // by thread, all the same conversions
    for (auto& list : jobs)
        for (const Conversion& conversion : catalogue::conversions()) list.emplace_back(conversion, random);

    support::StartLine start(threadCount);
    std::vector<std::thread> threads;
    for (auto& list : jobs)
        threads.emplace_back([&start, &list] {
            start.wait();
            for (Job& job : list) job.run();
        });
    for (std::thread& thread : threads) thread.join();

    for (const auto& list : jobs)
        for (const Job& job : list) {
            EXPECT_EQ(job.result, OrvErrorSuccess) << job.conversion->name();
            EXPECT_TRUE(support::same(job.expected, job.destination)) << job.conversion->name();
        }
}

} // namespace
