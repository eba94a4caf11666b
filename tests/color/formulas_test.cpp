// The colour formulas over all their inputs, at every instruction-set level: 2^24 (Y, U, V) and 2^24 (R, G, B).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "color/hue_saturation.h"
#include "orvella/orv.h"
#include "support/levels.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int count = 256 * 256; // pixels in a batch: one first component, all pairs of the other two

int clamp255(int value) { return std::clamp(value, 0, 255); }
std::uint8_t byte(double value) { return static_cast<std::uint8_t>(static_cast<int>(value)); }

// Pixels (order[0], order[1], order[2]) where `first` stands at place `at` and the other two run through all pairs.
Bytes batch(int first, int at) {
    Bytes pixels(3 * count);
    for (int i = 0; i < count; ++i) {
        const auto pixel = pixels.begin() + 3 * i;
        int others[] = {i / 256, i % 256}, next = 0;
        for (int k = 0; k < 3; ++k) pixel[k] = static_cast<std::uint8_t>(k == at ? first : others[next++]);
    }
    return pixels;
}

// Runs `check` for every first component at every level.
void atEveryLevel(const std::function<void(int first)>& check) {
    support::atEveryLevel([&] {
        for (int first = 0; first < 256 && !::testing::Test::HasFailure(); ++first) check(first);
    });
}

void expectEqual(const Bytes& expected, const Bytes& actual, const Bytes& source, const char* what) {
    const auto [e, a] = std::mismatch(expected.begin(), expected.end(), actual.begin());
    if (e == expected.end()) return;
    ADD_FAILURE() << what << ": byte " << e - expected.begin() << " is " << int{*a} << ", not " << int{*e}
                  << "; first source pixel " << int{source[0]} << ' ' << int{source[1]} << ' ' << int{source[2]};
}

TEST(ColorFormulas, YuvTruncatesEachProduct) {
    int blue[256], greenU[256], greenV[256], red[256];
    for (int k = 0; k < 256; ++k) {
        blue[k] = static_cast<int>((k - 128) * 1.771);
        greenU[k] = static_cast<int>((k - 128) * -0.3457);
        greenV[k] = static_cast<int>((k - 128) * -0.7144);
        red[k] = static_cast<int>((k - 128) * 1.4022);
    }
    Bytes expected(3 * count), actual(3 * count);
    atEveryLevel([&](int luma) {
        const Bytes source = batch(luma, 1);
        for (int i = 0; i < count; ++i) {
            const int u = i / 256, v = i % 256;
            const auto at = expected.begin() + 3 * i;
            at[0] = static_cast<std::uint8_t>(clamp255(luma + blue[u]));
            at[1] = static_cast<std::uint8_t>(clamp255(luma + greenU[u] + greenV[v]));
            at[2] = static_cast<std::uint8_t>(clamp255(luma + red[v]));
        }
        ASSERT_EQ(OrvYUV444ToBGR(actual.data(), source.data(), count), 0);
        expectEqual(expected, actual, source, "BGR");
    });
}

TEST(ColorFormulas, YuvPlanesTruncateTheSums) {
    std::vector<int> greenOffset(count);
    for (int i = 0; i < count; ++i) {
        const double sum = -0.3457 * (i / 256 - 128) - 0.7144 * (i % 256 - 128);
        greenOffset[static_cast<std::size_t>(i)] = static_cast<int>(std::clamp(sum, -128.0, 127.0));
    }
    Bytes red(count), green(count), blue(count), r(count), g(count), b(count);
    atEveryLevel([&](int luma) {
        const Bytes source = batch(luma, 1);
        for (std::size_t i = 0; i < count; ++i) {
            const int u = static_cast<int>(i) / 256 - 128, v = static_cast<int>(i) % 256 - 128;
            red[i] = byte(std::clamp(luma + 1.4022 * v, 0.0, 255.0));
            blue[i] = byte(std::clamp(luma + 1.771 * u, 0.0, 255.0));
            green[i] = static_cast<std::uint8_t>(clamp255(luma + greenOffset[i]));
        }
        ASSERT_EQ(OrvYUV444ToRGBPlanes(r.data(), g.data(), b.data(), source.data(), 256, 256), 0);
        expectEqual(red, r, source, "red");
        expectEqual(green, g, source, "green");
        expectEqual(blue, b, source, "blue");
    });
}

