// The plain loops for flips, fields and stretched lines.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "bench/plain/loops.h"
#include "bench/plain/pixels.h"

namespace bench {
namespace {

template <int bytes> using Element = std::array<u8, bytes>;
template <int bytes> Element<bytes>* elements(u8* s) { return reinterpret_cast<Element<bytes>*>(s); }

// ---- In place

template <int bytes> void flipHorizontal(const Job& job) {
    auto* line = elements<bytes>(job.from);
    for (size_t y = 0; y < job.height; ++y, line += job.width) std::reverse(line, line + job.width);
}
template <int bytes> void flipVertical(const Job& job) {
    const size_t pitch = job.width * bytes;
    for (size_t y = 0; y < job.height / 2; ++y)
        std::swap_ranges(job.from + y * pitch, job.from + (y + 1) * pitch, job.from + (job.height - 1 - y) * pitch);
}
template <int bytes> void turn(const Job& job) {
    std::reverse(elements<bytes>(job.from), elements<bytes>(job.from) + job.pixels());
}

// ---- To another buffer

void weave(const Job& job) {
    const u8 *odd = job.from, *even = odd + job.height / 2 * job.width;
    u8* d = job.to;
    for (size_t y = 0; y < job.height; y += 2, d += 2 * job.width, odd += job.width, even += job.width) {
        std::memcpy(d, even, job.width);
        std::memcpy(d + job.width, odd, job.width);
    }
}

template <int bytes> void nearest(const Job& job) {
    const size_t width = job.width / 2 * 3;
    auto* __restrict d = elements<bytes>(job.to);
    const auto* __restrict s = elements<bytes>(job.from);
    for (size_t y = 0; y < job.height; ++y, d += width, s += job.width)
        for (size_t x = 0; x < width; ++x) d[x] = s[std::min((4 * x + 3) / 6, job.width - 1)];
}

// Fixed point, sixteen bits for the position.
template <int bytes> void linear(const Job& job) {
    const size_t width = job.width / 2 * 3;
    u8* __restrict d = job.to;
    const u8* __restrict s = job.from;
    for (size_t y = 0; y < job.height; ++y, s += job.width * bytes)
        for (size_t x = 0; x < width; ++x) {
            const size_t at = x * 43691, i = std::min(at >> 16, job.width - 2);
            const int weight = static_cast<int>(at - (i << 16)) >> 6;
            for (size_t k = 0; k < bytes; ++k) {
                const int a = s[i * bytes + k], b = s[(i + 1) * bytes + k];
                *d++ = static_cast<u8>(a + ((b - a) * weight >> 10));
            }
        }
}

template <int bytes> void add(std::vector<PeerRow>& rows, const std::string& source, const std::string& output) {
    rows.push_back(row(source + " flip horizontal -> " + output, flipHorizontal<bytes>));
    rows.push_back(row(source + " flip vertical -> " + output, flipVertical<bytes>));
    rows.push_back(row(source + " turn -> " + output, turn<bytes>));
    rows.push_back(row(source + " nearest -> " + output, nearest<bytes>));
    rows.push_back(row(source + " linear -> " + output, linear<bytes>, Likeness::near));
}

} // namespace

void addGeometryLoops(std::vector<PeerRow>& rows) {
    add<1>(rows, "Mono8", "Mono8");
    add<2>(rows, "Mono16", "Mono16");
    add<3>(rows, "RGB8", "RGB24");
    add<6>(rows, "RGB16", "RGB48");
    rows.push_back(row("Fields -> Mono8", weave));
}

} // namespace bench
