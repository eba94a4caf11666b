// Runs every conversion, ours and the plain loop, between marks that the emulator's plugin (plugin.c) sees.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <numeric>
#include <vector>

#include "catalogue/colour_matrix.h"
#include "catalogue/conversions.h"
#include "definition/definition.h"

namespace {

// Rows as long as the benchmark's.
constexpr std::uint32_t width = 640, height = 240;

void mark() { getppid(); }

void count(const catalogue::Conversion& conversion, definition::Function plain) {
    std::vector<std::uint8_t> from(conversion.sourceSize(width, height) + conversion.beyond + width * 4);
    std::vector<std::uint8_t> to(conversion.destinationSize(width, height));
    std::iota(from.begin(), from.end(), std::uint8_t{});
    std::uint8_t* destination = conversion.onlyInPlace ? from.data() : to.data();
    const auto ours = [&] { conversion.convert(destination, from.data(), width, height, 0); };
    const auto theirs = [&] { plain({destination, from.data(), width, height, 0, catalogue::colourMatrix}); };

    std::fprintf(stderr, "row\t%s\t%u\n", conversion.name().c_str(), width * height);
    ours(), mark();
    ours(), mark();
    theirs(), mark();
}

} // namespace

int main() {
    for (const catalogue::Conversion& conversion : catalogue::conversions())
        if (const definition::Function plain = definition::find(conversion.name())) count(conversion, plain);
}
