// Time per pixel: squares from 64x64 to 8192x8192, and images of 2 to 64 columns.
#include <cstdio>

#include "bench/contest.h"
#include "bench/json.h"
#include "bench/modes.h"

namespace bench {

namespace {

const std::vector<std::string> measured{"Mono8 -> BGR24",      "Mono12p -> Mono16",   "YUV 4:2:2 -> BGR24",
                                        "Bayer8 2x2 -> BGR24", "Bayer8 3x3 -> BGR24", "Bayer8 LCAA -> BGR24"};

std::vector<Size> squares() {
    std::vector<Size> sizes;
    for (std::uint32_t side = 64; side <= 8192; side *= 2) sizes.push_back({side, side});
    return sizes;
}

std::vector<Size> narrow() {
    std::vector<Size> sizes;
    for (std::uint32_t width = 2; width <= 64; width += 2) sizes.push_back({width, 1024});
    return sizes;
}

} // namespace

void linearity(const Arguments& arguments) {
    std::vector<Size> sizes = arguments.sizes;
    if (sizes.empty()) {
        sizes = squares();
        for (const Size size : narrow()) sizes.push_back(size);
    }
    const Conversions conversions = select(arguments, measured);
    const Memory memory(conversions, sizes);

    std::vector<std::vector<Field>> rows;
    std::printf("| %-42s | %-9s | ns/pixel | memcpy |\n|%s|%s|---------:|-------:|\n", "conversion", "size",
                std::string(44, '-').c_str(), std::string(11, '-').c_str());
    for (const catalogue::Conversion* conversion : conversions)
        for (const Size size : sizes) {
            const std::vector<double> seconds =
                measure({copying(*conversion, size, memory), ours(*conversion, size, memory, kel::highestLevel())},
                        arguments.effort());
            const double perPixel = 1e9 / static_cast<double>(size.pixels());
            std::printf("| %-42s | %-9s | %8.3f | %6.3f |\n", conversion->name().c_str(), text(size).c_str(),
                        seconds[1] * perPixel, seconds[0] * perPixel);
            std::fflush(stdout);
            rows.push_back({{"conversion", conversion->name()},
                            {"width", double(size.width)},
                            {"height", double(size.height)},
                            {"nsPerPixel", seconds[1] * perPixel},
                            {"memcpyNsPerPixel", seconds[0] * perPixel}});
        }
    writeJson(arguments.json, rows);
}

} // namespace bench
