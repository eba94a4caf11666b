// The one-call mono converters: every word in every layout, and each function's own refusals.
#include <gtest/gtest.h>

#include <cstdint>

#include "orvella/orv.h"
#include "support/compare.h"
#include "support/levels.h"

namespace {

using support::Bytes;

constexpr std::uint32_t words = 65536;

Bytes everyWord(bool bigEndian) {
    Bytes bytes;
    for (std::uint32_t w = 0; w < words; ++w)
        for (const std::uint32_t shift : {bigEndian ? 8U : 0U, bigEndian ? 0U : 8U})
            bytes.push_back(static_cast<std::uint8_t>(w >> shift));
    return bytes;
}

// Eight bits and the two below them, where the sample has so many.
struct Parts {
    int value;
    bool roundBit, tintBit;
};
Parts partsOf(std::uint32_t w, bool lsbAligned, std::uint32_t bits) {
    const std::uint32_t used = lsbAligned ? bits : 16;
    return {static_cast<int>((used > 8 ? w >> (used - 8) : w) & 0xFF), used > 8 && w >> (used - 9) & 1,
            used > 9 && w >> (used - 10) & 1};
}
std::uint8_t raised(int value, bool up) { return static_cast<std::uint8_t>(value < 255 && up ? value + 1 : value); }

TEST(MonoDirect, EveryWordInEveryLayout) {
    Bytes y8(words), bgr(3 * words), expectedY8(words), expectedBgr(3 * words);
    for (std::uint32_t layout = 0; layout < 4; ++layout)
        for (std::uint32_t bits = 0; bits <= 16; ++bits) {
            const std::uint32_t swap = layout & 1, lsbAligned = layout >> 1;
            const Bytes source = everyWord(swap);
            for (std::uint32_t w = 0; w < words; ++w) {
                const auto [value, roundBit, tintBit] = partsOf(w, lsbAligned, bits);
                expectedY8[w] = raised(value, roundBit);
                expectedBgr[3 * w] = raised(value, tintBit);
                expectedBgr[3 * w + 1] = static_cast<std::uint8_t>(value);
                expectedBgr[3 * w + 2] = raised(value, roundBit);
            }
            SCOPED_TRACE(::testing::Message() << "swap " << swap << ", lsbAligned " << lsbAligned << ", " << bits);
            support::atEveryLevel([&] {
                EXPECT_EQ(OrvY16ToY8Ex(y8.data(), source.data(), words, swap, lsbAligned, bits), OrvErrorSuccess);
                EXPECT_TRUE(support::same(expectedY8, y8));
                EXPECT_EQ(OrvY16ToBGREx(bgr.data(), source.data(), words, swap, lsbAligned, bits), OrvErrorSuccess);
                EXPECT_TRUE(support::same(expectedBgr, bgr, {bgr.size(), 3}));
            });
        }
}

TEST(MonoDirect, EightsDoTheSameAsAnyCount) {
    const Bytes source = everyWord(true);
    Bytes any(words), eights(words);
    EXPECT_EQ(OrvY16ToY8(any.data(), source.data(), words), OrvErrorSuccess);
    EXPECT_EQ(OrvY16ToY8_MMX(eights.data(), source.data(), words), OrvErrorSuccess);
    EXPECT_EQ(any, eights);
}

TEST(MonoDirect, Unpacks12Packed) {
    const std::uint8_t source[] = {0xAB, 0xCD, 0xEF};
    std::uint8_t destination[4] = {};
    EXPECT_EQ(OrvPacked12BitTo16Bit(destination, source, 2, 1), OrvErrorSuccess);
    EXPECT_EQ(Bytes(destination, destination + 4), (Bytes{0xAB, 0xD0, 0xEF, 0xC0}));
    EXPECT_EQ(OrvPacked12BitTo8Bit(destination, source, 2, 1), OrvErrorSuccess);
    EXPECT_EQ(Bytes(destination, destination + 2), (Bytes{0xAB, 0xEF}));
}

// Calls that write nothing, whether they succeed or not.
TEST(MonoDirect, EmptyAndRefusedCallsWriteNothing) {
    constexpr OrvErrorType good = OrvErrorSuccess, bad = OrvErrorBadParameter;
    constexpr auto oddWidth = static_cast<OrvErrorType>(0x88000004);
    Bytes destination(64, 0xEE);
    const Bytes source(64);
    void* const to = destination.data();
    const void* const from = source.data();

    EXPECT_EQ(OrvY16ToY8(to, from, 0), good);
    EXPECT_EQ(OrvY16ToY8(nullptr, from, 8), bad);
    EXPECT_EQ(OrvY16ToY8(to, nullptr, 8), bad);
    for (const std::uint32_t count : {0U, 1U, 7U, 12U}) EXPECT_EQ(OrvY16ToY8_MMX(to, from, count), bad) << count;
    EXPECT_EQ(OrvY16ToY8_MMX(nullptr, from, 8), bad);
    EXPECT_EQ(OrvY16ToY8_MMX(to, nullptr, 8), bad);
    EXPECT_EQ(OrvY16ToBGR(to, from, 0), bad);
    EXPECT_EQ(OrvY16ToBGR(nullptr, from, 8), bad);
    EXPECT_EQ(OrvY16ToBGR(to, nullptr, 8), bad);
    for (const auto function : {OrvY16ToY8Ex, OrvY16ToBGREx}) {
        EXPECT_EQ(function(nullptr, from, 8, 0, 0, 16), bad);
        EXPECT_EQ(function(to, nullptr, 8, 0, 0, 16), bad);
        EXPECT_EQ(function(to, from, 0, 0, 0, 16), bad);
        EXPECT_EQ(function(to, from, 8, 2, 0, 16), bad);
        EXPECT_EQ(function(to, from, 8, 0, 2, 16), bad);
        EXPECT_EQ(function(to, from, 8, 0, 1, 17), bad);
        EXPECT_EQ(function(to, from, 8, 0, 0, 17), bad) << "even where bits mean nothing";
    }
    EXPECT_EQ(OrvY8ToBGR(to, from, 0), bad);
    EXPECT_EQ(OrvY8ToBGR(nullptr, from, 8), bad);
    EXPECT_EQ(OrvY8ToBGR(to, nullptr, 8), bad);

    EXPECT_EQ(OrvPacked12BitTo16Bit(nullptr, nullptr, 3, 1), oddWidth) << "before the pointers";
    EXPECT_EQ(OrvPacked12BitTo16Bit(to, from, -3, 1), oddWidth);
    EXPECT_EQ(OrvPacked12BitTo16Bit(nullptr, from, 2, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo16Bit(to, nullptr, 2, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo16Bit(to, from, 0, 1), good);
    EXPECT_EQ(OrvPacked12BitTo16Bit(to, from, 2, 0), good);
    EXPECT_EQ(OrvPacked12BitTo16Bit(to, from, -2, 0xFFFFFFFF), good);
    EXPECT_EQ(OrvPacked12BitTo8Bit(to, from, 3, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo8Bit(to, from, -3, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo8Bit(nullptr, from, 2, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo8Bit(to, nullptr, 2, 1), bad);
    EXPECT_EQ(OrvPacked12BitTo8Bit(to, from, 0, 1), good);
    EXPECT_EQ(OrvPacked12BitTo8Bit(to, from, 2, -1), good);

    EXPECT_EQ(destination, Bytes(64, 0xEE));
}

} // namespace