TEST(ColorFormulas, DoublePrecisionLuma) {
    Bytes expectedY8(count), expectedPlane(count), y8(count), r(count), g(count), b(count), plane(count);
    atEveryLevel([&](int first) {
        const Bytes source = batch(first, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const volatile double red = source[3 * i], green = source[3 * i + 1], blue = source[3 * i + 2];
            expectedY8[i] = byte(0.21 * red + 0.72 * green + 0.07 * blue);
            expectedPlane[i] = byte(0.299 * red + 0.587 * green + 0.114 * blue);
        }
        ASSERT_EQ(OrvRGB8ToY8(y8.data(), source.data(), count), 0);
        ASSERT_EQ(OrvRGB8ToRGBYPlanes(r.data(), g.data(), b.data(), plane.data(), source.data(), 256, 256), 0);
        expectEqual(expectedY8, y8, source, "Y8");
        expectEqual(expectedPlane, plane, source, "luma plane");
    });
}

// Where the exact luma is a whole number rounding decides, here in every pixel or in every ninth.
TEST(ColorFormulas, DoublePrecisionLumaOfFlatPictures) {
    constexpr std::size_t pixels = 5003;
    constexpr std::uint8_t colours[][3] = {{0, 2, 209}, {65, 253, 211}, {205, 223, 86}, {10, 192, 38}, {250, 228, 62}};
    for (const auto& [red, green, blue] : colours)
        for (const std::size_t every : {std::size_t{1}, std::size_t{9}}) {
            Bytes source(3 * pixels), y8(pixels), r(pixels), g(pixels), b(pixels), plane(pixels);
            Bytes expectedY8(pixels), expectedPlane(pixels); // 0 of the others, whose red is 1
            for (std::size_t i = 0; i < pixels; ++i) source[3 * i] = 1;
            const volatile double x = red, y = green, z = blue;
            for (std::size_t i = 0; i < pixels; i += every) {
                source[3 * i] = red, source[3 * i + 1] = green, source[3 * i + 2] = blue;
                expectedY8[i] = byte(0.21 * x + 0.72 * y + 0.07 * z);
                expectedPlane[i] = byte(0.299 * x + 0.587 * y + 0.114 * z);
            }
            ASSERT_EQ(OrvRGB8ToY8(y8.data(), source.data(), pixels), 0);
            ASSERT_EQ(OrvRGB8ToRGBYPlanes(r.data(), g.data(), b.data(), plane.data(), source.data(), pixels, 1), 0);
            EXPECT_EQ(y8, expectedY8);
            EXPECT_EQ(plane, expectedPlane);
            for (std::size_t i = 0; i < pixels; ++i)
                ASSERT_TRUE(r[i] == source[3 * i] && g[i] == source[3 * i + 1] && b[i] == source[3 * i + 2]) << i;
        }
}

// ---- Hue and saturation, which only the tables know so far

TEST(HueSaturation, BeginsNeutral) {
    const kel::HueSaturation& state = kel::hueSaturation;
    EXPECT_EQ(state.hue, 0);
    EXPECT_EQ(state.saturation, 1);
    EXPECT_TRUE(std::ranges::all_of(state.tables.uToR, [](int entry) { return entry == 0; }));
    EXPECT_TRUE(std::ranges::all_of(state.tables.vToB, [](int entry) { return entry == 0; }));
    EXPECT_EQ(state.tables.uToB[0], -128); // -226 clamped
    EXPECT_EQ(state.tables.uToB[100], -49);
    EXPECT_EQ(state.tables.vToR[255], 127); // 178 clamped
    EXPECT_EQ(state.tables.uToG[255], -43);
    EXPECT_EQ(state.tables.vToG[0], 91);
}

TEST(HueSaturation, RotatesAndScales) {
    constexpr float quarterTurn = 1.5707964F;
    kel::HueSaturation state;
    state.use(quarterTurn, 1);
    EXPECT_EQ(state.tables.uToR[228], 127); // 140 clamped: red takes over U
    EXPECT_EQ(state.tables.uToR[178], 70);  // 50 * 1.4022
    EXPECT_EQ(state.tables.vToB[178], -88); // -50 * 1.771
    EXPECT_EQ(state.tables.uToB[178], 0);
    EXPECT_EQ(state.tables.vToG[235], 36);  // 107 * 0.3457
    EXPECT_EQ(state.tables.uToG[228], -71); // 100 * -0.7144
    state.use(0, 0.5F);
    EXPECT_EQ(state.tables.uToB[178], 44); // 50 * 1.771 / 2
    EXPECT_EQ(state.tables.uToG[28], 17);  // 100 * 0.3457 / 2
    state.use(quarterTurn, 0.5F);
    EXPECT_EQ(state.tables.uToR[178], 70); // the saturation leaves sine terms alone
}

} // namespace
