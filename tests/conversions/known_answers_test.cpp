// Small inputs with answers worked out by hand: what the definition might share with the library in misreading.
#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "orvella/orv.h"
#include "support/levels.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Answer {
    const char* what;
    OrvErrorType (*call)(void* destination, void* source);
    Bytes source, expected; // 0x7F where the destination is to be left alone
};

void check(const std::vector<Answer>& answers) {
    for (const Answer& answer : answers) {
        Bytes destination(answer.expected.size(), 0x7F), source = answer.source;
        EXPECT_EQ(answer.call(destination.data(), source.data()), OrvErrorSuccess) << answer.what;
        EXPECT_EQ(destination, answer.expected) << answer.what;
    }
}

TEST(KnownAnswers, Mono) {
    check({
        {"8 bits to UYVY: zero chroma",
         [](void* d, void* s) { return OrvY8ImageTransform(d, s, 2, OrvOutputYuv422); },
         {10, 20},
         {0, 10, 0, 20}},
        {"8 bits to RGBA32",
         [](void* d, void* s) { return OrvY8ImageTransform(d, s, 2, OrvOutputRgba32); },
         {10, 20},
         {10, 10, 10, 0x7F, 20, 20, 20, 0x7F}},
        {"big-endian tint of both, of none at white, of blue",
         [](void* d, void* s) { return OrvY16ImageTransform(d, s, 3, OrvOutputBgr24); },
         {0x12, 0xC0, 0xFF, 0xC0, 0x12, 0x40},
         {0x13, 0x12, 0x13, 0xFF, 0xFF, 0xFF, 0x13, 0x12, 0x12}},
        {"big-endian tint of red, as RGB",
         [](void* d, void* s) { return OrvY16ImageTransform(d, s, 1, OrvOutputRgb24); },
         {0x12, 0x80},
         {0x13, 0x12, 0x12}},
        {"big-endian to Mono16: no swap",
         [](void* d, void* s) { return OrvY16ImageTransform(d, s, 1, OrvOutputMono16); },
         {0x12, 0xC0},
         {0x12, 0xC0}},
        {"no record: big-endian, unshifted",
         [](void* d, void* s) { return OrvY16ImageTransformEx(d, s, 1, OrvOutputBgr48, nullptr); },
         {0x12, 0x34},
         {0x34, 0x12, 0x34, 0x12, 0x34, 0x12}},
        {"12Packed",
         [](void* d, void* s) { return OrvY12ImageTransform(d, s, 2, OrvOutputBgr24); },
         {0xAB, 0xCD, 0xEF},
         {0xAB, 0xAB, 0xAB, 0xEF, 0xEF, 0xEF}},
        {"12p: samples 0xDAB, 0xEFC",
         [](void* d, void* s) { return OrvY12pImageTransform(d, s, 2, OrvOutputMono16); },
         {0xAB, 0xCD, 0xEF},
         {0xB0, 0xDA, 0xC0, 0xEF}},
        {"10p: samples 0x201, 0x102, 0x303, 0x3FC",
         [](void* d, void* s) { return OrvY10pImageTransform(d, s, 4, OrvOutputMono16); },
         {0x01, 0x0A, 0x34, 0x30, 0xFF},
         {0x40, 0x80, 0x80, 0x40, 0xC0, 0xC0, 0x00, 0xFF}},
    });
}

TEST(KnownAnswers, LittleEndianTintComesFromTheNextSample) {
    Bytes source{0xC0, 0x12, 0x40, 0x34, 0x80}, destination(6, 0x7F); // and from the byte behind the last one
    OrvImage from{sizeof from, source.data(), {}}, to{sizeof to, destination.data(), {}};
    ASSERT_EQ(OrvSetImageInfoFromPixelFormat(OrvPixelFormatMono16, 2, 1, &from), OrvErrorSuccess);
    ASSERT_EQ(OrvSetImageInfoOutput(OrvOutputBgr24, 2, 1, &to), OrvErrorSuccess);
    ASSERT_EQ(OrvImageTransform(&from, &to, nullptr, 0), OrvErrorSuccess);
    EXPECT_EQ(destination, (Bytes{0x13, 0x12, 0x12, 0x34, 0x34, 0x35}));
}

