// What the C++ face refuses and in which words, and that its queries say what the library does.
#include <gtest/gtest.h>

#include <array>

#include "orvella/orvella.hpp"

namespace {

using namespace orvella;
using enum PixelFormat;

constexpr std::int64_t huge = std::int64_t{1} << 62;
constexpr std::ptrdiff_t least = std::numeric_limits<std::ptrdiff_t>::min();
constexpr Matrix identity = {1, 0, 0, 0, 1, 0, 0, 0, 1};

static_assert(bitsPerPixel(BayerRG12p) == 12 && bitsPerPixel(Output::Rgb48) == 48);
static_assert(imageBytes(Mono10p, {5, 3}) == 19 && imageBytes(Rgb8, {huge, huge}) == ~0ull &&
              imageBytes(Mono8, {-1, 4}) == 0);
static_assert(find("pixelformatBAYERrg8") == BayerRG8 && !find("BayerRG9") && infoOf(PixelFormat{1}).bits() == 0);
static_assert(phase(BayerRG10p, 3, 1) == BayerBG10p && phase(BayerGB16, -1, 0) == BayerBG16 &&
              phase(Mono8, 1, 1) == Mono8);
static_assert(takesTopBits(BayerRG12p, Output::Rgb24, {.debayer = Debayer::LCAA}) &&
              !takesTopBits(BayerRG12p, Output::Rgb24) && offers(BayerRG12p, Output::Rgb48) &&
              !takesTopBits(BayerRG12p, Output::Rgb48));
static_assert(!offers(Rgb16, Output::Rgb24) && offers(BayerRG16, Output::Rgb48) && !offers(Mono8, Output{40}));

std::array<std::uint8_t, 4096> memory, target;

struct Refusal {
    Frame frame;
    Output output;
    Options options;
    OrvErrorType code;
    const char* rule; // a part of the text
};

TEST(CppRules, AreNamed) {
    const auto small = std::span(memory).first(99);
    constexpr Output rgb = Output::Rgb24;
    const Refusal refusals[] = {
        {{small, Mono8, {10, 10}}, rgb, {}, -7, "Mono8 of 10x10 needs 100 bytes, but 99 are given"},
        {{memory, Mono8, {0, 10}}, rgb, {}, -7, "sizes are 1 to 4294967295"},
        {{memory, Mono8, {-3, 10}}, rgb, {}, -7, "-3x10"},
        {{memory, Mono8, {huge, huge}}, rgb, {}, -7, "sizes are"},
        {{memory, Mono8, {0xFFFFFFFF, 0xFFFFFFFF}}, rgb, {}, -7, "needs 18446744065119617025 bytes"},
        {{memory, Rgb16, {0xFFFFFFFF, 0xFFFFFFFF}}, rgb, {}, -7, "needs 18446744073709551615 bytes"},
        {{memory, Mono8, {10, 10}, 0}, rgb, {}, -7, "a stride of 0 bytes is less than a line of Mono8: 10"},
        {{memory, Mono8, {10, 10}, -9}, rgb, {}, -7, "a stride of -9 bytes"},
        {{memory, Mono8, {10, 3}, huge}, rgb, {}, -7, "with this stride needs 9223372036854775818 bytes"},
        {{memory, Mono8, {10, 3}, least}, rgb, {}, -7, "with this stride needs"},
        {{memory, PixelFormat{0x01080002}, {2, 2}}, rgb, {}, -7, "0x01080002 is not the code of a pixel format"},
        {{nullptr, 0, Mono8, {2, 2}}, rgb, {}, -7, "but 0 are given"},
        {{memory, BayerRG10p, {6, 4}}, rgb, {}, -7, "whole bytes, so the width must be a multiple of 4, and 6 is not"},
        {{memory, Mono12p, {5, 4}, 8}, rgb, {}, -7, "whole bytes, so the width must be a multiple of 2, and 5 is not"},
        {{memory, Mono12p, {5, 3}}, rgb, {}, -7, "the number of pixels must be even"},
        {{memory, BayerRG8, {5, 4}}, rgb, {}, -7, "BayerRG8 of 5x4 to Rgb24: a mosaic needs an even width and height"},
        {{memory, BayerRG8, {2, 4}}, rgb, {.debayer = Debayer::Mode3x3}, -7, "3x3 needs four lines and columns"},
        {{memory, Yuv411, {6, 4}}, rgb, {}, -7, "the width must be a multiple of 4"},
        {{memory, Mono8, {5, 4}}, Output::Yuv422, {}, -7, "the width must be even"},
        {{memory, Mono8, {4, 4}},
         Output::Bgr48,
         {},
         -17,
         "it becomes Mono8, Bgr24, Bgra32, Rgb24, Rgba32, Mono8Rec709, Yuv422"},
        {{memory, BayerRG12p, {4, 4}},
         Output::Rgb48,
         {.debayer = Debayer::LCAA},
         -17,
         "BayerRG12p by LCAA does not become Rgb48: it becomes Mono8"},
        {{memory, BayerRG8, {4, 4}}, rgb, {.debayer = Debayer::LCAA, .matrix = identity}, -17, "method 2x2 only"},
        {{memory, Mono8, {4, 4}},
         rgb,
         {.matrix = identity},
         -17,
         "Mono8 and a matrix does not become Rgb24: it becomes nothing"},
        {{memory, Mono8, {4, 4}}, rgb, {.bitsUsed = 8u}, -7, "Mono8 has none"},
        {{memory, Mono12, {4, 4}}, rgb, {.bitsUsed = 11u}, -7, "11 bits used"},
        {{memory, Mono12, {4, 4}}, rgb, {.bitsUsed = 17u, .alignment = Alignment::High}, -7, "17 bits used"},
        {{memory, BayerRG8, {4, 4}}, rgb, {.debayer = Debayer{5}}, -7, "unknown"},
        {{memory, Mono8, {4, 4}}, Output{11}, {}, -7, "11 is not an output"},
    };
    const auto before = target = memory;
    for (const Refusal& refusal : refusals) {
        Picture picture(target, refusal.output, refusal.frame.size());
        const Result result = tryConvert(refusal.frame, picture, refusal.options);
        EXPECT_EQ(result.code(), refusal.code) << refusal.rule;
        EXPECT_NE(result.text().find(refusal.rule), std::string_view::npos) << result.text();
        EXPECT_EQ(target, before);
    }
}

TEST(CppRules, OfPicturesRegionsAndNamesThrow) {
    const Frame frame(memory, BayerRG12p, {16, 8});
    const auto textOf = [](auto call) -> std::string {
        try {
            call();
        } catch (const Error& error) {
            return error.what();
        }
        return "nothing is thrown";
    };
    const std::pair<std::string, const char*> cases[] = {
        {textOf([&] {
             convert(frame, Picture(target, Output::Rgb24, {16, 6}));
         }),
         "the picture is of another size"},
        {textOf([&] {
             convert(frame, Picture(target, Output::Rgb24, {16, 8}, 47));
         }),
         "a stride of 47 bytes is less"},
        {textOf([&] {
             convert(frame, Picture(target, Output::Rgb24, {16, 8}, 4096));
         }),
         "Rgb24 of 16x8 with this stride"},
        {textOf([&] {
             convert(frame, Picture(memory, Output::Rgb24, {16, 8}));
         }),
         "overlaps"},
        {textOf([&] { crop(frame, 1, 0, 4, 4); }), "x and both widths must be multiples"},
        {textOf([&] { crop(frame, -2, 0, 4, 4); }), "a region of 4x4 at (-2, 0) is not inside 16x8"},
        {textOf([&] { crop(frame, 2, huge, 4, huge); }), "is not inside"},
        {textOf([&] {
             Frame(memory, "Bayer", {1, 1});
         }),
         "'Bayer' is not the name of a pixel format"},
        {textOf([&] {
             Picture(Output::Mono8, {-1, 1});
         }),
         "sizes are 1 to"},
        {textOf([&] {
             Picture(Output::Rgb48, {0xFFFFFFFF, 0xFFFFFFFF});
         }),
         "Resources not available"},
        {textOf([&] { convert(frame, Output::Rgb24).line(8); }), "no line 8"},
        {textOf([&] {
             Picture picture(Output::Rgb24, {16, 8});
             convert(frame, picture, {}, [](std::size_t, const Job&) {});
         }),
         "run() has run 0 of 1 jobs"},
    };
    for (const auto& [text, rule] : cases) EXPECT_NE(text.find(rule), std::string::npos) << text;
}

// The constant tables against the library's own.
TEST(CppRules, QueriesAgreeWithTheLibrary) {
    for (const FormatInfo& info : formats) {
        const auto code = static_cast<std::uint32_t>(info.format);
        OrvImage image{}, picture{};
        image.Size = picture.Size = sizeof(OrvImage);
        image.Data = memory.data();
        picture.Data = target.data();
        const std::string name = "PixelFormat" + std::string(info.name);
        ASSERT_EQ(OrvSetImageInfoFromString(name.c_str(), 0, 8, 4, &image), 0) << name;
        const OrvPixelInfo& pixel = image.ImageInfo.PixelInfo;
        std::uint32_t bits = 0;
        ASSERT_EQ(OrvBitsPerPixel(&bits, code), 0);
        EXPECT_EQ(std::tuple(info.bits(), info.bitsUsed, info.layout, info.bayer),
                  std::tuple(bits, pixel.BitsUsed, pixel.PixelLayout, pixel.BayerPattern))
            << name;
        for (unsigned output = 0; output < OrvOutputRgb48; ++output) // Rgb48 is made from Bgr48
            for (const Options& options : {Options{}, Options{.matrix = identity}}) {
                OrvTransformInfo option{};
                OrvSetColorCorrectionMatrix3x3(identity.data(), &option);
                OrvSetImageInfoOutput(output, 8, 4, &picture);
                EXPECT_EQ(OrvImageTransform(&image, &picture, &option, options.matrix ? 1 : 0) == 0,
                          detail::contains(detail::directOutputs(info, options), Output{output}))
                    << name << " to " << nameOf(Output{output});
            }
    }
}

TEST(CppRules, FilteredMethodsOverwriteOnlyWhatTheyMay) {
    constexpr Options options{.debayer = Debayer::LCAA};
    for (std::size_t i = 0; i < memory.size(); ++i) memory[i] = static_cast<std::uint8_t>(i * 7);
    const auto before = memory;
    const Picture kept = convert({memory, BayerRG8, {32, 32}}, Output::Rgb24, options);
    EXPECT_EQ(memory, before);
    const Picture overwritten = convert(Frame::overwritable(memory, BayerRG8, {32, 32}), Output::Rgb24, options);
    EXPECT_NE(memory, before);
    EXPECT_TRUE(std::ranges::equal(kept.bytes(), overwritten.bytes()));
}

// The byte behind the last pixel of little-endian Mono16 counts as zero, whatever is there.
TEST(CppRules, BytesBehindAFrameAreIgnored) {
    for (const auto behind : {std::uint8_t{0}, std::uint8_t{255}}) {
        const std::array<std::uint8_t, 5> grey = {0xFF, 0x40, 0x00, 0x80, behind};
        const Picture picture = convert({grey, Mono16, {2, 1}}, Output::Bgr24);
        const std::uint8_t expected[] = {0x40, 0x40, 0x40, 0x80, 0x80, 0x80};
        EXPECT_TRUE(std::ranges::equal(std::as_bytes(std::span(expected)), picture.bytes())) << unsigned{behind};
    }
}

} // namespace
