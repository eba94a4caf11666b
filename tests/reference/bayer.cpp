#include <algorithm>
#include <cstring>

#include "reference/families.h"
#include "reference/mosaic.h"

namespace reference {

void bayer8(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return int{job.source[y * job.width + x]}; }, 8);
}

namespace {

Colour colourBy3x3(const Job& job, std::size_t x, std::size_t y) {
    const auto at = [&](std::size_t column, std::size_t row) { return int{job.source[row * job.width + column]}; };
    const int here = at(x, y), horizontal = at(x - 1, y) + at(x + 1, y), vertical = at(x, y - 1) + at(x, y + 1);
    const int diagonal = at(x - 1, y - 1) + at(x + 1, y - 1) + at(x - 1, y + 1) + at(x + 1, y + 1);
    switch (siteColour(job.pattern, x, y)) {
    case 'R': return {here, (horizontal + vertical) >> 2, diagonal >> 2};
    case 'B': return {diagonal >> 2, (horizontal + vertical) >> 2, here};
    default: break;
    }
    const int green = (2 * here + at(x - 1, y + 1) + at(x + 1, y - 1)) >> 2;
    return siteColour(job.pattern, x + 1, y) == 'R' ? Colour{horizontal >> 1, green, vertical >> 1}
                                                    : Colour{vertical >> 1, green, horizontal >> 1};
}

} // namespace

void bayer8By3x3(const Job& job) {
    const std::size_t pitch = job.width * bytesPerPixel(job.output);
    std::memset(job.destination, 0, pitch);
    for (std::size_t y = 1; y + 1 < job.height; ++y) {
        const std::size_t row = y * job.width;
        for (std::size_t x = 1; x + 1 < job.width; ++x)
            put(job.destination, row + x, job.output, colourBy3x3(job, x, y));
        copyPixel(job.destination, row + job.width - 1, row + job.width - 2, job.output);
        copyPixel(job.destination, row, row + 1, job.output);
    }
    std::memcpy(job.destination + (job.height - 1) * pitch, job.destination + (job.height - 2) * pitch, pitch);
    std::memcpy(job.destination, job.destination + pitch, pitch);
}

template <int bitsUsed, bool isBigEndian> void bayer16(const Job& job) {
    const bool deep = job.output == Output::bgr48;
    by2x2(
        job,
        [&](std::size_t x, std::size_t y) {
            const Byte* at = job.source + 2 * (y * job.width + x);
            const int word = isBigEndian ? bigEndian(at) : littleEndian(at);
            return deep ? word << (16 - bitsUsed) & 0xFFFF : word >> (bitsUsed - 8) & 0xFF;
        },
        deep ? 16 : 8);
}
template void bayer16<10, false>(const Job&);
template void bayer16<12, false>(const Job&);
template void bayer16<12, true>(const Job&);
template void bayer16<16, false>(const Job&);

void bayer16FirstByte(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return int{job.source[2 * (y * job.width + x)]}; }, 8);
}

void bayer12Packed(const Job& job) {
    by2x2(
        job,
        [&](std::size_t x, std::size_t y) {
            return int{job.source[y * (job.width / 2 * 3) + x / 2 * 3 + (x % 2 == 0 ? 0 : 2)]};
        },
        8);
}

void bayer10p(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return sample10p(job.source + y * (job.width * 10 / 8), x); }, 16);
}

void bayer12p(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return sample12p(job.source + y * (job.width * 12 / 8), x); }, 16);
}

void bayer8Grey(const Job& job) {
    const auto sample = [&](std::size_t x, std::size_t y) { return int{job.source[y * job.width + x]}; };
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const std::size_t x = std::min(i % job.width, job.width - 2), y = std::min(i / job.width, job.height - 2);
        Byte luma = 0;
        put(&luma, 0, Output::mono8, blockColour(sample, job.pattern, x, y, 8));
        put(job.destination, i, job.output, {luma, luma, luma});
    }
}

void bayer12PackedWhole(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return sample12Packed(job.source + y * (job.width / 2 * 3), x); }, 16);
}

void bayer16Whole(const Job& job) {
    by2x2(
        job, [&](std::size_t x, std::size_t y) { return bigEndian(job.source + 2 * (y * job.width + x)); }, 16);
}

} // namespace reference