TEST(KnownAnswers, Colour) {
    const Bytes greys{255, 255, 255, 1, 1, 1, 0, 0, 1, 0, 0, 7, 0, 0, 8};
    check({
        {"BT.601 is not rounded",
         [](void* d, void* s) { return OrvRGB8ImageTransform(d, s, 5, OrvOutputMono8); },
         greys,
         {255, 1, 0, 0, 0}},
        {"BT.709 is",
         [](void* d, void* s) { return OrvRGB8ImageTransform(d, s, 5, OrvOutputMono8Rec709); },
         greys,
         {255, 1, 0, 0, 1}},
        {"double precision", [](void* d, void* s) { return OrvRGB8ToY8(d, s, 2); }, {255, 255, 255, 5, 5, 5}, {254, 4}},
        {"widening keeps the fourth byte",
         [](void* d, void* s) { return OrvRGB8ImageTransform(d, s, 1, OrvOutputBgra32); },
         {1, 2, 3},
         {3, 2, 1, 0x7F}},
        {"alpha is copied",
         [](void* d, void* s) { return OrvBGRA8ImageTransform(d, s, 1, OrvOutputRgba32); },
         {1, 2, 3, 4},
         {3, 2, 1, 4}},
        {"YUV clamps",
         [](void* d, void* s) { return OrvYUV444ToBGR(d, s, 3); },
         {128, 128, 128, 255, 255, 128, 0, 0, 0},
         {128, 128, 128, 255, 212, 255, 0, 135, 0}},
        {"grey planes",
         [](void* d, void* s) {
             auto* planes = static_cast<std::uint8_t*>(d);
             return OrvRGB8ToRGBYPlanes(planes, planes + 2, planes + 4, planes + 6, s, 2, 1);
         },
         {255, 255, 255, 1, 1, 1},
         {255, 1, 255, 1, 255, 1, 255, 0}},
        {"the green offset of 4:4:4 planes is a signed byte",
         [](void* d, void* s) {
             auto* planes = static_cast<std::uint8_t*>(d);
             return OrvYUV444ToRGBPlanes(planes, planes + 1, planes + 2, s, 1, 1);
         },
         {0, 0, 0},
         {0, 127, 0}},
    });
}

//  R G   10 20   B 40, G (20 + 31) / 2, R 10
//  G B   31 40
TEST(KnownAnswers, Bayer) {
    const Bytes block{10, 20, 31, 40};
    check({
        {"the block's colours, everywhere",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, 1, 0); },
         block,
         {40, 25, 10, 40, 25, 10, 40, 25, 10, 40, 25, 10}},
        {"GBRG",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, 3, 1); },
         block,
         {31, 25, 20, 31, 25, 20, 31, 25, 20, 31, 25, 20}},
        {"GRBG",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, 3, 2); },
         block,
         {20, 25, 31, 20, 25, 31, 20, 25, 31, 20, 25, 31}},
        {"BGGR",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, 3, 3); },
         block,
         {40, 25, 10, 40, 25, 10, 40, 25, 10, 40, 25, 10}},
        {"white to UYVY",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, OrvOutputYuv422, 0); },
         {255, 255, 255, 255},
         {128, 235, 128, 235, 128, 235, 128, 235}},
        {"white to Mono16",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, OrvOutputMono16, 0); },
         {255, 255, 255, 255},
         {0x00, 0xFF, 0x00, 0xFF, 0x00, 0xFF, 0x00, 0xFF}},
        {"white to Mono16 BT.709",
         [](void* d, void* s) { return OrvRaw8ImageTransform(d, s, 2, 2, OrvOutputMono16Rec709, 0); },
         {255, 255, 255, 255},
         {0x80, 0xFF, 0x80, 0xFF, 0x80, 0xFF, 0x80, 0xFF}},
        {"3x3 of height 2 is all zero",
         [](void* d, void* s) { return OrvRaw8ImageTransform_3x3(d, s, 4, 2, 0, 0); },
         {1, 2, 3, 4, 5, 6, 7, 8},
         {0, 0, 0, 0, 0, 0, 0, 0}},
        {"3x3 of width 2 repeats the old first pixels",
         [](void* d, void* s) { return OrvRaw8ImageTransform_3x3(d, s, 2, 4, 0, 0); },
         {1, 2, 3, 4, 5, 6, 7, 8},
         {0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F}},
        {"LCAA of grey is grey",
         [](void* d, void* s) { return OrvRaw8ImageTransform_IntLCAA(d, s, 2, 2, 1, 0); },
         {9, 9, 9, 9},
         {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}},
        {"12p: the low bits count", // greens 0xFF and 0x01, whose top bytes have the mean 7
         [](void* d, void* s) { return OrvRaw12pImageTransform(d, s, 2, 2, OrvOutputBgr24, 0); },
         {0x00, 0xF0, 0x0F, 0x01, 0x00, 0x00},
         {0, 8, 0, 0, 8, 0, 0, 8, 0, 0, 8, 0}},
    });
}

