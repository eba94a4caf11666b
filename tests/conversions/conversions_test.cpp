// Every conversion of the catalogue against its definition, at every instruction-set level, in guarded memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/colour_matrix.h"
#include "catalogue/conversions.h"
#include "definition/definition.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/guarded_buffer.h"
#include "support/levels.h"

namespace {

using catalogue::Conversion;
using support::Bytes;
using support::Contents;
using support::Place;

struct Case {
    const Conversion* conversion;
    kel::Level level;
};

template <class Wanted> std::vector<Case> cases(const Wanted& wanted) {
    std::vector<Case> cases;
    for (const Conversion& conversion : catalogue::conversions())
        for (const kel::Level level : kel::levels)
            if (wanted(conversion)) cases.push_back({&conversion, level});
    return cases;
}

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
    std::string name = info.param.conversion->name() + " " + kel::nameOf(info.param.level);
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
}

struct Size {
    std::uint32_t width, height;
};

// Widths around multiples of every vector's length, and heights that need every border rule. All widths to 130 take four
// times as long: with ORVELLA_EVERY_WIDTH set.
std::vector<Size> sizesFor(const Conversion& conversion) {
    std::vector<Size> sizes;
    constexpr std::uint32_t widths[] = {1,  2,  3,   4,   5,   6,   7,   8,   10,  14,  15,  16,
                                        17, 18, 31,  32,  33,  34,  48,  62,  63,  64,  65,  66,
                                        68, 96, 126, 127, 128, 130, 192, 254, 256, 257, 260, 262};
    constexpr std::uint32_t heights[] = {1, 2, 3, 4, 6, 12};
    static const bool all = std::getenv("ORVELLA_EVERY_WIDTH") != nullptr;
    for (std::uint32_t width = 1; width <= 262; ++width)
        for (const std::uint32_t height : heights)
            if (((all && width <= 130) || std::binary_search(std::begin(widths), std::end(widths), width)) &&
                width % conversion.widthStep == 0 && height % conversion.heightStep == 0 &&
                width >= conversion.smallest && height >= conversion.smallest &&
                (conversion.heightStep > 1 || height <= 3))
                sizes.push_back({width, height});
    if (conversion.heightStep == 1) sizes.push_back({2056, 3}); // several pieces of a loop that goes at a pace
    return sizes;
}

// One size with whole blocks and a tail at every level.
Size mixedSize(const Conversion& conversion) { return {260, conversion.heightStep > 1 ? 8U : 2U}; }

// What a conversion is given.
struct Input {
    Size size;
    std::uint32_t pattern;
    Bytes source, prefill; // of the destination
};

struct Arrangement {
    Place place;
    std::size_t sourceShift = 0, destinationShift = 0;
};

std::ostream& operator<<(std::ostream& out, const Arrangement& a) {
    out << (a.place == Place::atStart ? "behind" : "before") << " a protected page";
    if (a.sourceShift || a.destinationShift)
        out << ", " << a.sourceShift << " and " << a.destinationShift << " bytes from it";
    return out;
}

class Conversions : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        ASSERT_NE(definition_, nullptr) << "no definition of " << conversion().name();
        if (GetParam().level > kel::highestLevel()) GTEST_SKIP() << "not on this machine";
        limit_.emplace(GetParam().level);
    }

    const Conversion& conversion() const { return *GetParam().conversion; }

    Input input(Size size, std::uint32_t pattern, Contents contents) {
        const auto [width, height] = size;
        return {size, pattern,
                support::filled(conversion().sourceSize(width, height) + conversion().beyond, contents, random_),
                support::filled(conversion().destinationSize(width, height), Contents::noise, random_)};
    }

    // Calls `test` with every size and pattern, until something fails.
    template <class Test> void forEverySize(const Test& test) {
        for (const Size size : sizesFor(conversion()))
            for (std::uint32_t pattern = 0; pattern < conversion().patterns && !HasFailure(); ++pattern)
                test(size, pattern);
    }

    void check(const Input& input, const Arrangement& arrangement) {
        SCOPED_TRACE(::testing::Message() << input.size.width << 'x' << input.size.height << ", pattern "
                                          << input.pattern << ", buffers " << arrangement);
        Bytes expectedSource = input.source, expected = input.prefill;
        refer(input, expected, expectedSource);

        const auto source = sourceMemory_.place(expectedSource.size(), arrangement.place, arrangement.sourceShift);
        const auto destination = memory_.place(expected.size(), arrangement.place, arrangement.destinationShift);
        std::copy(input.source.begin(), input.source.end(), source.begin());
        std::copy(input.prefill.begin(), input.prefill.end(), destination.begin());
        convert(input, destination.data(), source.data());

        EXPECT_TRUE(support::same(expected, destination, shapeOf(input.size)));
        EXPECT_TRUE(support::same(expectedSource, source)) << "in the source";
        EXPECT_TRUE(memory_.canariesLive() && sourceMemory_.canariesLive()) << "written outside the buffers";
    }

    // The destination is the source's first bytes; what lies behind them stays.
    void checkInPlace(const Input& input, Place place) {
        SCOPED_TRACE(::testing::Message() << input.size.width << 'x' << input.size.height << ' ' << Arrangement{place});
        Bytes expected(input.source.begin(), input.source.begin() + std::ssize(input.prefill));
        Bytes source = input.source;
        refer(input, expected, source);
        std::copy(expected.begin(), expected.end(), source.begin());

        const auto buffer = memory_.place(source.size(), place);
        std::copy(input.source.begin(), input.source.end(), buffer.begin());
        convert(input, buffer.data(), buffer.data());
        EXPECT_TRUE(support::same(source, buffer, shapeOf(input.size)));
    }

