// Every camera pixel format through every query: what its name and its code say.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "frame/pixel_formats.h"
#include "orvella/orv.h"
#include "orvella/zeb.h"

namespace {

constexpr std::uint32_t untouched = 0xA5A5A5A5;
constexpr int no = 0, yes = 1, err = -1;

struct Format {
    std::string name;
    std::uint32_t code;
    std::uint32_t bits, used, layout, pattern = OrvBayerPatternNone, space = OrvColorSpaceNone;
    int hasPattern = no, isColor = no; // err: refused
};

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

// What a format's name says, and the bits of a pixel in its code.
Format describe(const kel::PixelFormat& known) {
    Format format{
        .name = std::string(known.name), .code = known.code, .bits = known.code >> 16 & 0xFF, .used = 0, .layout = 0};
    const std::string& name = format.name;
    const unsigned depth = static_cast<unsigned>(std::stoi(name.substr(name.find_first_of("0123456789"))));
    const bool isPacked = contains(name, "Packed"), isP = name.back() == 'p';
    format.used = depth;
    if (name.starts_with("Mono")) {
        format.layout = isPacked ? OrvPixelLayoutMonoPacked : isP ? OrvPixelLayoutMonoP : OrvPixelLayoutMono;
        if (name == "Mono10p") format.isColor = err; // callers rely on it
    } else if (name.starts_with("Bayer")) {
        format.layout = isPacked ? OrvPixelLayoutRawPacked : isP ? OrvPixelLayoutRawP : OrvPixelLayoutRaw;
        const std::vector<std::string> patterns{"RG", "GB", "GR", "BG"};
        format.pattern = static_cast<unsigned>(std::ranges::find(patterns, name.substr(5, 2)) - patterns.begin());
        format.hasPattern = yes;
    } else if (name.starts_with("Y")) {
        format.layout = contains(name, "411")   ? OrvPixelLayoutYuv411
                        : contains(name, "422") ? OrvPixelLayoutYuv422
                                                : OrvPixelLayoutYuv444;
        format.used = format.bits, format.space = OrvColorSpaceRec601, format.isColor = yes;
    } else {
        const bool isBgr = name.starts_with("B"), hasAlpha = contains(name, "a8") || contains(name, "Argb");
        format.layout = hasAlpha ? isBgr ? OrvPixelLayoutBgra : OrvPixelLayoutRgba
                        : isBgr  ? OrvPixelLayoutBgr
                                 : OrvPixelLayoutRgb;
        format.used = (hasAlpha ? 4 : 3) * depth, format.isColor = yes;
        if (name == "Rgb12") format.isColor = format.hasPattern = err; // they rely on that, too
    }
    return format;
}

std::vector<Format> formats() {
    std::vector<Format> all;
    for (const kel::PixelFormat& known : kel::pixelFormats()) all.push_back(describe(known));
    return all;
}

// A query's answer, or err, in which case it must have left its output alone.
template <class Value> int answerOf(OrvErrorType (*query)(Value*, OrvPixelFormatType), std::uint32_t code) {
    Value value = static_cast<Value>(untouched);
    if (query(&value, code) == OrvErrorSuccess) return static_cast<int>(value);
    EXPECT_EQ(query(&value, code), OrvErrorBadParameter);
    EXPECT_EQ(value, static_cast<Value>(untouched));
    return err;
}

void expectDescription(const OrvImage& image, const Format& format) {
    const OrvPixelInfo expected{format.bits, format.used, 1, 0, format.layout, format.pattern, format.space};
    EXPECT_EQ(image.ImageInfo.Width, 640u);
    EXPECT_EQ(image.ImageInfo.Height, 480u);
    EXPECT_EQ(image.ImageInfo.Stride, 640);
    EXPECT_EQ(std::memcmp(&image.ImageInfo.PixelInfo, &expected, sizeof expected), 0);
}

TEST(PixelFormats, AnswerWhatTheirNamesSay) {
    for (const Format& format : formats()) {
        SCOPED_TRACE(format.name);
        EXPECT_EQ(answerOf(OrvBitsPerPixel, format.code), static_cast<int>(format.bits));
        EXPECT_EQ(answerOf(OrvBitsPerPixelUsed, format.code), static_cast<int>(format.used));
        EXPECT_EQ(answerOf(OrvGetPixelLayout, format.code), static_cast<int>(format.layout));
        EXPECT_EQ(answerOf(OrvGetBayerPattern, format.code), static_cast<int>(format.pattern));
        EXPECT_EQ(answerOf(OrvGetColorSpace, format.code), static_cast<int>(format.space));
        EXPECT_EQ(answerOf(OrvHasBayerPattern, format.code), format.hasPattern);
        EXPECT_EQ(answerOf(OrvIsColor, format.code), format.isColor);

        OrvImage byCode{}, byName{};
        byCode.Size = byName.Size = sizeof(OrvImage);
        ASSERT_EQ(OrvSetImageInfoFromPixelFormat(format.code, 640, 480, &byCode), OrvErrorSuccess);
        expectDescription(byCode, format);
        const std::string name = "PixelFormat" + format.name;
        ASSERT_EQ(OrvSetImageInfoFromString(name.c_str(), 0, 640, 480, &byName), OrvErrorSuccess);
        expectDescription(byName, format);
    }
}

// Names and codes are a promise: who changes one changes the sum (FNV-1a) knowingly.
TEST(PixelFormats, HaveTheirCodes) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const Format& format : formats())
        for (const char c : format.name + " " + std::to_string(format.code) + "\n")
            sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    EXPECT_EQ(formats().size(), 49u);
    EXPECT_EQ(sum, 0xE1560831D0C0717Bu);
}

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
