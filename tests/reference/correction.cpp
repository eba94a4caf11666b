#include "reference/correction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "reference/families.h"
#include "reference/mosaic.h"

namespace reference {

std::int64_t fixedPoint(float coefficient) {
    using Limits = std::numeric_limits<std::int32_t>;
    const volatile float scaled = coefficient * 1024;
    if (std::isnan(scaled)) return 0;
    return static_cast<std::int64_t>(
        std::clamp(std::trunc(double{scaled}), double{Limits::min()}, double{Limits::max()}));
}

namespace {

// From the sum of a channel to its value.
using Rule = int (*)(std::int32_t sum);

// Shifted as an unsigned number, judged by 16 of its bits.
int byteRule(std::int32_t sum) {
    const std::uint32_t shifted = static_cast<std::uint32_t>(sum) >> 10;
    if ((shifted & 0xFF00) == 0) return static_cast<int>(shifted & 0xFF);
    return shifted & 0x8000 ? 0 : 255;
}
int wordRule(std::int32_t sum) { return std::clamp(sum >> 10, 0, 65535); }
int wrappingRule(std::int32_t sum) {
    const std::int32_t shifted = sum >> 10;
    return shifted < 0 ? 0 : shifted > 65535 ? 255 : shifted & 0xFF;
}

Colour corrected(const Colour& c, const float* m, Rule rule) {
    const auto channel = [&](const float* row) {
        const std::int64_t sum = fixedPoint(row[0]) * c.r + fixedPoint(row[1]) * c.g + fixedPoint(row[2]) * c.b;
        return rule(static_cast<std::int32_t>(sum)); // wraps around
    };
    return {channel(m), channel(m + 3), channel(m + 6), c.bits};
}

Output rec601(Output output) {
    if (output == Output::mono8Rec709) return Output::mono8;
    return output == Output::mono16Rec709 ? Output::mono16 : output;
}

void rgbFamily(const Job& job, std::size_t bytes, std::size_t r, std::size_t b, const float* matrix) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + bytes * i;
        put(job.destination, i, job.output, corrected({at[r], at[1], at[b]}, matrix, byteRule));
    }
}

// How the pattern of a call is meant. OrvImageTransform with a matrix exchanges 1 and 2.
enum class Patterns { asNamed, exchanged };

template <class Sample>
void mosaic(Patterns patterns, Job job, const Sample& sample, int bits, const float* matrix, Rule rule) {
    constexpr unsigned exchanged[] = {0, 2, 1, 3};
    if (patterns == Patterns::exchanged) job.pattern = exchanged[job.pattern];
    job.output = rec601(job.output);
    for (std::size_t y = 0; y < job.height; ++y)
        for (std::size_t x = 0; x < job.width; ++x) {
            const std::size_t column = std::min(x, job.width - 2), row = std::min(y, job.height - 2);
            const Colour colour = blockColour(sample, job.pattern, column, row, bits);
            put(job.destination, y * job.width + x, job.output, corrected(colour, matrix, rule));
        }
}

void mosaic8(Patterns patterns, const Job& job, const float* matrix) {
    const auto sample = [&](std::size_t x, std::size_t y) { return int{job.source[y * job.width + x]}; };
    mosaic(patterns, job, sample, 8, matrix, byteRule);
}

// Top bytes make BGR24, by `rule`.
void mosaic12Packed(Patterns patterns, const Job& job, const float* matrix, Rule rule) {
    const auto whole = [&](std::size_t x, std::size_t y) {
        return sample12Packed(job.source + y * (job.width * 12 / 8), x);
    };
    const auto top = [&](std::size_t x, std::size_t y) { return whole(x, y) >> 8; };
    if (job.output == Output::bgr24)
        mosaic(patterns, job, top, 8, matrix, rule);
    else
        mosaic(patterns, job, whole, 16, matrix, wordRule);
}

template <int bitsUsed, bool isBigEndian> void mosaic16(Patterns patterns, const Job& job, const float* matrix) {
    const auto sample = [&](std::size_t x, std::size_t y) {
        const Byte* at = job.source + 2 * (y * job.width + x);
        return (isBigEndian ? bigEndian(at) : littleEndian(at)) << (16 - bitsUsed) & 0xFFFF;
    };
    mosaic(patterns, job, sample, 16, matrix, wordRule);
}

} // namespace

void rgb8Corrected(const Job& job, const float* matrix) { rgbFamily(job, 3, 0, 2, matrix); }
void bgr8Corrected(const Job& job, const float* matrix) { rgbFamily(job, 3, 2, 0, matrix); }
void rgba8Corrected(const Job& job, const float* matrix) { rgbFamily(job, 4, 0, 2, matrix); }
void bgra8Corrected(const Job& job, const float* matrix) { rgbFamily(job, 4, 2, 0, matrix); }

void bayer8Corrected(const Job& job, const float* matrix) { mosaic8(Patterns::exchanged, job, matrix); }

template <int bitsUsed, bool isBigEndian> void bayer16Corrected(const Job& job, const float* matrix) {
    mosaic16<bitsUsed, isBigEndian>(Patterns::exchanged, job, matrix);
}
template void bayer16Corrected<12, false>(const Job&, const float*);
template void bayer16Corrected<16, false>(const Job&, const float*);
template void bayer16Corrected<16, true>(const Job&, const float*);

void bayer12PackedCorrected(const Job& job, const float* matrix) {
    mosaic12Packed(Patterns::exchanged, job, matrix, wrappingRule);
}

void bayer8CorrectedByObject(const Job& job, const float* matrix) { mosaic8(Patterns::asNamed, job, matrix); }

void bayer12PackedCorrectedByObject(const Job& job, const float* matrix) {
    mosaic12Packed(Patterns::asNamed, job, matrix, byteRule);
}

void bayer16CorrectedByObject(const Job& job, const float* matrix) {
    mosaic16<16, true>(Patterns::asNamed, job, matrix);
}

} // namespace reference
