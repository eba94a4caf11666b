// Every camera pixel format through every query.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "orvella/orv.h"
#include "orvella/zeb.h"

namespace {

constexpr std::uint32_t untouched = 0xA5A5A5A5;
constexpr int no = 0, yes = 1, err = -1;

struct Format {
    const char* name;
    std::uint32_t code, bits, used, layout, pattern, space;
    int hasPattern, isColor; // err: refused
};

constexpr Format formats[] = {
    {"Mono8", 0x01080001, 8, 8, 0, 255, 0, no, no},
    {"Mono10", 0x01100003, 16, 10, 0, 255, 0, no, no},
    {"Mono12", 0x01100005, 16, 12, 0, 255, 0, no, no},
    {"Mono12Packed", 0x010C0006, 12, 12, 1, 255, 0, no, no},
    {"Mono10p", 0x010A0046, 10, 10, 11, 255, 0, no, err},
    {"Mono12p", 0x010C0047, 12, 12, 11, 255, 0, no, no},
    {"Mono14", 0x01100025, 16, 14, 0, 255, 0, no, no},
    {"Mono16", 0x01100007, 16, 16, 0, 255, 0, no, no},
    {"BayerGR8", 0x01080008, 8, 8, 2, 2, 0, yes, no},
    {"BayerRG8", 0x01080009, 8, 8, 2, 0, 0, yes, no},
    {"BayerGB8", 0x0108000A, 8, 8, 2, 1, 0, yes, no},
    {"BayerBG8", 0x0108000B, 8, 8, 2, 3, 0, yes, no},
    {"BayerGR10", 0x0110000C, 16, 10, 2, 2, 0, yes, no},
    {"BayerRG10", 0x0110000D, 16, 10, 2, 0, 0, yes, no},
    {"BayerGB10", 0x0110000E, 16, 10, 2, 1, 0, yes, no},
    {"BayerBG10", 0x0110000F, 16, 10, 2, 3, 0, yes, no},
    {"BayerGR12", 0x01100010, 16, 12, 2, 2, 0, yes, no},
    {"BayerRG12", 0x01100011, 16, 12, 2, 0, 0, yes, no},
    {"BayerGB12", 0x01100012, 16, 12, 2, 1, 0, yes, no},
    {"BayerBG12", 0x01100013, 16, 12, 2, 3, 0, yes, no},
    {"BayerGR12Packed", 0x010C002A, 12, 12, 3, 2, 0, yes, no},
    {"BayerRG12Packed", 0x010C002B, 12, 12, 3, 0, 0, yes, no},
    {"BayerGB12Packed", 0x010C002C, 12, 12, 3, 1, 0, yes, no},
    {"BayerBG12Packed", 0x010C002D, 12, 12, 3, 3, 0, yes, no},
    {"BayerGR10p", 0x010A0056, 10, 10, 13, 2, 0, yes, no},
    {"BayerRG10p", 0x010A0058, 10, 10, 13, 0, 0, yes, no},
    {"BayerGB10p", 0x010A0054, 10, 10, 13, 1, 0, yes, no},
    {"BayerBG10p", 0x010A0052, 10, 10, 13, 3, 0, yes, no},
    {"BayerGR12p", 0x010C0057, 12, 12, 13, 2, 0, yes, no},
    {"BayerRG12p", 0x010C0059, 12, 12, 13, 0, 0, yes, no},
    {"BayerGB12p", 0x010C0055, 12, 12, 13, 1, 0, yes, no},
    {"BayerBG12p", 0x010C0053, 12, 12, 13, 3, 0, yes, no},
    {"BayerGR16", 0x0110002E, 16, 16, 2, 2, 0, yes, no},
    {"BayerRG16", 0x0110002F, 16, 16, 2, 0, 0, yes, no},
    {"BayerGB16", 0x01100030, 16, 16, 2, 1, 0, yes, no},
    {"BayerBG16", 0x01100031, 16, 16, 2, 3, 0, yes, no},
    {"Rgb8", 0x02180014, 24, 24, 4, 255, 0, no, yes},
    {"Bgr8", 0x02180015, 24, 24, 5, 255, 0, no, yes},
    {"Argb8", 0x02200016, 32, 32, 6, 255, 0, no, yes},
    {"Rgba8", 0x02200016, 32, 32, 6, 255, 0, no, yes},
    {"Bgra8", 0x02200017, 32, 32, 7, 255, 0, no, yes},
    {"Rgb12", 0x0230001A, 48, 36, 4, 255, 0, err, err},
    {"Rgb16", 0x02300033, 48, 48, 4, 255, 0, no, yes},
    {"Yuv411", 0x020C001E, 12, 12, 8, 255, 2, no, yes},
    {"Yuv422", 0x0210001F, 16, 16, 9, 255, 2, no, yes},
    {"Yuv444", 0x02180020, 24, 24, 10, 255, 2, no, yes},
    {"YCbCr411_8_CbYYCrYY", 0x020C003C, 12, 12, 8, 255, 2, no, yes},
    {"YCbCr422_8_CbYCrY", 0x02100043, 16, 16, 9, 255, 2, no, yes},
    {"YCbCr8_CbYCr", 0x0218003A, 24, 24, 10, 255, 2, no, yes},
};

class PixelFormats : public ::testing::TestWithParam<Format> {};

// A query's answer, or err, in which case it must have left its output alone.
template <class Value> int answerOf(OrvErrorType (*query)(Value*, OrvPixelFormatType), std::uint32_t code) {
    Value value = static_cast<Value>(untouched);
    if (query(&value, code) == OrvErrorSuccess) return static_cast<int>(value);
    EXPECT_EQ(query(&value, code), OrvErrorBadParameter);
    EXPECT_EQ(value, static_cast<Value>(untouched));
    return err;
}

TEST_P(PixelFormats, AnswerEveryQuery) {
    const Format& format = GetParam();
    EXPECT_EQ(answerOf(OrvBitsPerPixel, format.code), static_cast<int>(format.bits));
    EXPECT_EQ(answerOf(OrvBitsPerPixelUsed, format.code), static_cast<int>(format.used));
    EXPECT_EQ(answerOf(OrvGetPixelLayout, format.code), static_cast<int>(format.layout));
    EXPECT_EQ(answerOf(OrvGetBayerPattern, format.code), static_cast<int>(format.pattern));
    EXPECT_EQ(answerOf(OrvGetColorSpace, format.code), static_cast<int>(format.space));
    EXPECT_EQ(answerOf(OrvHasBayerPattern, format.code), format.hasPattern);
    EXPECT_EQ(answerOf(OrvIsColor, format.code), format.isColor);
}

void expectDescription(const OrvImage& image, const Format& format) {
    const OrvPixelInfo& pixel = image.ImageInfo.PixelInfo;
    EXPECT_EQ(image.ImageInfo.Width, 640u);
    EXPECT_EQ(image.ImageInfo.Height, 480u);
    EXPECT_EQ(image.ImageInfo.Stride, 640);
    EXPECT_EQ(pixel.BitsPerPixel, format.bits);
    EXPECT_EQ(pixel.BitsUsed, format.used);
    EXPECT_EQ(pixel.Alignment, 1u);
    EXPECT_EQ(pixel.Endianness, 0u);
    EXPECT_EQ(pixel.PixelLayout, format.layout);
    EXPECT_EQ(pixel.BayerPattern, format.pattern);
    EXPECT_EQ(pixel.ColorSpace, format.space);
}

TEST_P(PixelFormats, DescribeAnImageByCodeAndByName) {
    const Format& format = GetParam();
    OrvImage byCode{};
    byCode.Size = sizeof byCode;
    OrvImage byName = byCode;
    ASSERT_EQ(OrvSetImageInfoFromPixelFormat(format.code, 640, 480, &byCode), OrvErrorSuccess);
    expectDescription(byCode, format);
    const std::string name = std::string("PixelFormat") + format.name;
    ASSERT_EQ(OrvSetImageInfoFromString(name.c_str(), 0, 640, 480, &byName), OrvErrorSuccess);
    expectDescription(byName, format);
}

INSTANTIATE_TEST_SUITE_P(All, PixelFormats, ::testing::ValuesIn(formats),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PixelFormatQueries, RefuseUnknownCodes) {
    for (const std::uint32_t code : {0u, 0x01080002u, 0x0210003Bu, 0x81080001u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(answerOf(OrvBitsPerPixelUsed, code), err);
        EXPECT_EQ(answerOf(OrvGetPixelLayout, code), err);
        EXPECT_EQ(answerOf(OrvGetBayerPattern, code), err);
        EXPECT_EQ(answerOf(OrvHasBayerPattern, code), err);
        EXPECT_EQ(answerOf(OrvIsColor, code), err);
        EXPECT_EQ(answerOf(OrvGetColorSpace, code), OrvColorSpaceNone); // never refuses
    }
}

TEST(PixelFormatQueries, RefuseNull) {
    EXPECT_EQ(OrvBitsPerPixel(nullptr, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvBitsPerPixelUsed(nullptr, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvGetBayerPattern(nullptr, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvHasBayerPattern(nullptr, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvIsColor(nullptr, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvGetBitsPerPixel(0, nullptr), OrvErrorBadParameter);
}

TEST(PixelFormatQueries, TakeStorageBitsFromOneByteOfTheCode) {
    const std::map<std::uint32_t, int> known{{0x08, 8},  {0x0A, 10}, {0x0C, 12}, {0x0E, 14},
                                             {0x10, 16}, {0x18, 24}, {0x20, 32}, {0x30, 48}};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        const auto row = known.find(byte);
        const int expected = row == known.end() ? err : row->second;
        EXPECT_EQ(answerOf(OrvBitsPerPixel, byte << 16), expected) << byte;
        EXPECT_EQ(answerOf(OrvBitsPerPixel, byte << 16 | 0xFF00FFFF), expected) << byte;
    }
}

TEST(FormatIndices, HaveTheirBitsInBothFaces) {
    const std::map<int, std::vector<std::uint32_t>> indices{{8, {0, 9, 128, 129, 130}},
                                                            {12, {1, 132, 134, 136, 144, 145, 148, 149}},
                                                            {16, {2, 5, 7, 10}},
                                                            {24, {3, 4}},
                                                            {32, {141}},
                                                            {36, {133, 135}},
                                                            {48, {6, 8}}};
    std::map<std::uint32_t, std::uint32_t> expected;
    for (const auto& [bits, list] : indices)
        for (const std::uint32_t index : list) expected[index] = static_cast<std::uint32_t>(bits);

    std::vector<std::uint32_t> candidates{0x80000000, 0xFFFFFFFF};
    for (std::uint32_t index = 0; index < 300; ++index) candidates.push_back(index);
    for (const std::uint32_t index : candidates) {
        SCOPED_TRACE(index);
        const bool known = expected.contains(index);
        std::uint32_t bits = untouched, legacyBits = untouched;
        EXPECT_EQ(OrvGetBitsPerPixel(index, &bits), known ? OrvErrorSuccess : OrvErrorBadParameter);
        EXPECT_EQ(ZEB_GetBitsPerPixel(index, &legacyBits), known ? 0 : 0x88000002);
        EXPECT_EQ(bits, known ? expected[index] : untouched);
        EXPECT_EQ(legacyBits, bits);
    }
    EXPECT_EQ(ZEB_GetBitsPerPixel(0, nullptr), 0x88000003);
}

} // namespace
