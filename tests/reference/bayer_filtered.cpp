// LCAA, LCAAV and YUV422: the whole image at full resolution first, then each half filtered as one stream of pixels.
#include <algorithm>
#include <vector>

#include "reference/families.h"
#include "reference/mosaic.h"

namespace reference {

namespace {

using Plane = std::vector<int>;

struct Planes {
    Plane y, u, v;
};

Planes fullResolution(const Job& job) {
    Planes planes{Plane(job.pixels()), Plane(job.pixels()), Plane(job.pixels())};
    const auto sample = [&](std::size_t x, std::size_t y) { return int{job.source[y * job.width + x]}; };
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const std::size_t x = std::min(i % job.width, job.width - 2), y = std::min(i / job.width, job.height - 2);
        const Colour c = blockColour(sample, job.pattern, x, y, 8);
        planes.y[i] = (29 * c.b + 77 * c.r + 150 * c.g) >> 8;
        planes.u[i] = ((128 * c.b - 43 * c.r - 85 * c.g) >> 8) + 128;
        planes.v[i] = ((128 * c.r - 21 * c.b - 107 * c.g) >> 8) + 128;
    }
    return planes;
}

// One half of a chroma plane, as a stream. The upper half's last row stands above the lower half.
struct Stream {
    const int* samples;
    std::size_t width, rows;
    bool isLower;

    std::size_t pairs() const { return width * rows / 2; }
};

int pairMean(const Stream& s, std::size_t pair) { return (s.samples[2 * pair] + s.samples[2 * pair + 1]) >> 1; }

int lcaa(const Stream& s, std::size_t pair) {
    if (pair == 0) return pairMean(s, pair);
    const int* at = s.samples + 2 * pair;
    return (at[0] + at[1] + at[-2] + at[-1]) >> 2;
}

int lcaav(const Stream& s, std::size_t pair) {
    const std::size_t i = 2 * pair, width = s.width, lastPairOfSecondToLastRow = (s.rows - 1) * width / 2 - 1;
    const int* at = s.samples;
    if (pair + 2 >= s.pairs()) return at[i];

    const int own = at[i == 0 ? 0 : i - 1] + at[i] + at[i + 1] + at[i + 2];
    const bool oneRow = s.rows == 1;
    if (!oneRow && pair < lastPairOfSecondToLastRow) {
        const int below = at[i + width - 1] + at[i + width] + at[i + width + 1] + at[i + width + 2];
        return (own + below + 4) >> 3;
    }
    // From here on the row above; where there is none, the row itself.
    const auto above = [&](std::size_t column) { // of the row above, counted from the pair's left neighbour
        const auto position = static_cast<std::ptrdiff_t>(i + column) - static_cast<std::ptrdiff_t>(width) - 1;
        return position >= 0 || s.isLower ? at[position] : at[position + static_cast<std::ptrdiff_t>(width)];
    };
    if (oneRow || (i < width && !s.isLower)) return (own + own + 4) >> 3;
    return (own + above(0) + above(1) + above(2) + above(3) + 4) >> 3;
}

void filtered(const Job& job, int (*filter)(const Stream&, std::size_t)) {
    const Planes planes = fullResolution(job);
    const std::size_t half = job.pixels() / 2;
    for (const std::size_t start : {std::size_t{0}, half}) {
        const Stream u{planes.u.data() + start, job.width, job.height / 2, start > 0};
        const Stream v{planes.v.data() + start, job.width, job.height / 2, start > 0};
        for (std::size_t i = 0; i < half; ++i) {
            const int y = planes.y[start + i], chromaU = filter(u, i / 2), chromaV = filter(v, i / 2);
            put(job.destination, start + i, job.output, yuvColour(y, chromaU, chromaV));
            if (start == 0) continue; // the lower half stays behind in the source
            job.source[2 * i] = static_cast<Byte>(i % 2 == 0 ? chromaU : chromaV);
            job.source[2 * i + 1] = static_cast<Byte>(y);
        }
    }
}

} // namespace

void bayer8ByLcaa(const Job& job) { filtered(job, lcaa); }
void bayer8ByLcaav(const Job& job) { filtered(job, lcaav); }
void bayer8ByYuv422(const Job& job) { filtered(job, pairMean); }

} // namespace reference
