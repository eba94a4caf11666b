// What the path with a matrix refuses, and how it treats patterns, records and pixel counts.
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
    const Call rgba(OrvPixelFormatRgba8, width, height, OrvOutputBgr24);
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
        // Depths that a layout does not know are not looked up further on, as they are without a matrix.
        {"packed mosaic of 8 bits", raw8, [](Call& c) { from(c).PixelLayout = OrvPixelLayoutRawPacked; }, bad},
        {"BGR of 8 bits", raw8, [](Call& c) { from(c).PixelLayout = OrvPixelLayoutBgr; }, bad},
        {"BGR of 32 bits", rgba, [](Call& c) { from(c).PixelLayout = OrvPixelLayoutBgr; }, bad},
        {"RGBA of 12 bits", raw12, [](Call& c) { from(c).PixelLayout = OrvPixelLayoutRgba; }, bad},
        {"Raw of 12 bits", raw12, [](Call& c) { from(c).PixelLayout = OrvPixelLayoutRaw; }, bad},
        {"layout 14", raw8, [](Call& c) { from(c).PixelLayout = 14; }, bad},
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
