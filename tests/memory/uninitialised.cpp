// For clang's memory sanitizer: every conversion of the catalogue at every level, from a source whose bytes are known into
// memory whose bytes are not. It ends the program where something unknown decides what is done; and all that a conversion
// writes must be known afterwards. No test library: the sanitizer must have seen all code that writes.
#include <sanitizer/msan_interface.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "catalogue/conversions.h"
#include "kernels/level.h"

// Memory of the standard library, which is not instrumented, counts as known; that of the library does not.
extern "C" const char* __msan_default_options();
extern "C" const char* __msan_default_options() { return "poison_in_malloc=0"; }
extern "C" void* __real_malloc(std::size_t);
extern "C" void* __wrap_malloc(std::size_t);
extern "C" void* __wrap_malloc(std::size_t size) {
    void* memory = __real_malloc(size);
    if (memory) __msan_poison(memory, size);
    return memory;
}

namespace {

using catalogue::Conversion;
using Memory = std::unique_ptr<std::uint8_t[]>;

// Source and destination lie between bytes that nobody knows.
constexpr std::size_t margin = 256;
Memory unknown(std::size_t size) {
    Memory memory(new std::uint8_t[size + 2 * margin]);
    __msan_poison(memory.get(), size + 2 * margin);
    return memory;
}

bool leavesNothingUnknown(const Conversion& conversion, std::uint32_t width, std::uint32_t height) {
    const std::size_t from = conversion.sourceSize(width, height) + conversion.beyond;
    const std::size_t to = conversion.destinationSize(width, height);
    const Memory source = unknown(from), destination = unknown(to);
    std::uint8_t *s = source.get() + margin, *d = conversion.onlyInPlace ? s : destination.get() + margin;
    for (std::size_t i = 0; i < from; ++i) s[i] = static_cast<std::uint8_t>(i * i >> 3);
    if (conversion.keepsFourthByte)
        for (std::size_t i = 3; i < to; i += 4) d[i] = 99;
    if (conversion.source == "Bayer8" && conversion.method == "3x3" && width == 2) // repeats what was there
        for (std::size_t i = 0; i < to; ++i) d[i] = 99;
    const bool done = conversion.convert(d, s, width, height, 1) == OrvErrorSuccess;
    const std::intptr_t at = __msan_test_shadow(d, to);
    if (done && at < 0) return true;
    std::printf("%s, %u x %u: %s, byte %td is unknown\n", conversion.name().c_str(), width, height,
                kel::nameOf(kel::level()), at);
    return false;
}

} // namespace

int main() {
    std::size_t conversions = 0, failures = 0;
    for (const kel::Level level : kel::levels) {
        if (level > kel::highestLevel()) break;
        kel::limitLevel(level);
        for (const Conversion& conversion : catalogue::conversions())
            for (std::uint32_t width = 1; width <= 130; ++width) {
                const std::uint32_t height = conversion.heightStep > 1 ? 8 : 2;
                if (width % conversion.widthStep || width < conversion.smallest) continue;
                failures += !leavesNothingUnknown(conversion, width, height);
                ++conversions;
            }
    }
    std::printf("%zu conversions, %zu of them with unknown bytes\n", conversions, failures);
    return conversions == 0 || failures > 0;
}
