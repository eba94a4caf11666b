// What the benchmark's check of its contestants finds, and what it lets pass.
#include "bench/plausible.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "bench/test_frame.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using bench::Likeness;

constexpr bench::Size size{128, 64};

const catalogue::Conversion& conversionNamed(const std::string& name) {
    return *std::ranges::find(catalogue::conversions(), name, &catalogue::Conversion::name);
}

Bytes resultOf(const catalogue::Conversion& conversion) {
    Bytes from = bench::testFrame(conversion, size), to(conversion.destinationSize(size.width, size.height));
    Bytes& result = conversion.onlyInPlace ? from : to;
    EXPECT_EQ(conversion.convert(result.data(), from.data(), size.width, size.height, 0), OrvErrorSuccess);
    return result;
}

// Exchanges bytes `a` and `b` of every `pitch`.
template <std::size_t pitch, std::size_t a, std::size_t b> void exchange(Bytes& bytes) {
    for (std::size_t i = 0; i + pitch <= bytes.size(); i += pitch) std::swap(bytes[i + a], bytes[i + b]);
}
void leaveUnwritten(Bytes& bytes) { std::ranges::fill(bytes, 0xA5); }
void leaveHalfUnwritten(Bytes& bytes) { std::fill_n(bytes.begin(), bytes.size() / 2, 0xA5); }
void exchangePlanes(Bytes& bytes) { std::ranges::rotate(bytes, bytes.begin() + std::ssize(bytes) * 2 / 3); }

void roundUp(Bytes& bytes) {
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(std::min(byte + 1, 255));
}
void setAlpha(Bytes& bytes) {
    for (std::size_t i = 3; i < bytes.size(); i += 4) bytes[i] = 255;
}
void blackenBorder(Bytes& bytes) { std::fill_n(bytes.begin(), 3 * size.width, 0); }

struct Case {
    const char* conversion;
    void (*change)(Bytes&);
    bool passes;
};
const Case cases[] = {
    {"RGB8 -> BGR24", exchange<3, 0, 2>, false},
    {"YUV 4:1:1 -> RGB24", exchange<3, 0, 2>, false},
    {"Bayer8 2x2 -> UYVY", exchange<4, 0, 2>, false},
    {"Mono12 -> Mono16", exchange<2, 0, 1>, false},
    {"Bayer16 2x2 -> BGR48", exchange<2, 0, 1>, false},
    {"RGB8 planes -> R G B", exchangePlanes, false},
    {"Bayer8 3x3 -> Mono8", leaveUnwritten, false},
    {"Mono10p -> RGBA32", leaveHalfUnwritten, false},
    {"YUV 4:4:4 -> BGR24", roundUp, true},
    {"BGR8 -> BGRA32", setAlpha, true},
    {"Bayer8 3x3 -> BGR24", blackenBorder, true},
};

TEST(Plausible, FindsWhatIsWrongAndLetsPassWhatIsNot) {
    for (const Case& c : cases) {
        const catalogue::Conversion& conversion = conversionNamed(c.conversion);
        const Bytes expected = resultOf(conversion);
        Bytes changed = expected;
        c.change(changed);
        const double difference = bench::usualDifference(conversion, expected, changed);
        if (c.passes)
            EXPECT_LE(difference, tolerance(Likeness::same)) << c.conversion;
        else
            EXPECT_GT(difference, tolerance(Likeness::near)) << c.conversion;
    }
}

// The frame has every conversion's bytes, colours and no flat areas, whatever the source.
TEST(TestFrames, AreFramesOfTheirFormat) {
    for (const catalogue::Conversion& conversion : catalogue::conversions()) {
        const Bytes frame = bench::testFrame(conversion, size);
        EXPECT_EQ(frame.size(), conversion.sourceSize(size.width, size.height) + conversion.beyond)
            << conversion.name();
        const Bytes result = resultOf(conversion);
        const auto [least, most] = std::ranges::minmax(result);
        EXPECT_GT(most - least, 64) << conversion.name();
    }
}

} // namespace
