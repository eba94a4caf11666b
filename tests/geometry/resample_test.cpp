// What the catalogue's stretched lines leave open: any ratio, pitches, the reach into the source.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "definition/definition.h"
#include "orvella/orv.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/guarded_buffer.h"
#include "support/levels.h"

namespace {

using definition::Resampling;
using support::Bytes;
using support::Place;

constexpr OrvErrorType good = 1;
constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();

::testing::Message describe(const Resampling& r) {
    return ::testing::Message() << r.sourceLength << " to " << r.destinationLength << " by " << r.a << " / " << r.b
                                << ", " << r.bytesPerPixel << " bytes a pixel, pitches " << r.sourcePitch << " and "
                                << r.destinationPitch << (r.linear ? ", linear" : ", nearest");
}

OrvErrorType call(std::uint8_t* destination, const std::uint8_t* source, const Resampling& r) {
    const auto narrow = [](std::int64_t value) { return static_cast<std::int32_t>(value); };
    return OrvResampleScanlinesEx(destination, source, narrow(r.destinationLength), narrow(r.destinationPitch),
                                  narrow(r.sourceLength), narrow(r.sourcePitch), narrow(r.lines),
                                  static_cast<std::uint32_t>(r.bytesPerPixel), r.linear, r.a, r.b);
}

// Lines `pitch` pixels apart, of which `length` are used. With a negative pitch the first line is the last in memory.
struct Area {
    std::int64_t pitch, length, lines, bytesPerPixel;

    std::size_t size() const {
        return static_cast<std::size_t>(((lines - 1) * std::abs(pitch) + length) * bytesPerPixel);
    }
    std::ptrdiff_t firstLine() const { return pitch < 0 ? (1 - lines) * pitch * bytesPerPixel : 0; }
};

Area sourceArea(const Resampling& r) {
    std::int64_t length = 0;
    for (std::int64_t i = 0; i < r.destinationLength; ++i)
        length = std::max(length, definition::nearestPixel(i, r) + 1);
    return {r.sourcePitch, length, r.lines, r.bytesPerPixel};
}

class Resample : public ::testing::Test {
protected:
    void check(const Resampling& r) {
        SCOPED_TRACE(describe(r));
        const Area from = sourceArea(r), to{r.destinationPitch, r.destinationLength, r.lines, r.bytesPerPixel};
        const Bytes given = support::filled(from.size(), support::Contents::noise, random_);
        const Bytes prefill = support::filled(to.size(), support::Contents::noise, random_);
        Bytes expected = prefill;
        definition::resample(expected.data() + to.firstLine(), given.data() + from.firstLine(), r);
        for (const Place place : {Place::atStart, Place::atEnd}) {
            const auto source = sourceMemory_.place(given.size(), place);
            const auto destination = memory_.place(prefill.size(), place);
            std::ranges::copy(given, source.begin());
            std::ranges::copy(prefill, destination.begin());
            ASSERT_EQ(call(destination.data() + to.firstLine(), source.data() + from.firstLine(), r), good);
            const auto row = static_cast<std::size_t>(std::abs(to.pitch) * r.bytesPerPixel);
            ASSERT_TRUE(support::same(expected, destination, {row, static_cast<std::size_t>(r.bytesPerPixel)}));
            ASSERT_TRUE(memory_.canariesLive());
        }
    }

