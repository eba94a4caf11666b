// Every conversion of the catalogue against the reference, at every instruction-set level, in guarded memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "catalogue/conversions.h"
#include "kernels/level.h"
#include "reference/reference.h"
#include "support/guarded_buffer.h"

namespace {

using catalogue::Conversion;
using support::GuardedBuffer;
using support::Place;

struct Size {
    std::uint32_t width, height;
};

struct Case {
    const Conversion* conversion;
    kel::Level level;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const kel::Level level : kel::levels)
        for (const Conversion& conversion : catalogue::conversions())
            if (level <= kel::highestLevel()) cases.push_back({&conversion, level});
    return cases;
}

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
    std::string name = info.param.conversion->name() + " " + kel::nameOf(info.param.level);
    std::ranges::replace_if(
        name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

// Widths around multiples of every vector's length, and heights that need every border rule.
std::vector<Size> sizesFor(const Conversion& conversion) {
    std::vector<Size> sizes;
    constexpr std::uint32_t widths[] = {1,  2,  3,  4,  5,  6,  7,  8,  10,  14,  15,  16,  17,  18,  31,  32,  33, 34,
                                        48, 62, 63, 64, 65, 66, 68, 96, 126, 127, 128, 130, 192, 254, 256, 257, 262};
    constexpr std::uint32_t heights[] = {1, 2, 3, 4, 6, 10};
    for (const std::uint32_t width : widths)
        for (const std::uint32_t height : heights)
            if (width % conversion.widthStep == 0 && height % conversion.heightStep == 0 &&
                (conversion.heightStep > 1 || height <= 3))
                sizes.push_back({width, height});
    return sizes;
}

// Noise, with many bytes at the ends of their range, where sums overflow and clamps bite.
void fill(std::span<std::uint8_t> bytes, std::minstd_rand& random) {
    for (std::uint8_t& byte : bytes) {
        const auto value = random() >> 8;
        byte = value % 4 == 0 ? (value & 0x100 ? 255 : 0) : static_cast<std::uint8_t>(value >> 16);
    }
}

class Conversions : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override { kel::limitLevel(GetParam().level); }
    void TearDown() override { kel::limitLevel(kel::highestLevel()); }

    const Conversion& conversion() const { return *GetParam().conversion; }

    void check(Size size, std::uint32_t pattern, Place place) {
        const auto [width, height] = size;
        const GuardedBuffer source(conversion().sourceSize(width, height) + conversion().beyond, place);
        const GuardedBuffer destination(conversion().destinationSize(width, height), place);
        fill(source.bytes(), random_);
        fill(destination.bytes(), random_); // what is not written must stay
        std::vector<std::uint8_t> expectedSource(source.bytes().begin(), source.bytes().end());
        std::vector<std::uint8_t> expected(destination.bytes().begin(), destination.bytes().end());

        reference_({expected.data(), expectedSource.data(), width, height, pattern, output_});
        ASSERT_EQ(conversion().convert(destination.data(), source.data(), width, height, pattern), OrvErrorSuccess);
        expectSame(expected, destination.bytes(), size, "destination");
        expectSame(expectedSource, source.bytes(), size, "source");
    }

    static void expectSame(std::span<const std::uint8_t> expected, std::span<const std::uint8_t> actual, Size size,
                           const char* what) {
        const auto [e, a] = std::ranges::mismatch(expected, actual);
        if (e == expected.end()) return;
        const std::size_t at = static_cast<std::size_t>(e - expected.begin());
        const std::size_t pitch = std::max<std::size_t>(1, expected.size() / size.height);
        ADD_FAILURE() << what << ' ' << size.width << 'x' << size.height << ": byte " << at % pitch << " of row "
                      << at / pitch << " is " << int{*a} << ", not " << int{*e};
    }

    const reference::Conversion reference_ = reference::find(conversion().source, conversion().method);
    const reference::Output output_ = reference::outputNamed(conversion().output);
    std::minstd_rand random_{12345};
};

TEST_P(Conversions, MatchTheReference) {
    ASSERT_NE(reference_, nullptr) << "no reference for " << conversion().name();
    for (const Size size : sizesFor(conversion()))
        for (std::uint32_t pattern = 0; pattern < conversion().patterns; ++pattern)
            for (const Place place : {Place::atStart, Place::atEnd}) {
                SCOPED_TRACE(
                    "pattern " + std::to_string(pattern) +
                    (place == Place::atEnd ? ", buffers at their page's end" : ", buffers at their page's start"));
                check(size, pattern, place);
                if (HasFailure()) return;
            }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, Conversions, ::testing::ValuesIn(allCases()), nameOf);

} // namespace