// LCAAV at height 4: above the lower half, whose chroma stays in the source, stands the upper half's last row.
TEST(KnownAnswers, LcaavOfHeight4) {
    Bytes source{10, 200, 30, 40, 50, 60, 70, 80, 250, 5, 120, 130, 0, 255, 16, 90}, grey(16), u, v;
    ASSERT_EQ(OrvRaw8ImageTransform_IntLCAAV(grey.data(), source.data(), 4, 4, OrvOutputMono8, OrvBayerPatternRGGB),
              OrvErrorSuccess);
    for (std::size_t i = 0; i < 16; i += 4) u.push_back(source[i]), v.push_back(source[i + 2]);
    EXPECT_EQ(u, (Bytes{186, 158, 212, 128}));
    EXPECT_EQ(v, (Bytes{183, 171, 231, 150}));
}

// The green of a green site takes the lower left and the upper right, on every phase.
//
//  G R G R    0  0 80  0    Row 1, column 1: (2 * 20 + 40 + 80) / 4. Its neighbours to the right and below are no green
//  B G B G    0 20  0  0    sites: (20 + 80) / 4 and (20 + 40) / 4.
//  G R G R   40  0  0  0
//  B G B G    0  0  0  0
TEST(KnownAnswers, LopsidedGreenOf3x3) {
    Bytes source{0, 0, 80, 0, 0, 20, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0}, rgb(48, 0x7F), greens;
    ASSERT_EQ(OrvRaw8ImageTransform_3x3(rgb.data(), source.data(), 4, 4, OrvOutputRgb24, OrvBayerPatternGRBG),
              OrvErrorSuccess);
    for (std::size_t i = 0; i < 16; ++i) greens.push_back(rgb[3 * i + 1]);
    EXPECT_EQ(greens, (Bytes{40, 40, 25, 25, 40, 40, 25, 25, 15, 15, 0, 0, 15, 15, 0, 0}));
}

// ---- Complementary colours

OrvErrorType convertCygm(Bytes& destination, const Bytes& source, std::uint32_t width, std::uint32_t height,
                         std::uint32_t output) {
    return OrvIRaw8CYGMImageTransform(destination.data(), source.data(), width, height, output, 77);
}

TEST(KnownAnswers, CygmFlatIsGrey) {
    constexpr std::pair<decltype(&OrvIRaw8CYGMImageTransform), std::size_t> transforms[] = {
        {OrvIRaw8CYGMImageTransform, 32}, {OrvIRaw8CYGMImageTransform_3x3, 32}, {OrvIRaw8CYGMImageTransform_Bin, 8}};
    for (const auto& [transform, pixels] : transforms)
        for (const std::uint8_t value : Bytes{0, 1, 127, 254, 255})
            for (const std::uint32_t output : {0U, 1U, 3U, 5U}) {
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
TEST(KnownAnswers, CygmOneBlockOfEachRow) {
    const Bytes source = frame({40, 10}, {20, 5}, {25, 0}, {8, 1});
    const Bytes row0{0, 24, 41, 0, 24, 41}, row1{0, 18, 30, 0, 18, 30}, row2{2, 3, 48, 2, 3, 48};
    Bytes expected;
    for (const Bytes* row : {&row0, &row1, &row2, &row2}) expected.insert(expected.end(), row->begin(), row->end());
    support::atEveryLevel([&] {
        Bytes rgb(24, 0x7F);
        EXPECT_EQ(convertCygm(rgb, source, 2, 4, OrvOutputRgb24), OrvErrorSuccess);
        EXPECT_EQ(rgb, expected);
    });
}

// The last column's fourth byte stays; the last row takes the row above's.
TEST(KnownAnswers, CygmFourthBytes) {
    Bytes bgra(32);
    for (std::size_t i = 0; i < bgra.size(); ++i) bgra[i] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(convertCygm(bgra, Bytes(8, 9), 2, 4, OrvOutputBgra32), OrvErrorSuccess);
    Bytes fourths;
    for (std::size_t i = 3; i < bgra.size(); i += 4) fourths.push_back(bgra[i]);
    EXPECT_EQ(fourths, (Bytes{3, 7, 11, 15, 19, 23, 19, 23}));
}

} // namespace
