#include <algorithm>

#include "reference/families.h"

namespace reference {

namespace {

// A block in the words of the data sheet: two lines, the even and the odd column.
struct Block {
    int upperEven, upperOdd, lowerEven, lowerOdd;
};

Block blockAt(const Job& job, std::size_t x, std::size_t y) {
    const auto sample = [&](std::size_t column, std::size_t line) {
        const std::size_t row = line % 2 == 0 ? job.height / 2 + line / 2 : (line - 1) / 2;
        return int{job.source[row * job.width + column]};
    };
    const std::size_t even = x % 2 == 0 ? x : x + 1, odd = x % 2 == 0 ? x + 1 : x;
    return {sample(even, y), sample(odd, y), sample(even, y + 1), sample(odd, y + 1)};
}

struct Differences {
    int p, q; // towards blue, towards red
};
Differences differences(const Block& s, std::size_t line) {
    const auto [eU, oU, eL, oL] = s;
    switch (line % 4) {
    case 0: return {(eU + oL) - (oU + eL), (oU + oL) - (eU + eL)};
    case 1: return {(oU + eL) - (eU + oL), (oU + oL) - (eU + eL)};
    case 2: return {(eU + eL) - (oU + oL), (oU + eL) - (eU + oL)};
    default: return {(eU + eL) - (oU + oL), (eU + oL) - (oU + eL)};
    }
}

Colour colourOf(int y, int p, int q) {
    const auto clamped = [](int value) { return value < 0 ? 0 : value >= 255 * 1024 ? 255 : value >> 10; };
    return {clamped(1024 * y + 2165 * q + 344 * p), clamped(1024 * y - 917 * q - 1078 * p),
            clamped(1024 * y - 959 * q + 4645 * p)};
}

int sumOf(const Block& s) { return s.upperEven + s.upperOdd + s.lowerEven + s.lowerOdd; }

Colour colourOf(const Block& s, std::size_t line) {
    const Differences d = differences(s, line);
    return colourOf(sumOf(s) / 4, d.p * 1024 / 4096, d.q * 1024 / 4096);
}

// Of the four blocks that touch a pixel.
Colour colourBy3x3(const Job& job, std::size_t x, std::size_t y) {
    int sum = 0, p = 0, q = 0;
    for (const std::size_t line : {y - 1, y})
        for (const std::size_t column : {x - 1, x}) {
            const Block block = blockAt(job, column, line);
            const Differences d = differences(block, line);
            sum += sumOf(block), p += d.p, q += d.q;
        }
    return colourOf(sum / 16, p / 16, q / 16);
}

void copyRow(const Job& job, std::size_t to, std::size_t from) {
    for (std::size_t x = 0; x < job.width; ++x)
        copyPixel(job.destination, to * job.width + x, from * job.width + x, job.output);
}

} // namespace

void cygm8(const Job& job) {
    for (std::size_t y = 0; y + 1 < job.height; ++y)
        for (std::size_t x = 0; x < job.width; ++x) {
            const std::size_t column = std::min(x, job.width - 2);
            put(job.destination, y * job.width + x, job.output, colourOf(blockAt(job, column, y), y));
        }
    copyRow(job, job.height - 1, job.height - 2);
}

void cygm8By3x3(const Job& job) {
    for (std::size_t y = 1; y + 1 < job.height; ++y)
        for (std::size_t x = 0; x < job.width; ++x) {
            const std::size_t column = std::clamp<std::size_t>(x, 1, job.width - 2);
            put(job.destination, y * job.width + x, job.output, colourBy3x3(job, column, y));
        }
    copyRow(job, 0, 1);
    copyRow(job, job.height - 1, job.height - 2);
}

void cygm8Binned(const Job& job) {
    for (std::size_t y = 0; y < job.height; y += 2)
        for (std::size_t x = 0; x < job.width; x += 2)
            put(job.destination, y / 2 * (job.width / 2) + x / 2, job.output, colourOf(blockAt(job, x, y), y));
}

} // namespace reference
