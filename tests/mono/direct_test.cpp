// The one-call mono converters of 16-bit words: every word in every layout.
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

} // namespace
