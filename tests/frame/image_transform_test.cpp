// The general transforms: which family a call reaches, and what is refused in which order.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "orvella/orv.h"
#include "support/fill.h"

namespace {

constexpr std::uint32_t width = 8, height = 4, n = width * height;
constexpr std::uint32_t gbrg = OrvBayerPatternGBRG;

OrvTransformInfo debayer(OrvDebayerMode mode) {
    OrvTransformInfo info;
    OrvSetDebayerMode(mode, &info);
    return info;
}
OrvTransformInfo gamma() {
    OrvTransformInfo info;
    OrvSetGammaCorrection(2.2F, &info);
    return info;
}
OrvTransformInfo correction() {
    constexpr float identity[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    OrvTransformInfo info;
    OrvSetColorCorrectionMatrix3x3(identity, &info);
    return info;
}

support::Bytes noise(unsigned seed) {
    support::Random random(seed);
    return support::filled(8 * n, support::Contents::noise, random);
}

// A source and a destination, large enough for any format and output.
struct Buffers {
    support::Bytes source = noise(1), destination = noise(2);

    friend bool operator==(const Buffers&, const Buffers&) = default;
};

// What a family function makes of the buffers.
using Family = std::function<OrvErrorType(void* destination, void* source)>;

void expectSameAs(const Family& family, const std::function<OrvErrorType(Buffers&)>& call) {
    Buffers expected, actual;
    ASSERT_EQ(family(expected.destination.data(), expected.source.data()), OrvErrorSuccess);
    ASSERT_NE(expected.destination, actual.destination);
    EXPECT_EQ(call(actual), OrvErrorSuccess);
    EXPECT_EQ(actual, expected);
}

// A call of OrvImageTransform, to BGR24 unless `output` says otherwise.
struct Call {
    OrvImage source{}, destination{};
    std::vector<OrvTransformInfo> options;

    explicit Call(OrvPixelInfo from, OrvOutputCode output = OrvOutputBgr24) {
        source.Size = sizeof source;
        source.ImageInfo = {width, height, -1, from};
        destination.Size = sizeof destination;
        OrvSetImageInfoOutput(output, width, height, &destination);
        destination.ImageInfo.Stride = 12345;
    }
    void resize(std::uint32_t w, std::uint32_t h) {
        source.ImageInfo.Width = destination.ImageInfo.Width = w;
        source.ImageInfo.Height = destination.ImageInfo.Height = h;
    }
    OrvErrorType run(Buffers& buffers) {
        source.Data = buffers.source.data();
        destination.Data = buffers.destination.data();
        return OrvImageTransform(&source, &destination, options.data(), static_cast<std::uint32_t>(options.size()));
    }
};

// Sources, as (bits, used, alignment, endianness, layout, pattern, colour space).
constexpr OrvPixelInfo mono(std::uint32_t bits, std::uint32_t used, std::uint32_t endianness = 0) {
    return {bits, used, 1, endianness, OrvPixelLayoutMono, OrvBayerPatternNone, 0};
}
constexpr OrvPixelInfo ofLayout(OrvPixelLayout layout, std::uint32_t bits, std::uint32_t used = 0,
                                std::uint32_t endianness = 0) {
    return {bits, used, 1, endianness, layout, gbrg, 0};
}
constexpr OrvPixelInfo mono8 = mono(8, 8);
constexpr OrvPixelInfo raw8 = ofLayout(OrvPixelLayoutRaw, 8, 8);
constexpr OrvPixelInfo raw10p = ofLayout(OrvPixelLayoutRawP, 10, 10);

// ---- The families, to BGR24

template <class Function> Family run(Function function, OrvOutputCode output = OrvOutputBgr24) {
    return [=](void* d, void* s) { return function(d, s, n, output); };
}
template <class Function> Family mosaic(Function function) {
    return [=](void* d, void* s) { return function(d, s, width, height, OrvOutputBgr24, gbrg); };
}
Family y16Ex(std::uint32_t alignment, std::uint32_t used, std::uint32_t endianness) {
    return [=](void* d, void* s) {
        const OrvShiftRecord shift{0, alignment, used, endianness, 0};
        return OrvY16ImageTransformEx(d, s, n, OrvOutputBgr24, &shift);
    };
}
Family raw16Ex(std::uint32_t alignment, std::uint32_t used, std::uint32_t endianness) {
    return [=](void* d, void* s) {
        const OrvShiftRecord shift{0, alignment, used, endianness, gbrg};
        return OrvRaw16ImageTransformEx(d, s, width, height, OrvOutputBgr24, &shift);
    };
}

// ---- Routes

struct Route {
    const char* name;
    OrvPixelInfo source;
    std::vector<OrvTransformInfo> options;
    Family family;
};

std::vector<Route> routes() {
    constexpr auto raw = OrvPixelLayoutRaw, rawP = OrvPixelLayoutRawP, rawPacked = OrvPixelLayoutRawPacked;
    constexpr auto rgb = OrvPixelLayoutRgb, bgr = OrvPixelLayoutBgr;
    constexpr auto rgba = OrvPixelLayoutRgba, bgra = OrvPixelLayoutBgra;
    return {
        {"Mono8", mono8, {}, run(OrvY8ImageTransform)},
        {"Mono12", mono(16, 12), {}, y16Ex(1, 12, 0)},
        {"Mono12 big-endian", mono(16, 12, 1), {}, y16Ex(1, 12, 1)},
        {"Mono12, MSB-aligned", {16, 12, 0, 0, OrvPixelLayoutMono, 255, 0}, {}, y16Ex(0, 12, 0)},
        {"Mono16 big-endian", mono(16, 16, 1), {}, run(OrvY16ImageTransform)},
        {"Mono16 of any other endianness", mono(16, 16, 2), {}, run(OrvY16ImageTransform)},
        {"Mono12Packed", ofLayout(OrvPixelLayoutMonoPacked, 12), {}, run(OrvY12ImageTransform)},
        {"Mono10p", ofLayout(OrvPixelLayoutMonoP, 10), {}, run(OrvY10pImageTransform)},
        {"Mono12p", ofLayout(OrvPixelLayoutMonoP, 12), {}, run(OrvY12pImageTransform)},
        {"RGB8", ofLayout(rgb, 24), {}, run(OrvRGB8ImageTransform)},
        {"BGR8", ofLayout(bgr, 24), {}, run(OrvBGR8ImageTransform)},
        {"BGR of 32 bits is RGBA8", ofLayout(bgr, 32), {}, run(OrvRGBA8ImageTransform)},
        {"RGBA8", ofLayout(rgba, 32), {}, run(OrvRGBA8ImageTransform)},
        {"BGRA8", ofLayout(bgra, 32), {}, run(OrvBGRA8ImageTransform)},
        {"YUV 4:1:1", ofLayout(OrvPixelLayoutYuv411, 12), {}, run(OrvYUV411ImageTransform)},
        {"YUV 4:2:2", ofLayout(OrvPixelLayoutYuv422, 16), {}, run(OrvYUV422ImageTransform)},
        {"YUV 4:4:4", ofLayout(OrvPixelLayoutYuv444, 24), {}, run(OrvYUV444ImageTransform)},
        {"YUV of any depth", ofLayout(OrvPixelLayoutYuv422, 0), {}, run(OrvYUV422ImageTransform)},

        {"Bayer8", raw8, {}, mosaic(OrvRaw8ImageTransform)},
        {"Bayer8 by 2x2", raw8, {debayer(0)}, mosaic(OrvRaw8ImageTransform)},
        {"Bayer8 by 3x3", raw8, {debayer(1)}, mosaic(OrvRaw8ImageTransform_3x3)},
        {"Bayer8 by LCAA", raw8, {debayer(2)}, mosaic(OrvRaw8ImageTransform_IntLCAA)},
        {"Bayer8 by LCAAV", raw8, {debayer(3)}, mosaic(OrvRaw8ImageTransform_IntLCAAV)},
        {"Bayer8 by YUV422", raw8, {debayer(4)}, mosaic(OrvRaw8ImageTransform_IntYUV422)},
        {"Bayer10p", raw10p, {}, mosaic(OrvRaw10pImageTransform)},
        {"Bayer10p by 2x2", raw10p, {debayer(0)}, mosaic(OrvRaw10pImageTransform)},
        {"Bayer12p", ofLayout(rawP, 12), {}, mosaic(OrvRaw12pImageTransform)},
        {"Bayer 12Packed", ofLayout(rawPacked, 12), {}, mosaic(OrvRaw12ImageTransform)},
        {"Bayer12", ofLayout(raw, 16, 12), {}, raw16Ex(1, 12, 0)},
        {"Bayer12 big-endian", ofLayout(raw, 16, 12, 1), {}, raw16Ex(1, 12, 1)},
        {"Bayer16", ofLayout(raw, 16, 16), {}, raw16Ex(1, 16, 0)},
        {"Bayer16 big-endian", ofLayout(raw, 16, 16, 1), {}, mosaic(OrvRaw16ImageTransform)},

        // Depths that a layout does not know are looked up further on.
        {"BGR of 12 bits", ofLayout(bgr, 12), {}, mosaic(OrvRaw12ImageTransform)},
        {"RGBA of 12 bits", ofLayout(rgba, 12), {}, mosaic(OrvRaw12ImageTransform)},
        {"BGRA of 12 bits", ofLayout(bgra, 12), {}, mosaic(OrvRaw12ImageTransform)},
        {"BGR of 10 bits", ofLayout(bgr, 10), {}, mosaic(OrvRaw10pImageTransform)},
        {"RGBA of 8 bits by 3x3", ofLayout(rgba, 8), {debayer(1)}, mosaic(OrvRaw8ImageTransform_3x3)},
        {"BGRA of 16 bits", ofLayout(bgra, 16, 10), {}, raw16Ex(1, 10, 0)},
        {"packed mosaic of 10 bits", ofLayout(rawPacked, 10), {}, mosaic(OrvRaw10pImageTransform)},
        {"packed mosaic of 8 bits", ofLayout(rawPacked, 8), {}, mosaic(OrvRaw8ImageTransform)},
        {"bit-packed mosaic of 8 bits", ofLayout(rawP, 8), {}, mosaic(OrvRaw8ImageTransform)},
        {"bit-packed mosaic of 16 bits", ofLayout(rawP, 16, 16, 1), {}, mosaic(OrvRaw16ImageTransform)},

        // The first option of a type counts, and only where it is looked at.
        {"first of two modes", raw8, {debayer(1), debayer(9)}, mosaic(OrvRaw8ImageTransform_3x3)},
        {"mode behind a gamma", raw8, {gamma(), debayer(1)}, mosaic(OrvRaw8ImageTransform_3x3)},
        {"gamma alone", mono8, {gamma()}, run(OrvY8ImageTransform)},
        {"bad mode for mono", mono8, {debayer(9)}, run(OrvY8ImageTransform)},
        {"bad mode for 12Packed", ofLayout(rawPacked, 12), {debayer(9)}, mosaic(OrvRaw12ImageTransform)},
        {"bad mode for Bayer16", ofLayout(raw, 16, 16, 1), {debayer(9)}, mosaic(OrvRaw16ImageTransform)},
    };
}

TEST(ImageTransform, ReachesTheFamilyOfTheSource) {
    for (const Route& route : routes()) {
        SCOPED_TRACE(route.name);
        Call call(route.source);
        call.options = route.options;
        expectSameAs(route.family, [&](Buffers& buffers) { return call.run(buffers); });
    }
}

TEST(ImageTransform, TakesNoOptionsFromNullOrACountOfZero) {
    Call call(raw8);
    const OrvTransformInfo bad = debayer(9);
    for (const auto& [info, count] : {std::pair<const OrvTransformInfo*, std::uint32_t>{nullptr, 3}, {&bad, 0}})
        expectSameAs(mosaic(OrvRaw8ImageTransform), [&, i = info, c = count](Buffers& buffers) {
            call.source.Data = buffers.source.data();
            call.destination.Data = buffers.destination.data();
            return OrvImageTransform(&call.source, &call.destination, i, c);
        });
}

// ---- Refusals

void expectRefused(OrvErrorType expected, const std::function<OrvErrorType(Buffers&)>& call) {
    Buffers buffers;
    EXPECT_EQ(call(buffers), expected);
    EXPECT_EQ(buffers, Buffers());
}

struct Refusal {
    const char* name;
    Call call;
    std::function<void(Call&)> change;
    OrvErrorType expected;
};

// Where a row has two faults, the one that is checked first counts.
std::vector<Refusal> refusals() {
    constexpr OrvErrorType bad = OrvErrorBadParameter, size = OrvErrorStructSize, notOffered = OrvErrorNotImplemented;
    const auto nothing = [](Call&) {};
    const auto resized = [](std::uint32_t w, std::uint32_t h) { return [=](Call& c) { c.resize(w, h); }; };
    const auto with = [](std::vector<OrvTransformInfo> options) { return [=](Call& c) { c.options = options; }; };
    const auto oddly = [](std::vector<OrvTransformInfo> options) { // with a height that no mosaic has
        return [=](Call& c) {
            c.options = options;
            c.resize(8, 3);
        };
    };
    constexpr auto raw = OrvPixelLayoutRaw, rawP = OrvPixelLayoutRawP, bgr = OrvPixelLayoutBgr;
    const Call toMono16(mono(16, 16), OrvOutputMono16);
    return {
        {"height and Size", Call(mono8), [](Call& c) { c.source.ImageInfo.Height = 3, c.source.Size = 48; }, bad},
        {"width and Size", Call(mono8), [](Call& c) { c.destination.ImageInfo.Width = 7, c.source.Size = 0; }, bad},
        {"source Size", Call(mono8), [](Call& c) { c.source.Size = 48; }, size},
        {"destination Size", Call(mono8), [](Call& c) { c.destination.Size = 57; }, size},
        {"Size and correction", Call(mono8),
         [](Call& c) { c.options = {correction()}, c.destination.Size = c.source.Size = 0; }, size},
        {"Size and destination", toMono16,
         [](Call& c) { c.destination.ImageInfo.PixelInfo.Endianness = 1, c.source.Size = 55; }, size},

        {"big-endian Mono16", toMono16, [](Call& c) { c.destination.ImageInfo.PixelInfo.Endianness = 1; }, notOffered},
        {"shallow Mono16", toMono16, [](Call& c) { c.destination.ImageInfo.PixelInfo.BitsUsed = 12; }, notOffered},
        {"destination and source layout", toMono16,
         [](Call& c) {
             c.destination.ImageInfo.PixelInfo.BitsUsed = 12;
             c.source.ImageInfo.PixelInfo.PixelLayout = 12;
         },
         notOffered},
        {"destination of a source-only layout", Call(mono8),
         [](Call& c) { c.destination.ImageInfo.PixelInfo.PixelLayout = OrvPixelLayoutYuv444; }, bad},
        {"UYVY of odd width", Call(mono8, OrvOutputYuv422), resized(7, 4), bad},
        {"UYVY of odd width, not offered", Call(mono(16, 16), OrvOutputYuv422), resized(7, 4), bad},

        {"layout 12", Call(ofLayout(12, 8)), nothing, bad},
        {"layout 14", Call(ofLayout(14, 8)), nothing, bad},
        {"layout -1", Call(ofLayout(0xFFFFFFFF, 8)), nothing, bad},
        {"Mono of 12 bits", Call(mono(12, 12)), nothing, bad},
        {"MonoPacked of 10 bits", Call(ofLayout(OrvPixelLayoutMonoPacked, 10)), nothing, bad},
        {"MonoP of 16 bits", Call(ofLayout(OrvPixelLayoutMonoP, 16)), nothing, bad},
        {"RGB of 12 bits", Call(ofLayout(OrvPixelLayoutRgb, 12)), nothing, bad}, // does not fall through
        {"RGB of 32 bits", Call(ofLayout(OrvPixelLayoutRgb, 32)), nothing, bad},
        {"BGR of 48 bits", Call(ofLayout(bgr, 48)), nothing, bad},
        {"RGBA of 24 bits", Call(ofLayout(OrvPixelLayoutRgba, 24)), nothing, bad},
        {"Raw of 12 bits", Call(ofLayout(raw, 12)), nothing, bad},
        {"4:1:1, width 6", Call(ofLayout(OrvPixelLayoutYuv411, 12)), resized(6, 4), bad},
        {"4:2:2, width 7", Call(ofLayout(OrvPixelLayoutYuv422, 16)), resized(7, 4), bad},

        {"Bayer8, mode 5", Call(raw8), with({debayer(5)}), bad},
        {"Bayer8, second mode good", Call(raw8), with({debayer(5), debayer(0)}), bad},
        {"Bayer10p by 3x3", Call(raw10p), with({debayer(1)}), notOffered},
        {"Bayer10p by YUV422", Call(raw10p), with({debayer(4)}), notOffered},
        {"Bayer10p, mode 5", Call(raw10p), with({debayer(5)}), bad},
        {"Bayer12p by 3x3", Call(ofLayout(rawP, 12)), with({debayer(1)}), notOffered},
        {"Bayer12p, mode 7", Call(ofLayout(rawP, 12)), with({debayer(7)}), bad},
        {"BGR of 10 bits by 3x3", Call(ofLayout(bgr, 10)), with({debayer(1)}), notOffered},
        {"mode and size", Call(raw10p), oddly({debayer(1)}), notOffered},
        {"mode and output", Call(raw10p, OrvOutputBgr48), with({debayer(7)}), bad},

        {"family: output", Call(mono8, OrvOutputBgr48), nothing, notOffered},
        {"family: size", Call(raw8), resized(8, 3), bad},
        {"family: shift", Call(mono(16, 11)), nothing, OrvErrorInternalFault},
        {"family: selector", Call(ofLayout(raw, 16, 16, 2)), nothing, OrvErrorInternalFault}, // no big-endian one
        {"family: pattern", Call({8, 8, 1, 0, raw, 4, 0}), nothing, bad},
    };
}

TEST(ImageTransform, RefusesInOrderAndWritesNothing) {
    for (Refusal row : refusals()) {
        SCOPED_TRACE(row.name);
        row.change(row.call);
        expectRefused(row.expected, [&](Buffers& buffers) { return row.call.run(buffers); });
    }
}

TEST(ImageTransform, KnowsTheDepthsOfEachLayout) {
    using Depths = std::vector<std::uint32_t>;
    const Depths mosaics{8, 10, 12, 16}, unpacked{8, 16};
    const Depths taken[] = {unpacked,                // Mono
                            {12},                    // MonoPacked
                            unpacked,                // Raw
                            mosaics,                 // RawPacked
                            {24},                    // Rgb
                            {8, 10, 12, 16, 24, 32}, // Bgr
                            {8, 10, 12, 16, 32},     // Rgba
                            {8, 10, 12, 16, 32}};    // Bgra
    const auto expected = [&](OrvPixelLayout layout) -> Depths {
        return layout < std::size(taken)       ? taken[layout]
               : layout == OrvPixelLayoutMonoP ? Depths{10, 12}
               : layout == OrvPixelLayoutRawP  ? mosaics
                                               : Depths{}; // what 4:1:1, 4:2:2 and 4:4:4 do not look at
    };
    Buffers buffers;
    for (const OrvPixelLayout layout : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 11U, 12U, 13U, 14U}) {
        Depths found;
        for (std::uint32_t bits = 0; bits <= 64; ++bits)
            if (Call(ofLayout(layout, bits, 12)).run(buffers) != OrvErrorBadParameter) found.push_back(bits);
        EXPECT_EQ(found, expected(layout)) << "layout " << layout;
    }
}

TEST(ImageTransform, RefusesNullBeforeAllElse) {
    Buffers buffers;
    Call call(mono8);
    call.source.Size = call.destination.Size = 0;
    call.source.ImageInfo.Width = 5;
    call.source.Data = buffers.source.data();
    call.destination.Data = buffers.destination.data();
    EXPECT_EQ(OrvImageTransform(nullptr, &call.destination, nullptr, 0), OrvErrorBadParameter);
    EXPECT_EQ(OrvImageTransform(&call.source, nullptr, nullptr, 0), OrvErrorBadParameter);

    Call good(mono8);
    good.source.Data = buffers.source.data();
    EXPECT_EQ(OrvImageTransform(&good.source, &good.destination, nullptr, 0), OrvErrorBadParameter);
    std::swap(good.source.Data, good.destination.Data);
    EXPECT_EQ(OrvImageTransform(&good.source, &good.destination, nullptr, 0), OrvErrorBadParameter);
}

TEST(ImageTransform, DoesNotTake2To32PixelsForNone) {
    Buffers buffers;
    for (const OrvPixelInfo& source : {mono8, ofLayout(OrvPixelLayoutYuv422, 16), ofLayout(OrvPixelLayoutYuv411, 12)}) {
        Call call(source, OrvOutputMono16); // which none of them offers; the count is looked at before
        call.resize(65536, 65536);
        EXPECT_EQ(call.run(buffers), OrvErrorNotImplemented);
    }
}

// Mono has no corrected path, so that a correction record anywhere turns a good call into a refused one.
TEST(ImageTransform, TakesAnotherPathForACorrection) {
    for (const auto& options : {std::vector{correction()}, {debayer(0), gamma(), correction()}}) {
        Call call(mono8);
        call.options = options;
        Buffers buffers;
        EXPECT_NE(call.run(buffers), OrvErrorSuccess);
        EXPECT_EQ(buffers, Buffers());
    }
}

// ---- Option records

TEST(TransformOptions, AreWrittenUnchecked) {
    OrvTransformInfo info{};
    EXPECT_EQ(OrvSetDebayerMode(77, &info), OrvErrorSuccess);
    EXPECT_EQ(info.TransformType, 1u);
    EXPECT_EQ(info.Parameter.DebayerMode, 77u);

    const float matrix[] = {1, -2, 3, -4, 5, -6, 7, -8, 9};
    EXPECT_EQ(OrvSetColorCorrectionMatrix3x3(matrix, &info), OrvErrorSuccess);
    EXPECT_EQ(info.TransformType, 2u);
    EXPECT_TRUE(std::equal(matrix, matrix + 9, info.Parameter.Matrix));

    EXPECT_EQ(OrvSetGammaCorrection(-1.5F, &info), OrvErrorSuccess);
    EXPECT_EQ(info.TransformType, 3u);
    EXPECT_EQ(info.Parameter.Gamma, -1.5F);

    EXPECT_EQ(OrvSetColorCorrectionMatrix3x3(nullptr, &info), OrvErrorBadParameter);
    EXPECT_EQ(info.TransformType, 3u);
    EXPECT_EQ(OrvSetColorCorrectionMatrix3x3(matrix, nullptr), OrvErrorBadParameter);
    EXPECT_EQ(OrvSetDebayerMode(0, nullptr), OrvErrorBadParameter);
    EXPECT_EQ(OrvSetGammaCorrection(1, nullptr), OrvErrorBadParameter);
}

// ---- The older transform

TEST(TransformOld, ReachesTheFamilyOfTheFormat) {
    struct Row {
        const char* name;
        OrvPixelFormatType format;
        Family family;
    };
    for (const Row& row :
         std::vector<Row>{{"Mono8", OrvPixelFormatMono8, run(OrvY8ImageTransform)},
                          {"Mono10", OrvPixelFormatMono10, y16Ex(1, 10, 0)},
                          {"Mono14", OrvPixelFormatMono14, y16Ex(1, 14, 0)},
                          {"Mono16, big-endian", OrvPixelFormatMono16, run(OrvY16ImageTransform)},
                          {"Mono12Packed", OrvPixelFormatMono12Packed, run(OrvY12ImageTransform)},
                          {"Mono12p, as 12Packed", OrvPixelFormatMono12p, run(OrvY12ImageTransform)},
                          {"Rgb8", OrvPixelFormatRgb8, run(OrvRGB8ImageTransform)},
                          {"Bgr8", OrvPixelFormatBgr8, run(OrvBGR8ImageTransform)},
                          {"Rgba8", OrvPixelFormatRgba8, run(OrvRGBA8ImageTransform)},
                          {"Bgra8", OrvPixelFormatBgra8, run(OrvBGRA8ImageTransform)},
                          {"Yuv411", OrvPixelFormatYuv411, run(OrvYUV411ImageTransform)},
                          {"Yuv422", OrvPixelFormatYuv422, run(OrvYUV422ImageTransform)},
                          {"Yuv444", OrvPixelFormatYuv444, run(OrvYUV444ImageTransform)},
                          {"BayerGB8", OrvPixelFormatBayerGB8, mosaic(OrvRaw8ImageTransform)},
                          {"BayerGB12", OrvPixelFormatBayerGB12, raw16Ex(1, 12, 0)},
                          {"BayerGB16, big-endian", OrvPixelFormatBayerGB16, mosaic(OrvRaw16ImageTransform)},
                          {"BayerGB12Packed", OrvPixelFormatBayerGB12Packed, mosaic(OrvRaw12ImageTransform)},
                          {"BayerGB12p, as 12Packed", OrvPixelFormatBayerGB12p, mosaic(OrvRaw12ImageTransform)}}) {
        SCOPED_TRACE(row.name);
        expectSameAs(row.family, [&](Buffers& buffers) {
            return OrvTransformOLD(buffers.destination.data(), OrvOutputBgr24, buffers.source.data(), width, height, -1,
                                   row.format);
        });
    }
}

TEST(TransformOld, RefusesOtherFormats) {
    for (const OrvPixelFormatType format :
         {0u, 0x01080002u, OrvPixelFormatType{OrvPixelFormatMono10p}, OrvPixelFormatType{OrvPixelFormatRgb12},
          OrvPixelFormatType{OrvPixelFormatRgb16}, OrvPixelFormatType{OrvPixelFormatYCbCr411_8_CbYYCrYY},
          OrvPixelFormatType{OrvPixelFormatYCbCr422_8_CbYCrY}, OrvPixelFormatType{OrvPixelFormatYCbCr8_CbYCr},
          OrvPixelFormatType{OrvPixelFormatBayerRG10p}}) {
        SCOPED_TRACE(format);
        expectRefused(OrvErrorBadParameter, [&](Buffers& buffers) {
            return OrvTransformOLD(buffers.destination.data(), OrvOutputBgr24, buffers.source.data(), width, height, 0,
                                   format);
        });
    }
    Buffers buffers;
    void *d = buffers.destination.data(), *s = buffers.source.data();
    EXPECT_EQ(OrvTransformOLD(nullptr, 1, s, width, height, 0, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvTransformOLD(d, 1, nullptr, width, height, 0, OrvPixelFormatMono8), OrvErrorBadParameter);
    EXPECT_EQ(OrvTransformOLD(d, 9, s, width, height, 0, OrvPixelFormatMono8), OrvErrorNotImplemented);
    EXPECT_EQ(OrvTransformOLD(d, 7, s, 65536, 65536, 0, OrvPixelFormatMono8), OrvErrorNotImplemented); // not empty
    EXPECT_EQ(buffers, Buffers());
}

} // namespace
