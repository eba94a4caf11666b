// What the catalogue's flips leave open: every colour coding, odd heights.
#include <gtest/gtest.h>

#include <algorithm>

#include "orvella/orv.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/levels.h"

namespace {

using support::Bytes;

enum Mode : std::int32_t { horizontal = 1, vertical = 2, both = 3 };

Bytes counted(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

// Elements in reversed order, their bytes in order.
void reverse(std::uint8_t* elements, std::size_t count, std::size_t bytes) {
    for (std::size_t i = 0, j = count; i + 1 < j--; ++i)
        std::swap_ranges(elements + i * bytes, elements + (i + 1) * bytes, elements + j * bytes);
}

TEST(Flip, MovesElementsOfTheCoding) {
    constexpr struct {
        std::uint32_t coding;
        std::size_t bytes;
    } codings[] = {{0, 1}, {1, 2}, {2, 2}, {3, 2},  {4, 3},   {5, 2},   {6, 6},
                   {7, 2}, {8, 6}, {9, 1}, {10, 2}, {128, 1}, {129, 1}, {130, 1}};
    constexpr std::uint32_t width = 5, height = 3;
    for (const auto& [coding, bytes] : codings) {
        SCOPED_TRACE(coding);
        const Bytes before = counted(width * height * bytes);

        Bytes image = before, expected = before;
        for (std::size_t y = 0; y < height; ++y) reverse(expected.data() + y * width * bytes, width, bytes);
        EXPECT_EQ(OrvFlip(image.data(), width, height, horizontal, coding), OrvErrorSuccess);
        EXPECT_EQ(image, expected);

        image = before, expected = before;
        reverse(expected.data(), height, width * bytes);
        EXPECT_EQ(OrvFlip(image.data(), width, height, vertical, coding), OrvErrorSuccess);
        EXPECT_EQ(image, expected);

        image = before, expected = before;
        reverse(expected.data(), width * height, bytes);
        EXPECT_EQ(OrvFlip(image.data(), width, height, both, coding), OrvErrorSuccess);
        EXPECT_EQ(image, expected);
    }
}

TEST(Flip, TurnsAnyCodingUpsideDownAsBytes) {
    Bytes image = counted(12), expected = image;
    reverse(expected.data(), 3, 4);
    EXPECT_EQ(OrvFlip(image.data(), 4, 3, vertical, 200), OrvErrorSuccess);
    EXPECT_EQ(image, expected);
}

TEST(Flip, ExchangesLinesOfAnyLength) {
    support::atEveryLevel([] {
        support::Random random(support::seed());
        for (std::size_t length = 1; length < 300; ++length) {
            Bytes image = support::filled(length * 3, support::Contents::noise, random), expected = image;
            reverse(expected.data(), 3, length);
            ASSERT_EQ(OrvFlipVertical(image.data(), static_cast<std::uint32_t>(length), 3), OrvErrorSuccess);
            ASSERT_TRUE(support::same(expected, image, {length})) << length;
        }
    });
}

} // namespace
