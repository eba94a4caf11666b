// Two threads, each with its own buffers, against one: wall-clock time, one and two taking turns.
#include <algorithm>
#include <barrier>
#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>

#include "bench/contest.h"
#include "bench/json.h"
#include "bench/modes.h"

namespace bench {

namespace {

const std::vector<std::string> measured{
    "Mono8 -> BGR24",        "RGB8 -> BGR24",       "Bayer8 2x2 -> BGR24",
    "Bayer8 2x2 -> Mono8",   "Bayer8 3x3 -> BGR24", "Bayer8 LCAA -> BGR24",
    "Bayer10p 2x2 -> BGR24", "YUV 4:2:2 -> BGR24",  "RGB8 double precision -> Mono8"};

using Runs = std::vector<std::function<void()>>;

// From when the first thread begins, all being ready, until the last one is done.
double wallSeconds(const Runs& runs, int calls) {
    using Clock = std::chrono::steady_clock;
    std::barrier ready(static_cast<std::ptrdiff_t>(runs.size()));
    std::vector<Clock::time_point> begins(runs.size()), ends(runs.size());
    std::vector<std::thread> threads;
    for (std::size_t k = 0; k < runs.size(); ++k)
        threads.emplace_back([&, k] {
            ready.arrive_and_wait();
            begins[k] = Clock::now();
            for (int i = 0; i < calls; ++i) runs[k]();
            ends[k] = Clock::now();
        });
    for (std::thread& thread : threads) thread.join();
    return std::chrono::duration<double>(*std::ranges::max_element(ends) - *std::ranges::min_element(begins)).count();
}

// Twice the work over the time it takes two threads, by the time it takes one: 2 is perfect.
double speedUp(const Runs& two, bool quick) {
    const Runs one{two[0]};
    const double turn = quick ? 0.005 : 0.03;
    wallSeconds(two, 1);
    const int calls = std::max(1, static_cast<int>(turn / wallSeconds(one, 1)));
    std::vector<double> ones, twos;
    for (int round = 0; round < (quick ? 5 : 21); ++round) {
        ones.push_back(wallSeconds(one, calls));
        twos.push_back(wallSeconds(two, calls));
    }
    return 2 * lowQuantile(ones) / lowQuantile(twos);
}

// What the machine itself allows: arithmetic that stays in registers.
void arithmetic() {
    std::uint64_t state = 1;
    for (int i = 0; i < 100000; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        asm volatile("" : "+r"(state));
    }
}

} // namespace

void scaling(const Arguments& arguments) {
    const std::vector<Size> sizes = arguments.sizes.empty() ? std::vector<Size>{{640, 480}} : arguments.sizes;
    const Conversions conversions = select(arguments, measured);
    const Memory first(conversions, sizes), second(conversions, sizes);
    const kel::Level level = kel::highestLevel();

    std::vector<std::vector<Field>> rows;
    std::printf("| %-42s | %-9s | two threads / one |\n|%s|%s|------------------:|\n", "conversion", "size",
                std::string(44, '-').c_str(), std::string(11, '-').c_str());
    const auto add = [&](const std::string& name, Size size, double ratio) {
        std::printf("| %-42s | %-9s | %17.2f |\n", name.c_str(), size.pixels() ? text(size).c_str() : "", ratio);
        std::fflush(stdout);
        rows.push_back(
            {{"conversion", name}, {"width", double(size.width)}, {"height", double(size.height)}, {"speedUp", ratio}});
    };
    add("(arithmetic in registers)", {0, 0}, speedUp({arithmetic, arithmetic}, arguments.quick));
    for (const Size size : sizes)
        for (const catalogue::Conversion* conversion : conversions) {
            const Runs two{ours(*conversion, size, first, level).run, ours(*conversion, size, second, level).run};
            add(conversion->name(), size, speedUp(two, arguments.quick));
        }
    writeJson(arguments.json, rows);
}

} // namespace bench