    support::Random random_{support::seed()};
    support::GuardedMemory sourceMemory_{1 << 19}, memory_{1 << 19};
};

struct Ratio {
    float a, b;
};
constexpr Ratio ratios[] = {{1, 1},   {2, 3},    {1, 2},    {1, 7},    {15, 16},   {16, 15},       {3, 2},   {2, 1},
                            {33, 16}, {5, 1},    {0.1F, 1}, {1, 0.3F}, {0, 1},     {1e-30F, 1},    {1, inf}, {nan, 1},
                            {inf, 1}, {-inf, 1}, {-1, 1},   {1, -3},   {inf, inf}, {3e38F, 1e-38F}};
constexpr std::int64_t lengths[][2] = {{1, 1},     {1, 40},    {2, 3},   {5, 300},   {64, 64},     {97, 150},
                                       {128, 127}, {200, 133}, {300, 5}, {640, 960}, {1000, 2600}, {2600, 1000}};

TEST_F(Resample, ByAnyRatio) {
    support::atEveryLevel([this] {
        for (const auto [a, b] : ratios)
            for (const auto [from, to] : lengths)
                for (const std::int64_t bytes : {1, 2, 3, 4, 5, 6})
                    for (const bool linear : {false, true})
                        if (!HasFailure()) check({to, to, from, from, 2, bytes, linear, a, b});
    });
}

TEST_F(Resample, WithPitches) {
    support::atEveryLevel([this] {
        for (const std::int64_t toPitch : {-170, -40, 0, 40, 149, 163, 1499})
            for (const std::int64_t fromPitch : {-111, -1, 0, 1, 130})
                for (const bool linear : {false, true})
                    for (const std::int64_t length : {150, 1500}) // in one piece, in several
                        check({length, toPitch, 100, fromPitch, 3, 3, linear, 2, 3});
    });
}

// Stretching, the index is kept below the output's length only, and runs on behind the end of the source line.
TEST_F(Resample, LinearReadsOnBehindTheSourceLine) {
    std::uint8_t source[] = {10, 20, 30, 40, 50, 60, 70, 80}, destination[8];
    EXPECT_EQ(OrvResampleScanlines(destination, source, 8, 2, 1, 1, 1, 1, 1), good);
    EXPECT_TRUE(std::ranges::equal(destination, source));
    EXPECT_EQ(OrvResampleScanlines(destination, source, 8, 2, 1, 1, 0, 1, 1), good);
    EXPECT_EQ(Bytes(destination, destination + 8), (Bytes{10, 20, 20, 20, 20, 20, 20, 20}));
}

// w > 0 blends pixels k - 1 and k, not k and k + 1.
TEST_F(Resample, LinearLooksBackForPositiveWeights) {
    const std::uint8_t source[] = {0, 100, 200, 40};
    std::uint8_t destination[8] = {};
    EXPECT_EQ(OrvResampleScanlines(destination, source, 6, 4, 1, 1, 1, 0.625F, 1), good);
    // x = 0, 0.625 (k 1, w -384), 1.25 (k 1, w 256), 1.875 (k 2, w -128), 2.5 (k 3, w -512), 3.125 (k 3, w 128)
    EXPECT_EQ(Bytes(destination, destination + 6), (Bytes{0, 62, 25, 187, 120, 180}));
}

TEST(ResampledScanlineLength, IsAMultipleOfFour) {
    constexpr struct {
        std::int32_t length;
        float a, b;
        std::uint32_t result;
    } cases[] = {
        {640, 1, 0.5F, 320},
        {641, 1, 0.5F, 320},
        {642, 1, 0.5F, 324},
        {0, 1, 1, 0},
        {1, 1, 1, 4},
        {16777217, 1, 1, 16777216},     // the product is a float
        {10485766, 1.25F, 1, 8388612},  // the quotient is a double: 8388612.8
        {3, 1e-38F, 1e38F, 0xFFFFFFFC}, // more than 32 bits can hold
        {1, 0, 1, 0xFFFFFFFC},
        {0, 0, 1, 0}, // 0 / 0
        {1, nan, 1, 0},
        {1, 1, nan, 0},
        {-8, 1, 1, static_cast<std::uint32_t>(-8)},
        {-6, 1, 1, 0}, // -6 / 4 * 4 + 4, the quotient towards zero
        {-10, 1, 1, static_cast<std::uint32_t>(-4)},
        {1, 0, -1, 0x80000000},
    };
    for (const auto& c : cases) {
        std::uint32_t result = 7;
        EXPECT_EQ(OrvGetResampledScanlineLength(&result, c.length, c.a, c.b), OrvErrorSuccess);
        EXPECT_EQ(result, c.result) << c.length << " * " << c.b << " / " << c.a;
    }
}

} // namespace
