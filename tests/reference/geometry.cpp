#include <algorithm>
#include <cmath>
#include <cstring>

#include "reference/families.h"
#include "reference/resampling.h"

namespace reference {

namespace {

// from(x, y): where the pixel at x, y comes from.
template <class From> void movePixels(const Job& job, const From& from) {
    const std::size_t bytes = bytesPerPixel(job.output);
    for (std::size_t y = 0; y < job.height; ++y)
        for (std::size_t x = 0; x < job.width; ++x) {
            const auto [sourceX, sourceY] = from(x, y);
            std::memcpy(job.destination + (y * job.width + x) * bytes,
                        job.source + (sourceY * job.width + sourceX) * bytes, bytes);
        }
}

struct Position {
    std::size_t x, y;
};

double positionOf(std::int64_t i, const Resampling& how) {
    const float ratio = how.a / how.b;
    return static_cast<double>(i) * static_cast<double>(ratio);
}

int weightAt(std::int64_t i, std::int64_t k, const Resampling& how) {
    if (k == 0 || k == how.destinationLength - 1) return 0;
    return static_cast<int>(std::trunc((positionOf(i, how) - static_cast<double>(k)) * 1024));
}

// p: the nearest pixel's byte, q: that of the pixel before.
int blend(const Byte* at, std::int64_t bytesPerPixel, int w) {
    if (w == 0) return at[0];
    const int p = at[0], q = at[-bytesPerPixel];
    return w < 0 ? (p * (1024 + w) + q * -w) >> 10 : (q * (1024 - w) + p * w) >> 10;
}

void stretch(const Job& job, bool linear) {
    const auto width = static_cast<std::int64_t>(job.width), lines = static_cast<std::int64_t>(job.height);
    const auto bytes = static_cast<std::int64_t>(bytesPerPixel(job.output));
    resample(job.destination, job.source, {width * 3 / 2, width * 3 / 2, width, width, lines, bytes, linear, 2, 3});
}

} // namespace

void flipHorizontal(const Job& job) {
    movePixels(job, [&](std::size_t x, std::size_t y) { return Position{job.width - 1 - x, y}; });
}
void flipVertical(const Job& job) {
    movePixels(job, [&](std::size_t x, std::size_t y) { return Position{x, job.height - 1 - y}; });
}
void turn(const Job& job) {
    movePixels(job, [&](std::size_t x, std::size_t y) { return Position{job.width - 1 - x, job.height - 1 - y}; });
}

// The first field's lines are the odd ones, and come first in the source; the second one begins where a line length
// halved downwards puts it.
void weave(const Job& job) {
    const std::size_t secondField = job.height * (job.width / 2);
    for (std::size_t y = 0; y < job.height; ++y)
        std::memcpy(job.destination + y * job.width, job.source + (y % 2 == 0 ? secondField : 0) + y / 2 * job.width,
                    job.width);
}

std::int64_t nearestPixel(std::int64_t i, const Resampling& how) {
    const double last = static_cast<double>(how.linear ? how.destinationLength : how.sourceLength) - 1;
    const double rounded = std::trunc(positionOf(i, how) + 0.5);
    return static_cast<std::int64_t>(rounded > 0 ? std::min(rounded, last) : 0);
}

void resample(Byte* destination, const Byte* source, const Resampling& how) {
    for (std::int64_t y = 0; y < how.lines; ++y)
        for (std::int64_t i = 0; i < how.destinationLength; ++i) {
            const std::int64_t k = nearestPixel(i, how);
            const Byte* from = source + (y * how.sourcePitch + k) * how.bytesPerPixel;
            Byte* to = destination + (y * how.destinationPitch + i) * how.bytesPerPixel;
            for (std::int64_t c = 0; c < how.bytesPerPixel; ++c)
                to[c] =
                    how.linear ? static_cast<Byte>(blend(from + c, how.bytesPerPixel, weightAt(i, k, how))) : from[c];
        }
}

void stretchNearest(const Job& job) { stretch(job, false); }
void stretchLinear(const Job& job) { stretch(job, true); }

} // namespace reference
