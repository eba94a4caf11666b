// The setters of image records: outputs, names, and what a refused call leaves behind.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "frame/outputs.h"
#include "orvella/orv.h"
#include "support/faces.h"

namespace {

static_assert(sizeof(OrvImage) == 56 && offsetof(OrvImage, Data) == 8 && offsetof(OrvImage, ImageInfo) == 16);
static_assert(sizeof(OrvImageInfo) == 40 && offsetof(OrvImageInfo, PixelInfo) == 12);
static_assert(sizeof(OrvTransformInfo) == 40 && offsetof(OrvTransformInfo, Parameter) == 4);
static_assert(sizeof(OrvShiftRecord) == 20 && sizeof(OrvTechnoInfo) == 12);

OrvImage filledImage(std::uint32_t size = sizeof(OrvImage)) {
    OrvImage image;
    std::memset(&image, 0xA5, sizeof image);
    image.Size = size;
    return image;
}

bool same(const OrvImage& a, const OrvImage& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// What OrvSetImageInfoOutput(code, 640, 480) must make of the image.
OrvImage describedAs(OrvImage image, OrvOutputCode code) {
    struct Row {
        std::uint32_t bits, layout, space;
    };
    constexpr Row rows[] = {{8, 0, 2},  {24, 5, 0}, {32, 7, 0}, {24, 4, 0}, {32, 6, 0}, {8, 0, 1},
                            {16, 9, 2}, {16, 0, 2}, {16, 0, 1}, {48, 5, 0}, {48, 4, 0}};
    const auto [bits, layout, space] = rows[code];
    image.ImageInfo = {640, 480, 640, {bits, bits, 1, 0, layout, 255, space}};
    return image;
}

TEST(ImageInfo, DescribesTheOutputs) {
    for (OrvOutputCode code = 0; code <= 10; ++code) {
        SCOPED_TRACE(code);
        OrvImage image = filledImage();
        EXPECT_EQ(OrvSetImageInfoOutput(code, 640, 480, &image), OrvErrorSuccess);
        EXPECT_TRUE(same(image, describedAs(filledImage(), code)));

        const auto [refusal, back] = kel::outputOf(image.ImageInfo.PixelInfo);
        EXPECT_EQ(refusal, kel::Refusal::none);
        EXPECT_EQ(back, code);
    }
}

TEST(ImageInfo, KnowsTheOutputsByName) {
    const std::vector<std::pair<std::string, OrvOutputCode>> names{
        {"MONO8", 0},    {"MONO8_REC601", 0}, {"BGR8", 1},          {"BGR24", 1},  {"BGRA32", 2},
        {"RGB8", 3},     {"RGB24", 3},        {"RGBA32", 4},        {"UYVY", 6},   {"YUV422", 6},
        {"MONO16", 7},   {"MONO8_REC709", 5}, {"BGR48", 9},         {"RGB48", 10}, {"bgr24", 1},
        {"yCbCr422", 6}, {"rgba32", 4},       {"MONO16_REC601", 7}, {"Bgr24", 1},  {"mono16_Rec709", 8}};
    for (const auto& [name, code] : names) {
        SCOPED_TRACE(name);
        OrvImage image = filledImage();
        EXPECT_EQ(OrvSetImageInfoFromString(name.c_str(), 0, 640, 480, &image), OrvErrorSuccess);
        EXPECT_TRUE(same(image, describedAs(filledImage(), code)));
    }
}

TEST(ImageInfo, SkipsOnePrefixIfTheLengthAllowsIt) {
    struct Row {
        const char* name;
        std::uint32_t length;
        bool known;
    };
    for (const auto& [name, length, known] : std::vector<Row>{{"orvPixelFormatMono8", 19, true},
                                                              {"orvPixelFormatMono8", 3, false},
                                                              {"oRVpixelformatMONO8", 4, true},
                                                              {"OrvMono8", 8, true},
                                                              {"OrvMono8", 1000, true},
                                                              {"OrvMono8", 0, false},
                                                              {"OrvOrvMono8", 11, false},
                                                              {"Mono8", 5, true},
                                                              {"Mono8", 2, true},
                                                              {"Orv", 4, false},
                                                              {"Or", 100, false},
                                                              {"", 100, false}}) {
        SCOPED_TRACE(std::string(name) + ", " + std::to_string(length));
        OrvImage image = filledImage();
        EXPECT_EQ(OrvSetImageInfoFromString(name, length, 640, 480, &image),
                  known ? OrvErrorSuccess : OrvErrorBadParameter);
        EXPECT_EQ(image.ImageInfo.PixelInfo.BitsPerPixel, known ? 8 : filledImage().ImageInfo.PixelInfo.BitsPerPixel);
    }
}

TEST(ImageInfo, UnknownNamesWriteNothing) {
    for (const char* name : {"", "BGR2", "BGR240", "BGR24 ", " BGR24", "PixelFormat", "PixelFormatMono", "BayerRG8",
                             "PixelFormatMono8_", "PixelFormatBGR24", "Pixel", "MONO8\x7FREC709", "\xC2GR24"}) {
        SCOPED_TRACE(name);
        OrvImage image = filledImage();
        EXPECT_EQ(OrvSetImageInfoFromString(name, 100, 640, 480, &image), OrvErrorBadParameter);
        EXPECT_TRUE(same(image, filledImage()));
    }
}

TEST(ImageInfo, ChecksTheRecordBeforeTheFormat) {
    EXPECT_EQ(OrvSetImageInfoFromPixelFormat(0, 640, 480, nullptr), OrvErrorBadParameter);
    EXPECT_EQ(OrvSetImageInfoOutput(11, 640, 480, nullptr), OrvErrorBadParameter);
    EXPECT_EQ(OrvSetImageInfoFromString("BGR24", 5, 640, 480, nullptr), OrvErrorBadParameter);
    for (const std::uint32_t size : {0u, 48u, 55u, 57u}) {
        OrvImage image = filledImage(size);
        EXPECT_EQ(OrvSetImageInfoFromPixelFormat(0, 640, 480, &image), OrvErrorStructSize);
        EXPECT_EQ(OrvSetImageInfoOutput(11, 640, 480, &image), OrvErrorStructSize);
        EXPECT_EQ(OrvSetImageInfoFromString("unknown", 7, 640, 480, &image), OrvErrorStructSize);
        EXPECT_EQ(OrvSetImageInfoFromString(nullptr, 7, 640, 480, &image), OrvErrorBadParameter);
        EXPECT_TRUE(same(image, filledImage(size)));
    }
}

TEST(ImageInfo, LeavesTheGeometryBehindWhenTheFormatIsRefused) {
    OrvImage geometry = filledImage();
    geometry.ImageInfo.Width = 640;
    geometry.ImageInfo.Height = 480;
    geometry.ImageInfo.Stride = 640;
    OrvImage geometryAndBits = geometry;
    geometryAndBits.ImageInfo.PixelInfo.BitsPerPixel = 8;

    OrvImage image = filledImage();
    EXPECT_EQ(OrvSetImageInfoFromPixelFormat(0x01090002, 640, 480, &image), OrvErrorBadParameter);
    EXPECT_TRUE(same(image, geometry));
    image = filledImage();
    EXPECT_EQ(OrvSetImageInfoFromPixelFormat(0x01080002, 640, 480, &image), OrvErrorBadParameter);
    EXPECT_TRUE(same(image, geometryAndBits));
    for (const OrvOutputCode output : {11u, 0xFFFFFFFFu}) {
        image = filledImage();
        EXPECT_EQ(OrvSetImageInfoOutput(output, 640, 480, &image), OrvErrorBadParameter);
        EXPECT_TRUE(same(image, geometry));
    }
}

TEST(OutputOf, RefusesWhatNoOutputIs) {
    constexpr int bad = OrvErrorBadParameter, notOffered = OrvErrorNotImplemented;
    struct Row {
        OrvPixelInfo pixel; // bits, used, alignment, endianness, layout, pattern, colour space
        int expected;       // an output, or a refusal
    };
    const Row rows[] = {
        // Mono: BT.709 is taken as it is, others only as native words of full depth
        {{8, 8, 1, 0, 0, 255, 0}, 0},
        {{8, 5, 1, 1, 0, 255, 2}, 0},
        {{16, 16, 1, 0, 0, 255, 0}, 7},
        {{16, 16, 9, 2, 0, 255, 2}, 7},
        {{16, 16, 1, 1, 0, 255, 2}, notOffered},
        {{16, 12, 1, 0, 0, 255, 0}, notOffered},
        {{16, 12, 1, 1, 0, 255, 1}, 8},
        {{8, 3, 1, 1, 0, 255, 1}, 5},
        {{12, 12, 1, 1, 0, 255, 0}, bad},
        {{24, 24, 1, 0, 0, 255, 1}, bad},
        {{24, 24, 1, 0, 0, 255, 2}, bad},
        // Mono of an unknown colour space is taken for RGB
        {{24, 24, 1, 0, 0, 255, 3}, 3},
        {{48, 48, 1, 0, 0, 255, 0xFFFFFFFF}, 10},
        {{8, 8, 1, 0, 0, 255, 3}, bad},
        {{16, 12, 1, 1, 0, 255, 3}, bad},
        // Colour, whatever the colour space, pattern and alignment say
        {{24, 0, 7, 1, 4, 0, 9}, 3},
        {{48, 0, 7, 1, 5, 0, 9}, 9},
        {{32, 0, 7, 1, 6, 0, 9}, 4},
        {{32, 0, 7, 1, 7, 0, 9}, 2},
        {{0, 0, 7, 1, 9, 0, 9}, 6},
        {{32, 32, 1, 0, 4, 255, 0}, bad},
        {{32, 32, 1, 0, 5, 255, 0}, bad},
        {{24, 24, 1, 0, 6, 255, 0}, bad},
        {{48, 48, 1, 0, 7, 255, 0}, bad},
        // Layouts that are sources only
        {{12, 12, 1, 0, 1, 255, 0}, bad},
        {{8, 8, 1, 0, 2, 0, 0}, bad},
        {{12, 12, 1, 0, 8, 255, 2}, bad},
        {{24, 24, 1, 0, 10, 255, 2}, bad},
        {{16, 16, 1, 0, 12, 255, 2}, bad},
        {{16, 16, 1, 0, 14, 255, 2}, bad},
    };
    for (const auto& [pixel, expected] : rows) {
        SCOPED_TRACE("layout " + std::to_string(pixel.PixelLayout) + ", " + std::to_string(pixel.BitsPerPixel) +
                     " bits, colour space " + std::to_string(pixel.ColorSpace));
        const auto [refusal, output] = kel::outputOf(pixel);
        EXPECT_EQ(refusal == kel::Refusal::none ? static_cast<std::int32_t>(output) : kel::orv(refusal), expected);
    }
}

} // namespace
