// Complementary-colour mosaics: refusals, and small frames with answers worked out by hand.
#include <gtest/gtest.h>

#include <utility>

#include "orvella/zeb.h"
#include "support/fill.h"
#include "support/levels.h"

namespace {

using support::Bytes;
using u32 = std::uint32_t;

OrvErrorType convert(Bytes& destination, const Bytes& source, u32 width, u32 height, u32 output) {
    return OrvIRaw8CYGMImageTransform(destination.data(), source.data(), width, height, output, 77);
}

TEST(Cygm, RefusesAndWritesNothing) {
    constexpr OrvErrorType bad = OrvErrorBadParameter, notOffered = OrvErrorNotImplemented;
    struct {
        u32 width, height, output;
        OrvErrorType expected;
    } const calls[] = {
        {0, 4, 0, bad},  {3, 4, 0, bad}, {1, 4, 7, bad},        {2, 0, 0, bad},        {2, 2, 0, bad},
        {2, 6, 99, bad}, {2, 5, 0, bad}, {4, 4, 7, notOffered}, {4, 4, 9, notOffered}, {4, 4, 0xFFFFFFFF, notOffered}};
    const Bytes source(64, 3);
    for (const auto& [width, height, output, expected] : calls) {
        Bytes destination(256, 0x7F);
        EXPECT_EQ(convert(destination, source, width, height, output), expected)
            << width << 'x' << height << " output " << output;
        EXPECT_EQ(OrvIRaw8CYGMImageTransform(nullptr, source.data(), width, height, output, 0), bad);
        EXPECT_EQ(OrvIRaw8CYGMImageTransform(destination.data(), nullptr, width, height, output, 0), bad);
        EXPECT_EQ(destination, Bytes(256, 0x7F));
    }
}

// What binning and 3x3 refuse besides, and in which order.
TEST(Cygm, VariantsRefuseAndWriteNothing) {
    Bytes to(256, 0x7F), from(64);
    struct {
        u32 width, height, output;
        std::uint32_t binned, by3x3; // words of the legacy face
    } const calls[] = {
        {0, 3, 9, 0x88000004, 0x88000004}, {3, 3, 9, 0x88000004, 0x88000004},  {4, 0, 9, 0x88000005, 0x88000005},
        {4, 6, 9, 0x88000005, 0x88000005}, {4, 4, 7, 0x88000012, 0x88000012},  {4, 4, 99, 0x88000012, 0x88000012},
        {2, 3, 9, 0x88000005, 0x88000004}, {2, 4, 99, 0x88000012, 0x88000004}, {2, 4, 6, 0x88000004, 0x88000004},
    };
    for (const auto& [width, height, output, binned, by3x3] : calls) {
        SCOPED_TRACE(::testing::Message() << width << 'x' << height << " output " << output);
        EXPECT_EQ(ZEB_IRaw8CYGMImageTransform_Bin(to.data(), from.data(), width, height, output, 0), binned);
        EXPECT_EQ(ZEB_IRaw8CYGMImageTransform_3x3(to.data(), from.data(), width, height, output, 0), by3x3);
    }
    EXPECT_EQ(ZEB_IRaw8CYGMImageTransform_3x3(nullptr, from.data(), 2, 4, 0, 0), 0x88000002);
    EXPECT_EQ(ZEB_IRaw8CYGMImageTransform_3x3(to.data(), nullptr, 2, 4, 0, 0), 0x88000003);
    EXPECT_EQ(OrvIRaw8CYGMImageTransform_3x3(to.data(), from.data(), 2, 4, 0, 0), OrvErrorBadParameter);
    EXPECT_EQ(OrvIRaw8CYGMImageTransform_Bin(to.data(), from.data(), 6, 4, 6, 0), OrvErrorBadParameter);
    EXPECT_EQ(to, Bytes(256, 0x7F));
}

TEST(Cygm, FlatIsGrey) {
    constexpr std::pair<decltype(&OrvIRaw8CYGMImageTransform), std::size_t> transforms[] = {
        {OrvIRaw8CYGMImageTransform, 32}, {OrvIRaw8CYGMImageTransform_3x3, 32}, {OrvIRaw8CYGMImageTransform_Bin, 8}};
    for (const auto& [transform, pixels] : transforms)
        for (const std::uint8_t value : Bytes{0, 1, 127, 254, 255})
            for (const u32 output : {0U, 1U, 3U, 5U}) {
                const std::size_t bytes = pixels * (output == 1 || output == 3 ? 3 : 1);
                Bytes destination(bytes, 0x7F);
                EXPECT_EQ(transform(destination.data(), Bytes(32, value).data(), 8, 4, output, 0), OrvErrorSuccess);
                EXPECT_EQ(destination, Bytes(bytes, value)) << "output " << output;
            }
}

// Lines 0 to 3 of a frame of width 2; the buffer begins with lines 1 and 3.
Bytes frame(const Bytes& line0, const Bytes& line1, const Bytes& line2, const Bytes& line3) {
    Bytes buffer;
    for (const Bytes* line : {&line1, &line3, &line0, &line2}) buffer.insert(buffer.end(), line->begin(), line->end());
    return buffer;
}

// One block, of each phase:
//
//     row 0   40 10   Y = 75 / 4 = 18, P = (40 + 5) - (10 + 20) = 15 -> 3, Q = (10 + 5) - (40 + 20) = -45 -> -11
//     row 1   20  5   Y = 50 / 4 = 12, P = (5 + 25) - (20 + 0) = 10 -> 2, Q = (5 + 0) - (20 + 25) = -40 -> -10
//     row 2   25  0   Y = 34 / 4 = 8,  P = (25 + 8) - (0 + 1) = 32 -> 8,  Q = (0 + 8) - (25 + 1) = -18 -> -4
//     row 3    8  1
TEST(Cygm, OneBlockOfEachRow) {
    const Bytes source = frame({40, 10}, {20, 5}, {25, 0}, {8, 1});
    const Bytes row0{0, 24, 41, 0, 24, 41}, row1{0, 18, 30, 0, 18, 30}, row2{2, 3, 48, 2, 3, 48};
    Bytes expected;
    for (const Bytes* row : {&row0, &row1, &row2, &row2}) expected.insert(expected.end(), row->begin(), row->end());
    support::atEveryLevel([&] {
        Bytes rgb(24, 0x7F);
        EXPECT_EQ(convert(rgb, source, 2, 4, OrvOutputRgb24), OrvErrorSuccess);
        EXPECT_EQ(rgb, expected);
    });
}

// The last column's fourth byte stays; the last row takes the row above's.
TEST(Cygm, FourthBytes) {
    Bytes bgra(32);
    for (std::size_t i = 0; i < bgra.size(); ++i) bgra[i] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(convert(bgra, Bytes(8, 9), 2, 4, OrvOutputBgra32), OrvErrorSuccess);
    Bytes fourths;
    for (std::size_t i = 3; i < bgra.size(); i += 4) fourths.push_back(bgra[i]);
    EXPECT_EQ(fourths, (Bytes{3, 7, 11, 15, 19, 23, 19, 23}));
}

} // namespace
