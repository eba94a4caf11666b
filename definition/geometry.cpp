// Flips, which work in place, fields, and stretched lines.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "definition/tables.h"

namespace definition {
namespace {

template <int bytes> using Pixel = std::array<u8, bytes>;
template <int bytes> Pixel<bytes>* pixels(u8* s) { return reinterpret_cast<Pixel<bytes>*>(s); }

template <int bytes> void flipHorizontal(const Job& job) {
    auto* line = pixels<bytes>(job.source);
    for (size_t y = 0; y < job.height; ++y, line += job.width) std::reverse(line, line + job.width);
}
template <int bytes> void flipVertical(const Job& job) {
    const size_t pitch = job.width * bytes;
    for (size_t y = 0; y < job.height / 2; ++y)
        std::swap_ranges(job.source + y * pitch, job.source + (y + 1) * pitch,
                         job.source + (job.height - 1 - y) * pitch);
}
template <int bytes> void turn(const Job& job) {
    std::reverse(pixels<bytes>(job.source), pixels<bytes>(job.source) + job.pixels());
}

// The first field holds the odd lines. The second one begins where half a line length, rounded down, puts it.
void weave(const Job& job) {
    const u8 *odd = job.source, *even = odd + job.height * (job.width / 2);
    u8* d = job.destination;
    for (size_t y = 0; y < job.height; y += 2, d += 2 * job.width, odd += job.width, even += job.width) {
        std::memcpy(d, even, job.width);
        std::memcpy(d + job.width, odd, job.width);
    }
}

// ---- Stretched lines

double positionOf(std::int64_t i, const Resampling& how) {
    return static_cast<double>(i) * static_cast<double>(how.a / how.b);
}

// How far behind the nearest source pixel an output pixel lies, in 1/1024. The first and the last one are not blended.
int weightAt(std::int64_t i, std::int64_t nearest, const Resampling& how) {
    if (!how.linear || nearest == 0 || nearest == how.destinationLength - 1) return 0;
    return static_cast<int>((positionOf(i, how) - static_cast<double>(nearest)) * 1024);
}

// p: a byte of the nearest source pixel, q: of the pixel before, w: the weight.
inline u8 blended(int p, int q, int w) {
    if (w == 0) return static_cast<u8>(p);
    return static_cast<u8>((w < 0 ? p * (1024 + w) - q * w : q * (1024 - w) + p * w) >> 10);
}

struct From {
    std::int64_t nearest; // source pixel
    int weight;
};

// Lines are finished one after the other: where pitches are smaller than lengths, they overlap.
template <bool linear, int bytes> void resampleLines(u8* destination, const u8* source, const Resampling& how) {
    std::vector<From> from;
    for (std::int64_t i = 0; i < how.destinationLength; ++i) {
        const std::int64_t nearest = nearestPixel(i, how);
        from.push_back({nearest, weightAt(i, nearest, how)});
    }
    for (std::int64_t y = 0; y < how.lines; ++y) {
        u8* d = destination + y * how.destinationPitch * bytes;
        const u8* line = source + y * how.sourcePitch * bytes;
        for (const auto [nearest, weight] : from) {
            const u8* s = line + nearest * bytes;
            for (int k = 0; k < bytes; ++k) d[k] = linear && weight != 0 ? blended(s[k], s[k - bytes], weight) : s[k];
            d += bytes;
        }
    }
}

template <bool linear, int bytes> void stretch(const Job& job) {
    const auto width = static_cast<std::int64_t>(job.width), lines = static_cast<std::int64_t>(job.height);
    resampleLines<linear, bytes>(job.destination, job.source,
                                 {width * 3 / 2, width * 3 / 2, width, width, lines, bytes, linear, 2, 3});
}

template <int bytes> void add(Table& table, const std::string& source, const std::string& output) {
    table.add(source + " flip horizontal", output, flipHorizontal<bytes>);
    table.add(source + " flip vertical", output, flipVertical<bytes>);
    table.add(source + " turn", output, turn<bytes>);
    table.add(source + " nearest", output, stretch<false, bytes>);
    table.add(source + " linear", output, stretch<true, bytes>);
}

} // namespace

// In linear mode the end of the output line counts, not that of the source line.
std::int64_t nearestPixel(std::int64_t i, const Resampling& how) {
    const double last = static_cast<double>(how.linear ? how.destinationLength : how.sourceLength) - 1;
    const double rounded = std::trunc(positionOf(i, how) + 0.5);
    return static_cast<std::int64_t>(rounded > 0 ? std::min(rounded, last) : 0);
}

void resample(u8* destination, const u8* source, const Resampling& how) {
    const auto byBytes = [&]<bool linear, int... bytes>(std::integer_sequence<int, bytes...>) {
        constexpr decltype(&resampleLines<linear, 1>) functions[] = {resampleLines<linear, bytes + 1>...};
        functions[how.bytesPerPixel - 1](destination, source, how);
    };
    constexpr std::make_integer_sequence<int, 6> sizes;
    how.linear ? byBytes.operator()<true>(sizes) : byBytes.operator()<false>(sizes);
}

void addGeometry(Table& table) {
    add<1>(table, "Mono8", "Mono8");
    add<2>(table, "Mono16", "Mono16");
    add<3>(table, "RGB8", "RGB24");
    add<6>(table, "RGB16", "RGB48");
    table.add("Fields", "Mono8", weave);
}

} // namespace definition