private:
    void refer(const Input& input, Bytes& destination, Bytes& source) const {
        const auto [width, height] = input.size;
        definition_({destination.data(), source.data(), width, height, input.pattern, catalogue::colourMatrix});
        if (conversion().onlyInPlace) destination = source;
    }
    void convert(const Input& input, std::uint8_t* destination, std::uint8_t* source) const {
        const auto [width, height] = input.size;
        EXPECT_EQ(conversion().convert(destination, source, width, height, input.pattern), OrvErrorSuccess);
    }
    support::Shape shapeOf(Size size) const {
        const std::size_t pixelBytes = conversion().destinationBytes;
        return {conversion().destinationWidth(size.width) * pixelBytes, pixelBytes};
    }

    const definition::Function definition_ = definition::find(conversion().name());
    support::Random random_{support::seed()};
    support::GuardedMemory sourceMemory_{1 << 17}, memory_{1 << 17};
    std::optional<support::LevelLimit> limit_;
};

// The two runs begin with complementary destinations, so that a byte left unwritten is wrong in one of them.
TEST_P(Conversions, OfEverySize) {
    forEverySize([this](Size size, std::uint32_t pattern) {
        Input given = input(size, pattern, Contents::noise);
        check(given, {Place::atStart});
        for (std::uint8_t& byte : given.prefill) byte ^= 0xFF;
        check(given, {Place::atEnd});
    });
}

// Wide mosaics are made in strips.
TEST_P(Conversions, OfWideMosaics) {
    if (conversion().patterns == 1) return;
    for (const std::uint32_t width : {4096U, 4097U, 4098U, 4099U, 4100U, 8194U}) {
        if (width % conversion().widthStep != 0) continue;
        check(input({width, 2}, 1, Contents::noise), {Place::atStart});
        check(input({width, 2}, 2, Contents::noise), {Place::atEnd});
    }
}

class ConversionsInPlace : public Conversions {};

TEST_P(ConversionsInPlace, OfEverySize) {
    forEverySize([this](Size size, std::uint32_t pattern) {
        const Input given = input(size, pattern, Contents::noise);
        checkInPlace(given, Place::atStart);
        checkInPlace(given, Place::atEnd);
    });
}

TEST_P(Conversions, MixedPlain) {
    for (const Contents contents : support::plainContents)
        for (std::uint32_t pattern = 0; pattern < conversion().patterns; ++pattern)
            check(input(mixedSize(conversion()), pattern, contents), {Place::atEnd});
}

TEST_P(Conversions, MixedUnaligned) {
    constexpr std::size_t shifts[][2] = {{0, 1}, {1, 0}, {3, 7}, {8, 5}, {31, 33}};
    const Input given = input(mixedSize(conversion()), 0, Contents::noise);
    for (const auto [source, destination] : shifts) check(given, {Place::atStart, source, destination});
}

INSTANTIATE_TEST_SUITE_P(Catalogue, Conversions,
                         ::testing::ValuesIn(cases([](const Conversion& c) { return !c.onlyInPlace; })), nameOf);
INSTANTIATE_TEST_SUITE_P(Catalogue, ConversionsInPlace,
                         ::testing::ValuesIn(cases([](const Conversion& conversion) { return conversion.inPlace; })),
                         nameOf);

} // namespace
