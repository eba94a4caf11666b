// The colours of a mosaic's samples, and the 2x2 rule over any kind of sample.
#pragma once
#include "reference/reference.h"

namespace reference {

// 'R', 'G' or 'B'
inline char siteColour(unsigned pattern, std::size_t x, std::size_t y) {
    constexpr const char* patterns[] = {"RGGB", "GBRG", "GRBG", "BGGR"};
    return patterns[pattern][y % 2 * 2 + x % 2];
}

// sample(x, y): a sample of the mosaic, of `bits` bits.
template <class Sample>
Colour blockColour(const Sample& sample, unsigned pattern, std::size_t x, std::size_t y, int bits) {
    Colour colour{0, 0, 0, bits};
    int greens = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        const int value = sample(x + k % 2, y + k / 2);
        switch (siteColour(pattern, x + k % 2, y + k / 2)) {
        case 'R': colour.r = value; break;
        case 'B': colour.b = value; break;
        default: greens += value;
        }
    }
    colour.g = greens >> 1;
    return colour;
}

// The last column repeats the colour of the one before, the last row all bytes of the one above.
template <class Sample> void by2x2(const Job& job, const Sample& sample, int bits) {
    for (std::size_t y = 0; y + 1 < job.height; ++y)
        for (std::size_t x = 0; x < job.width; ++x) {
            const std::size_t column = x + 1 < job.width ? x : x - 1;
            put(job.destination, y * job.width + x, job.output, blockColour(sample, job.pattern, column, y, bits));
        }
    for (std::size_t x = 0; x < job.width; ++x) {
        const std::size_t last = (job.height - 1) * job.width + x;
        copyPixel(job.destination, last, last - job.width, job.output);
    }
}

} // namespace reference
