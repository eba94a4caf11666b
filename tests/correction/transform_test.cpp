// What the path with a matrix takes and refuses, and how it treats patterns, records and pixel counts.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "correction/transform.h"
#include "support/fill.h"
#include "support/guarded_buffer.h"

namespace {

using correction::Call;
using correction::identity;
using correction::option;
using support::Bytes;

constexpr std::uint32_t width = 8, height = 4, n = width * height;

Bytes noise(unsigned seed) {
    support::Random random(seed);
    return support::filled(6 * n, support::Contents::noise, random);
}

// ---- Combinations

struct Source {
    const char* name;
    OrvPixelLayout layout;
    std::uint32_t bits;
    std::vector<std::uint32_t> outputs; // that it takes
};

TEST(CorrectedTransform, TakesTheseCombinations) {
    const std::vector<Source> sources{
        {"Bayer8", OrvPixelLayoutRaw, 8, {0, 1, 3, 5}},
        {"Bayer16", OrvPixelLayoutRaw, 16, {7, 8, 9}},
        {"Bayer of 12 bits", OrvPixelLayoutRaw, 12, {}},
        {"12Packed", OrvPixelLayoutRawPacked, 12, {1, 9}},
        {"RawPacked of 8 bits", OrvPixelLayoutRawPacked, 8, {}}, // does not fall through
        {"RawPacked of 10 bits", OrvPixelLayoutRawPacked, 10, {}},
        {"10p", OrvPixelLayoutRawP, 10, {}},
        {"12p", OrvPixelLayoutRawP, 12, {}},
        {"RGB8", OrvPixelLayoutRgb, 24, {1, 2, 3, 4}},
        {"RGB16", OrvPixelLayoutRgb, 48, {}},
        {"BGR8", OrvPixelLayoutBgr, 24, {1, 2, 3, 4}},
        {"BGR of 32 bits", OrvPixelLayoutBgr, 32, {}},
        {"BGR of 12 bits", OrvPixelLayoutBgr, 12, {}},
        {"RGBA8", OrvPixelLayoutRgba, 32, {1, 2, 3, 4}},
        {"BGRA8", OrvPixelLayoutBgra, 32, {1, 2, 3, 4}},
        {"BGRA of 24 bits", OrvPixelLayoutBgra, 24, {}},
        {"Mono8", OrvPixelLayoutMono, 8, {}},
        {"Mono12Packed", OrvPixelLayoutMonoPacked, 12, {}},
        {"Mono10p", OrvPixelLayoutMonoP, 10, {}},
        {"4:1:1", OrvPixelLayoutYuv411, 12, {}},
        {"4:2:2", OrvPixelLayoutYuv422, 16, {}},
        {"4:4:4", OrvPixelLayoutYuv444, 24, {}},
        {"layout 12", 12, 8, {}},
        {"layout 14", 14, 8, {}},
    };
    for (const Source& row : sources)
        for (std::uint32_t output = 0; output <= 10; ++output) {
            SCOPED_TRACE(::testing::Message() << row.name << " to output " << output);
            Call call(OrvPixelFormatBayerRG8, width, height, output);
            call.source.ImageInfo.PixelInfo = {row.bits, row.bits, 1, 0, row.layout, 0, 0};
            Bytes destination = noise(2);
            const bool taken = std::ranges::find(row.outputs, output) != row.outputs.end();
            EXPECT_EQ(call.run(destination, noise(1), identity), taken ? OrvErrorSuccess : OrvErrorBadParameter);
            EXPECT_EQ(destination != noise(2), taken);
        }
}

// ---- Refusals

struct Refusal {
    const char* what;
    Call call;
    std::function<void(Call&)> change;
    OrvErrorType expected;
};

OrvPixelInfo& from(Call& call) { return call.source.ImageInfo.PixelInfo; }
OrvPixelInfo& to(Call& call) { return call.destination.ImageInfo.PixelInfo; }

TEST(CorrectedTransform, RefusesAndWritesNothing) {
    constexpr OrvErrorType bad = OrvErrorBadParameter, notOffered = OrvErrorNotImplemented;
    const Call raw8(OrvPixelFormatBayerRG8, width, height, OrvOutputBgr24);
    const Call raw16(OrvPixelFormatBayerRG16, width, height, OrvOutputBgr48);
    const Call raw12(OrvPixelFormatBayerRG12Packed, width, height, OrvOutputBgr24);
    const Call toMono16(OrvPixelFormatBayerRG16, width, height, OrvOutputMono16);
    const auto nothing = [](Call&) {};
    const std::vector<Refusal> refusals{
        {"big-endian Mono16", toMono16, [](Call& c) { to(c).Endianness = 1; }, notOffered},
        {"big-endian Mono16, bad source", toMono16, [](Call& c) { to(c).Endianness = 1, from(c).PixelLayout = 12; },
         notOffered},
        {"destination of no output", raw8, [](Call& c) { to(c).PixelLayout = OrvPixelLayoutYuv411; }, bad},
        {"pattern 4", raw8, [](Call& c) { from(c).BayerPattern = 4; }, bad},
        {"pattern -1", raw8, [](Call& c) { from(c).BayerPattern = 0xFFFFFFFF; }, bad},
        {"no pattern, 16 bits", raw16, [](Call& c) { from(c).BayerPattern = OrvBayerPatternNone; }, bad},
        {"no pattern, 12Packed", raw12, [](Call& c) { from(c).BayerPattern = OrvBayerPatternNone; }, bad},
        {"width 1", Call(OrvPixelFormatBayerRG8, 1, 4, OrvOutputMono8), nothing, bad},
        {"height 1", Call(OrvPixelFormatBayerRG8, 4, 1, OrvOutputMono8), nothing, bad},
        {"width 0", Call(OrvPixelFormatBayerRG16, 0, 4, OrvOutputMono16), nothing, bad},
        {"height 0", Call(OrvPixelFormatBayerRG12Packed, 4, 0, OrvOutputBgr24), nothing, bad},
        {"Alignment 2", raw16, [](Call& c) { from(c).Alignment = 2; }, bad},
        {"Endianness 2", raw16, [](Call& c) { from(c).Endianness = 2; }, bad},
        {"11 bits used", raw16, [](Call& c) { from(c).BitsUsed = 11; }, bad},
        {"17 bits used", raw16, [](Call& c) { from(c).BitsUsed = 17; }, bad},
    };
    for (Refusal row : refusals) {
        SCOPED_TRACE(row.what);
        row.change(row.call);
        Bytes destination = noise(2);
        EXPECT_EQ(row.call.run(destination, noise(1), identity), row.expected);
        EXPECT_EQ(destination, noise(2));
    }
}

// ---- Pixel counts of the RGB family: a signed 32-bit product

TEST(CorrectedTransform, CountsPixelsIn32Bits) {
    struct {
        std::uint32_t width, height, pixels;
    } const sizes[] = {{0, 4, 0},         {4, 0, 0},         {65536, 65536, 0},
                       {65536, 32768, 0}, {65536, 65535, 0}, {1431655769, 3, 11}};
    for (const auto& [w, h, pixels] : sizes) {
        SCOPED_TRACE(::testing::Message() << w << 'x' << h);
        Bytes destination = noise(2), expected = noise(2);
        std::memcpy(expected.data(), noise(1).data(), 3 * std::size_t{pixels});
        Call call(OrvPixelFormatRgb8, w, h, OrvOutputRgb24);
        EXPECT_EQ(call.run(destination, noise(1), identity), OrvErrorSuccess);
        EXPECT_EQ(destination, expected);
    }
}

// ---- Equalities

// Without correction, the codes 1 and 2 mean each other.
TEST(CorrectedTransform, CountsPatterns1And2TheOtherWayRound) {
    constexpr std::uint32_t ordinary[] = {0, 2, 1, 3};
    for (std::uint32_t pattern = 0; pattern < 4; ++pattern) {
        Call call(OrvPixelFormatBayerRG8, width, height, OrvOutputBgr24);
        Bytes corrected(3 * n), plain(3 * n);
        from(call).BayerPattern = pattern;
        EXPECT_EQ(call.run(corrected, noise(1), identity), OrvErrorSuccess);
        from(call).BayerPattern = ordinary[pattern];
        EXPECT_EQ(call.run(plain, noise(1), std::span<const OrvTransformInfo>{}), OrvErrorSuccess);
        EXPECT_EQ(corrected, plain) << "pattern " << pattern;
    }
}

TEST(CorrectedTransform, IdentityChangesNoColour) {
    for (const OrvPixelFormatType format :
         {OrvPixelFormatRgb8, OrvPixelFormatBgr8, OrvPixelFormatRgba8, OrvPixelFormatBgra8})
        for (const OrvOutputCode output : {OrvOutputBgr24, OrvOutputRgb24}) {
            Call call(format, width, height, output);
            Bytes corrected(3 * n), plain(3 * n);
            EXPECT_EQ(call.run(corrected, noise(1), identity), OrvErrorSuccess);
            EXPECT_EQ(call.run(plain, noise(1), std::span<const OrvTransformInfo>{}), OrvErrorSuccess);
            EXPECT_EQ(corrected, plain) << std::hex << format << " to output " << output;
        }
}

// The first matrix counts, and nothing else does.
TEST(CorrectedTransform, IgnoresOtherRecords) {
    constexpr correction::Matrix swap{0, 0, 1, 0, 1, 0, 1, 0, 0};
    OrvTransformInfo lcaa{}, bad{}, gamma{};
    OrvSetDebayerMode(OrvDebayerModeLCAA, &lcaa);
    OrvSetDebayerMode(77, &bad);
    OrvSetGammaCorrection(2.2F, &gamma);

    Call call(OrvPixelFormatBayerRG8, width, height, OrvOutputBgr24);
    Bytes expected(3 * n);
    ASSERT_EQ(call.run(expected, noise(1), swap), OrvErrorSuccess);
    const std::vector<OrvTransformInfo> lists[] = {
        {option(swap), option(identity)}, {lcaa, option(swap)}, {option(swap), lcaa}, {bad, gamma, option(swap), bad}};
    for (const auto& options : lists) {
        Bytes actual(3 * n), source = noise(1);
        EXPECT_EQ(call.run(actual, source, options), OrvErrorSuccess);
        EXPECT_EQ(actual, expected);
        EXPECT_EQ(source, noise(1)); // LCAA would overwrite it
    }
}

TEST(CorrectedTransform, ReadsNoRecordBeyondTheCount) {
    const support::GuardedBuffer memory(sizeof(OrvTransformInfo)); // behind it lies a protected page
    const OrvTransformInfo gamma{OrvTransformTypeGammaCorrection, {}};
    std::memcpy(memory.data(), &gamma, sizeof gamma);
    Call call(OrvPixelFormatBayerRG8, width, height, OrvOutputBgr24);
    Bytes destination(3 * n);
    EXPECT_EQ(call.run(destination, noise(1), {reinterpret_cast<const OrvTransformInfo*>(memory.data()), 1}),
              OrvErrorSuccess);
}

} // namespace
