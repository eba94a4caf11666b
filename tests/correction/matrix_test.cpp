// The arithmetic of colour correction, for matrices of any size.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "correction/transform.h"
#include "definition/definition.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/levels.h"

namespace {

using correction::Call;
using correction::Matrix;
using support::Bytes;

// ---- One pixel, by hand

struct Answer {
    const char* what;
    Matrix matrix;
    Bytes rgb, expected;
};

constexpr float step = 1.0F / 1024;

TEST(Matrix, KnownAnswers) {
    const std::vector<Answer> answers{
        {"identity", {1, 0, 0, 0, 1, 0, 0, 0, 1}, {1, 128, 255}, {1, 128, 255}},
        {"coefficients are truncated", {0.9999F, 0, 0, 0, 1.0009F, 0, 0, 0, -0.0009F}, {255, 255, 255}, {254, 255, 0}},
        {"rows and columns", {0, 0, 1, 1, 0, 0, 0.5F, 0.25F, 0}, {100, 60, 7}, {7, 100, 65}},
        {"negative, above", {-1, 0, 0, 1, 1, 0, 1, 0, -1}, {200, 200, 201}, {0, 255, 0}},
        // Sums after the shift: 16 bits decide.
        {"255, 256, 32767", {255, 0, 0, 256, 0, 0, 32767, 0, 0}, {1, 0, 0}, {255, 255, 255}},
        {"32768, 40000, 65535", {32768, 0, 0, 40000, 0, 0, 65535, 0, 0}, {1, 0, 0}, {0, 0, 0}},
        {"65536, 65541, 65792", {65536, 0, 0, 65541, 0, 0, 65792, 0, 0}, {1, 0, 0}, {0, 5, 255}},
        {"-5, -2^25, -2^25 - 1", {-5 * step, 0, 0, -32768, 0, 0, -32768, -step, 0}, {1, 1, 0}, {0, 0, 255}},
    };
    for (const Answer& answer : answers) {
        SCOPED_TRACE(answer.what);
        support::atEveryLevel([&] {
            Bytes result(3);
            EXPECT_EQ(Call(OrvPixelFormatRgb8, 1, 1, OrvOutputRgb24).run(result, answer.rgb, answer.matrix), 0);
            EXPECT_EQ(result, answer.expected);
        });
    }
}

// White of 12Packed samples: results above 255 keep their low byte, those above 65535 are clamped.
TEST(Matrix, WrapsAround12Packed) {
    const Bytes white(12, 0xFF);
    Bytes result(48);
    EXPECT_EQ(
        Call(OrvPixelFormatBayerRG12Packed, 4, 2, OrvOutputRgb24).run(result, white, {2, 0, 0, 0, -1, 0, 0, 0, 300}),
        OrvErrorBadParameter); // not offered: R and B come in one order only
    result.resize(24);
    EXPECT_EQ(
        Call(OrvPixelFormatBayerRG12Packed, 4, 2, OrvOutputBgr24).run(result, white, {2, 0, 0, 0, -1, 0, 0, 0, 300}),
        0);
    EXPECT_EQ(Bytes(result.begin(), result.begin() + 3), (Bytes{255, 0, 254}));
}

// White by diag(9000) and diag(33): sums that no longer fit in 32 bits come out negative.
TEST(Matrix, SumsWrapAround) {
    struct {
        OrvPixelFormatType format;
        OrvOutputCode output;
        float diagonal;
    } const cases[] = {{OrvPixelFormatBayerRG12Packed, OrvOutputBgr24, 9000},
                       {OrvPixelFormatBayerRG12Packed, OrvOutputBgr48, 33},
                       {OrvPixelFormatBayerRG16, OrvOutputMono16, 33},
                       {OrvPixelFormatBayerRG16, OrvOutputBgr48, 33}};
    for (const auto& [format, output, k] : cases) {
        Bytes result(24, 1);
        EXPECT_EQ(Call(format, 2, 2, output).run(result, Bytes(8, 0xFF), {k, 0, 0, 0, k, 0, 0, 0, k}), 0);
        EXPECT_EQ(Bytes(result.begin(), result.begin() + 6), Bytes(6, 0)) << std::hex << format << ' ' << output;
    }
}

// ---- Any matrix

constexpr std::uint32_t width = 70, height = 4;

// OrvImageTransform with a matrix, and one-call converters with an object of it.
template <OrvPixelFormatType format, OrvOutputCode output>
OrvErrorType transform(Bytes& destination, const Bytes& source, const Matrix& matrix) {
    return Call(format, width, height, output).run(destination, source, matrix);
}
template <auto function, std::uint32_t kind>
OrvErrorType converter(Bytes& destination, const Bytes& source, const Matrix& matrix) {
    std::int32_t object[10] = {kind};
    std::ranges::transform(matrix, object + 1, definition::fixedPoint);
    return function(destination.data(), source.data(), width, height, 0, object);
}

struct Conversion {
    const char* name;
    OrvErrorType (*convert)(Bytes& destination, const Bytes& source, const Matrix& matrix);
};

constexpr Conversion conversions[] = {
    {"RGB8 matrix -> BGR24", transform<OrvPixelFormatRgb8, OrvOutputBgr24>},
    {"Bayer8 matrix -> Mono8", transform<OrvPixelFormatBayerRG8, OrvOutputMono8>},
    {"Bayer16 matrix -> Mono16", transform<OrvPixelFormatBayerRG16, OrvOutputMono16>},
    {"Bayer16 matrix -> BGR48", transform<OrvPixelFormatBayerRG16, OrvOutputBgr48>},
    {"Bayer12Packed matrix -> BGR24", transform<OrvPixelFormatBayerRG12Packed, OrvOutputBgr24>},
    {"Bayer12Packed matrix -> BGR48", transform<OrvPixelFormatBayerRG12Packed, OrvOutputBgr48>},
    {"Bayer8 2x2 matrix -> BGR24", converter<OrvRaw8ToBGR_CC, 2>},
    {"Bayer8 2x2 matrix -> Mono8", converter<OrvRaw8ToY8_CC, 2>},
    {"Bayer12Packed 2x2 matrix -> BGR24", converter<OrvRaw12ToBGR_CC, 2>},
    {"Bayer12Packed 2x2 matrix -> BGR48", converter<OrvRaw12ToBGR16_CC, 3>},
    {"Bayer16 big-endian 2x2 matrix -> BGR48", converter<OrvRaw16ToBGR16_CC, 3>},
    {"Bayer16 big-endian 2x2 matrix -> Mono16", converter<OrvRaw16ToY16_CC, 3>},
};

void expectAsDefined(const Conversion& conversion, const Matrix& matrix, support::Random& random) {
    const Bytes source = support::filled(width * height * 3, support::Contents::noise, random);
    Bytes scratch = source, expected(width * height * 6), actual(width * height * 6);
    definition::find(conversion.name)({expected.data(), scratch.data(), width, height, 0, matrix.data()});
    EXPECT_EQ(conversion.convert(actual, source, matrix), 0);
    EXPECT_TRUE(support::same(expected, actual)) << conversion.name << ", matrix " << ::testing::PrintToString(matrix);
}

TEST(Matrix, OfAnySize) {
    support::Random random{support::seed()};
    const auto coefficient = [&random](double scale) {
        return static_cast<float>(scale * (static_cast<double>(random()) / support::Random::max() * 2 - 1));
    };
    support::atEveryLevel([&] {
        for (const double scale : {0.1, 1.0, 2.0, 10.0, 12.0, 40.0, 3e2, 1e4, 1e5, 3e6})
            for (int repetition = 0; repetition < 10; ++repetition) {
                Matrix matrix;
                for (float& m : matrix) m = coefficient(scale);
                for (const Conversion& conversion : conversions) expectAsDefined(conversion, matrix, random);
            }
    });
}

// Where the sums of 16-bit samples and words just fit, and just no longer.
TEST(Matrix, OfLimitingSize) {
    constexpr float most = 32767 * step, over = 32;
    const Matrix matrices[] = {{most, 0, 0, 0, most, 0, 0, 0, most},
                               {-most, 0, 0, 0, -most, 0, 0, 0, -most},
                               {most - 2, 1, 1, 1, most - 2, 1, -1, -1, 2 - most},
                               {over, 0, 0, 0, over, 0, 0, 0, over},
                               {-over, 0, 0, 0, -over, 0, 0, 0, -over},
                               {16, 16, 0, 0, 16, 16, -16, 0, -16},
                               {1, 0, 0, 0, 1, 0, over, over, over},
                               {2097151, 2097151, 2097151, -2097152, -2097152, -2097152, 2097151, -2097152, 0},
                               {1e30F, -1e30F, 0, 0, HUGE_VALF, 0, -HUGE_VALF, 0, std::nanf("")}};
    support::Random random{support::seed()};
    support::atEveryLevel([&] {
        for (const Matrix& matrix : matrices)
            for (const Conversion& conversion : conversions) expectAsDefined(conversion, matrix, random);
    });
}

// ---- No matrix

TEST(Matrix, OfANullHandleIsNone) {
    using Corrected = decltype(&OrvRaw8ToBGR_CC);
    using Plain = decltype(&OrvRaw8ToBGR);
    constexpr std::pair<Corrected, Plain> converters[] = {
        {OrvRaw8ToBGR_CC, OrvRaw8ToBGR},       {OrvRaw8ToY8_CC, OrvRaw8ToY8},
        {OrvRaw12ToBGR_CC, OrvRaw12ToBGR},     {OrvRaw12ToBGR16_CC, OrvRaw12ToBGR16},
        {OrvRaw16ToBGR16_CC, OrvRaw16ToBGR16}, {OrvRaw16ToY16_CC, OrvRaw16ToY16}};
    support::Random random{support::seed()};
    const Bytes source = support::filled(width * height * 2, support::Contents::noise, random);
    for (const auto& [corrected, plain] : converters)
        for (std::int32_t pattern = -1; pattern < 4; ++pattern) {
            Bytes expected(width * height * 6), actual(width * height * 6);
            EXPECT_EQ(plain(expected.data(), source.data(), width, height, pattern), 0);
            EXPECT_EQ(corrected(actual.data(), source.data(), width, height, pattern, nullptr), 0);
            EXPECT_TRUE(support::same(expected, actual)) << "pattern " << pattern;
        }
}

} // namespace
