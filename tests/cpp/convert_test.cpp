// The C++ face against the C function on a dense copy that was made pixel by pixel: every format, output and option, with
// strides, regions, flips and bands, in memory between inaccessible pages.
#include <gtest/gtest.h>

#include <thread>

#include "cpp/image.h"
#include "support/guarded_buffer.h"

namespace {

using naive::Bytes;
using namespace orvella;

constexpr Matrix someMatrix = {1.5f, -0.3f, -0.2f, -0.25f, 1.4f, -0.15f, 0.05f, -0.5f, 1.6f};

class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}
    std::int64_t roll(std::int64_t first, std::int64_t last) {
        return first + static_cast<std::int64_t>(random_() >> 4) % (last - first + 1);
    }
    bool often() { return roll(0, 3) > 0; }
    bool seldom() { return roll(0, 3) == 0; }
    support::Random& generator() { return random_; }

private:
    support::Random random_;
};

// Memory with lines at a distance, placed against a guard page.
struct Layout {
    std::int64_t line, distance, count;
    bool isBottomUp;

    std::size_t bytes() const { return static_cast<std::size_t>((count - 1) * distance + line); }
    std::size_t at(std::size_t y) const {
        return static_cast<std::size_t>(distance) * (isBottomUp ? static_cast<std::size_t>(count) - 1 - y : y);
    }
    Stride stride() const { return isBottomUp ? -distance : distance; }
};

Layout anyLayout(std::int64_t line, std::int64_t count, Dice& dice) {
    return {line, dice.often() ? line + dice.roll(0, 9) : line, count, dice.seldom()};
}

// What the C function makes of a dense image.
Bytes expected(const naive::Image& image, Output output, const Options& options, Bytes picture) {
    if (!detail::contains(detail::directOutputs(*image.info, options), output)) {
        if (!takesTopBits(image.info->format, output, options))
            return expected(naive::inWords(image), output, options, picture);
        Options rest = options;
        rest.bitsUsed.reset();
        rest.alignment = Alignment::Low;
        rest.byteOrder = ByteOrder::Little;
        return expected(naive::topBits(image, options), output, rest, picture);
    }
    Bytes source = image.dense();
    const auto width = static_cast<std::uint32_t>(image.width), height = static_cast<std::uint32_t>(image.height);
    const auto code = static_cast<std::uint32_t>(output == Output::Rgb48 ? Output::Bgr48 : output);
    OrvImage from{}, to{};
    from.Size = to.Size = sizeof(OrvImage);
    from.Data = source.data();
    to.Data = picture.data();
    OrvSetImageInfoFromPixelFormat(static_cast<std::uint32_t>(image.info->format), width, height, &from);
    OrvSetImageInfoOutput(code, width, height, &to);
    OrvPixelInfo& pixel = from.ImageInfo.PixelInfo;
    if (options.bitsUsed) pixel.BitsUsed = *options.bitsUsed;
    pixel.Alignment = options.alignment == Alignment::Low;
    pixel.Endianness = options.byteOrder == ByteOrder::Big;
    if (!image.colours.empty()) {
        const std::vector<std::string> codes = options.matrix
                                                   ? std::vector<std::string>{"RGGB", "GRBG", "GBRG", "BGGR"}
                                                   : std::vector<std::string>{"RGGB", "GBRG", "GRBG", "BGGR"};
        pixel.BayerPattern = static_cast<std::uint32_t>(std::ranges::find(codes, image.colours) - codes.begin());
    }
    OrvTransformInfo option{};
    if (options.matrix)
        OrvSetColorCorrectionMatrix3x3(options.matrix->data(), &option);
    else
        OrvSetDebayerMode(static_cast<std::uint32_t>(options.debayer), &option);
    if (options.alpha && bitsPerPixel(output) == 32) std::ranges::fill(picture, *options.alpha);
    EXPECT_EQ(OrvImageTransform(&from, &to, &option, 1), OrvErrorSuccess);
    for (std::size_t i = 0; output == Output::Rgb48 && i < picture.size(); i += 6)
        std::swap_ranges(&picture[i], &picture[i] + 2, &picture[i] + 4);
    return picture;
}

// A frame with padding, cropped and flipped at random, beside the same done pixel by pixel.
class View {
public:
    View(const FormatInfo& info, Size size, Dice& dice) : image{&info} {
        const std::int64_t group = info.group();
        const bool isWhole = size.width % group == 0 && (info.isMosaic() || dice.often());
        const bool isCut = isWhole && dice.often();
        const std::int64_t left = isCut ? dice.roll(0, 5) * group : 0, right = isCut ? dice.roll(0, 5) * group : 0;
        const std::int64_t above = isCut ? dice.roll(0, 5) : 0, below = isCut ? dice.roll(0, 5) : 0;
        image.width = static_cast<std::size_t>(size.width + left + right);
        image.height = static_cast<std::size_t>(size.height + above + below);
        image.colours = naive::coloursOf(info);
        if (isWhole)
            placeLines(dice);
        else
            placeStream(dice);
        if (isCut) cut(left, above, size);
        for (int i = isWhole ? static_cast<int>(dice.roll(0, 2)) : 0; i > 0; --i)
            flipIt(Flip{static_cast<int>(dice.roll(1, 3))});
        const std::int64_t x = dice.roll(0, 3) * group, y = dice.roll(0, 3);
        const std::int64_t step = std::max<std::int64_t>(2, group);
        if (isWhole && size.width > 12 * step + x && size.height > 8 + y)
            cut(x, y, {(size.width - x) / step * step, (size.height - y) / 2 * 2});
    }

    naive::Image image;
    std::optional<Frame> frame;
    std::optional<support::GuardedBuffer> memory;

private:
    void placeLines(Dice& dice) {
        const Size size{image.width, image.height};
        const auto line = static_cast<std::int64_t>(imageBytes(image.info->format, {image.width, 1}));
        const Layout layout = anyLayout(line, static_cast<std::int64_t>(image.height), dice);
        fill(layout.bytes(), dice);
        for (std::size_t y = 0; y < image.height; ++y)
            for (std::size_t x = 0; x < image.width; ++x)
                image.pixels.push_back(naive::get(memory->data() + layout.at(y), *image.info, x));
        const bool isDense = layout.distance == line && !layout.isBottomUp && dice.often();
        frame.emplace(memory->bytes(), image.info->format, size, isDense ? Stride{} : layout.stride());
    }
    void placeStream(Dice& dice) {
        const Size size{image.width, image.height};
        fill(static_cast<std::size_t>(imageBytes(image.info->format, size)), dice);
        const bool isOneStream = naive::isStream(*image.info) || naive::isPacked12(*image.info);
        const std::size_t line = imageBytes(image.info->format, {image.width, 1});
        for (std::size_t i = 0; i < image.width * image.height; ++i)
            image.pixels.push_back(
                isOneStream ? naive::get(memory->data(), *image.info, i)
                            : naive::get(memory->data() + i / image.width * line, *image.info, i % image.width));
        frame.emplace(memory->bytes(), image.info->format, size);
    }
    void fill(std::size_t size, Dice& dice) {
        memory.emplace(size, dice.often() ? support::Place::atEnd : support::Place::atStart);
        std::ranges::copy(support::filled(size, support::Contents::noise, dice.generator()), memory->data());
    }
    void cut(std::int64_t x, std::int64_t y, Size size) {
        frame = crop(*frame, x, y, size.width, size.height);
        image =
            image.moved(static_cast<std::size_t>(size.width), static_cast<std::size_t>(size.height),
                        [&](std::size_t newX, std::size_t newY) {
                            return std::pair(newX + static_cast<std::size_t>(x), newY + static_cast<std::size_t>(y));
                        });
    }
    void flipIt(Flip flip) {
        frame = flipped(*frame, flip);
        const bool isHorizontal = flip != Flip::Vertical, isVertical = flip != Flip::Horizontal;
        const std::size_t w = image.width, h = image.height;
        image = image.moved(w, h, [&](std::size_t x, std::size_t y) {
            return std::pair(isHorizontal ? w - 1 - x : x, isVertical ? h - 1 - y : y);
        });
    }
};

Size anySize(const FormatInfo& info, const Options& options, Dice& dice) {
    const std::int64_t step = info.isMosaic() && !options.matrix ? 2 : 1;
    const std::int64_t least = info.isMosaic() ? (options.debayer == Debayer::Mode3x3 ? 4 : 2) : 1;
    const std::int64_t column = std::max<std::int64_t>(step, info.group());
    const auto upTo = [&](std::int64_t most, std::int64_t multiple) {
        return std::max((least + multiple - 1) / multiple, dice.roll(1, most / multiple)) * multiple;
    };
    if (dice.roll(0, 99) == 0) return {2000 + upTo(3000, 4), upTo(70, 2)}; // several strips
    if (info.group() > 1 && !info.isMosaic() && info.bits() != 16 && info.layout != OrvPixelLayoutYuv411 &&
        dice.seldom())
        return {dice.roll(1, 40), 2 * dice.roll(1, 20)}; // lines that end within a byte
    return {upTo(70, column), upTo(40, step)};
}

struct Setting {
    const FormatInfo* info;
    Output output;
    Options options;
};

// Everything that the queries offer.
std::vector<Setting> settings() {
    std::vector<Options> options(4);
    options[1].alpha.reset();
    options[2].matrix = someMatrix;
    options[3].matrix = someMatrix;
    options[3].alpha.reset();
    for (const Debayer debayer : {Debayer::Mode3x3, Debayer::LCAA, Debayer::LCAAV, Debayer::YUV422})
        for (const auto alpha : {std::optional<std::uint8_t>{}, std::optional<std::uint8_t>{7}})
            options.push_back({.debayer = debayer, .alpha = alpha});
    for (const Alignment alignment : {Alignment::Low, Alignment::High})
        for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
            for (const unsigned bits : {10u, 13u, 16u})
                options.push_back({.bitsUsed = bits, .alignment = alignment, .byteOrder = order});
    options.push_back(
        {.debayer = Debayer::Mode3x3, .bitsUsed = 12u, .alignment = Alignment::High, .byteOrder = ByteOrder::Big});
    options.push_back({.matrix = someMatrix, .bitsUsed = 14u, .byteOrder = ByteOrder::Big});
    std::vector<Setting> all;
    for (const FormatInfo& info : formats)
        for (const Options& option : options) {
            const bool tellsWords = option.bitsUsed.has_value();
            if ((tellsWords && !info.hasWords()) || (option.debayer != Debayer::Mode2x2 && !info.isMosaic())) continue;
            for (unsigned output = 0; output <= OrvOutputRgb48; ++output)
                if (offers(info.format, Output{output}, option)) all.push_back({&info, Output{output}, option});
        }
    return all;
}

std::string nameOf(const Setting& setting, const Frame& frame) {
    return std::string(setting.info->name) + " as " + std::string(orvella::nameOf(frame.format())) + " to " +
           std::string(orvella::nameOf(setting.output)) + " by " +
           std::string(orvella::nameOf(setting.options.debayer)) + (setting.options.matrix ? " and a matrix" : "") +
           ", " + std::to_string(frame.size().width) + "x" + std::to_string(frame.size().height) + ", stride " +
           std::to_string(frame.stride().value_or(0)) + (frame.isMirrored() ? ", mirrored" : "");
}

TEST(CppConvert, EqualsTheCFunctionOnADenseCopy) {
    Dice dice(support::seed());
    Converter converter; // one for all: scratch memory that held another frame does no harm
    for (const Setting& setting : settings()) {
        const View view(*setting.info, anySize(*setting.info, setting.options, dice), dice);
        const Size size = view.frame->size();
        if (setting.output == Output::Yuv422 && size.width % 2 != 0) continue;
        const auto line = static_cast<std::int64_t>(imageBytes(setting.output, {size.width, 1}));
        const Layout layout = anyLayout(line, size.height, dice);
        support::GuardedBuffer memory(layout.bytes());
        const Bytes before = support::filled(layout.bytes(), support::Contents::noise, dice.generator());
        std::ranges::copy(before, memory.data());
        Bytes lines, source(view.memory->bytes().begin(), view.memory->bytes().end());
        for (std::size_t y = 0; y < view.image.height; ++y)
            lines.insert(lines.end(), &before[layout.at(y)], &before[layout.at(y)] + line);
        const Bytes truth = expected(view.image, setting.output, setting.options, lines);

        Picture picture(memory.bytes(), setting.output, size, layout.stride());
        const Result result = converter.tryConvert(*view.frame, picture, setting.options);
        ASSERT_TRUE(result) << nameOf(setting, *view.frame) << ": " << result.text();
        Bytes whole = before; // and nothing but the lines has been written
        for (std::size_t y = 0; y < view.image.height; ++y)
            std::ranges::copy_n(&truth[y * static_cast<std::size_t>(line)], line, &whole[layout.at(y)]);
        ASSERT_TRUE(std::ranges::equal(whole, memory.bytes())) << nameOf(setting, *view.frame);
        ASSERT_TRUE(std::ranges::equal(source, view.memory->bytes())) << nameOf(setting, *view.frame);
    }
}

// Whatever is asked for, memory between inaccessible pages is all that is touched, and a refusal leaves the picture alone.
TEST(CppConvert, TouchesNothingOutside) {
    Dice dice(support::seed());
    const auto any = [&]() -> std::int64_t {
        constexpr std::int64_t odd[] = {0,
                                        -1,
                                        0x7FFFFFFF,
                                        0x80000000,
                                        0xFFFFFFFF,
                                        0x100000000,
                                        std::int64_t{1} << 62,
                                        std::numeric_limits<std::int64_t>::max(),
                                        std::numeric_limits<std::int64_t>::min()};
        return dice.seldom() ? odd[dice.roll(0, 8)] : dice.roll(-3, 70);
    };
    const auto stride = [&]() -> Stride {
        return dice.often() ? Stride(dice.seldom() ? any() : dice.roll(-300, 300)) : std::nullopt;
    };
    const std::vector<Setting> all = settings();
    support::GuardedMemory sourceMemory(20000), targetMemory(20000);
    int converted = 0;
    for (int i = 0; i < 20000; ++i) {
        const auto source = sourceMemory.place(static_cast<std::size_t>(dice.roll(0, 5000)), support::Place::atEnd);
        const auto target = targetMemory.place(static_cast<std::size_t>(dice.roll(0, 9000)), support::Place::atEnd);
        std::ranges::fill(target, std::uint8_t{0xA5});
        const Setting& setting = all[static_cast<std::size_t>(dice.roll(0, std::ssize(all) - 1))];
        const Size size = dice.seldom() ? Size{any(), any()} : Size{dice.roll(1, 9) * 4, dice.roll(1, 20) * 2};
        Frame frame(source, setting.info->format, size, stride());
        if (dice.seldom() && !tryCrop(frame, any(), any(), {any(), any()}, frame)) continue;
        if (dice.seldom() && !tryFlip(frame, Flip{static_cast<int>(dice.roll(1, 3))}, frame)) continue;
        Picture picture(target, setting.output, dice.often() ? frame.size() : size, stride());
        const bool isDone{tryConvert(frame, picture, setting.options)};
        converted += isDone;
        ASSERT_TRUE(targetMemory.canariesLive()) << nameOf(setting, frame);
        ASSERT_TRUE(isDone || std::ranges::all_of(target, [](auto byte) { return byte == 0xA5; }))
            << nameOf(setting, frame);
    }
    EXPECT_GT(converted, 1000);
}

TEST(CppThreads, BandsEqualTheWhole) {
    using enum PixelFormat;
    const auto threads = [](std::size_t n, const Job& job) {
        std::vector<std::jthread> pool;
        for (std::size_t i = 0; i < n; ++i) pool.emplace_back([&job, i] { job(i); });
        EXPECT_GT(n, 1u); // or nothing was tried
    };
    constexpr Options by3x3{.debayer = Debayer::Mode3x3}, kept3x3{.debayer = Debayer::Mode3x3, .alpha = {}};
    constexpr Options kept{.alpha = {}}, corrected{.matrix = someMatrix};
    const std::tuple<PixelFormat, Output, Options> cases[] = {
        {Mono8, Output::Rgb24, {}},          {Mono16, Output::Rgba32, {}},          {Mono10p, Output::Mono16, {}},
        {Yuv411, Output::Bgra32, kept},      {Rgb8, Output::Bgra32, corrected},     {BayerRG8, Output::Rgb24, {}},
        {BayerGB8, Output::Rgba32, kept},    {BayerGR8, Output::Rgba32, {}},        {BayerBG8, Output::Rgb24, by3x3},
        {BayerGB8, Output::Rgba32, kept3x3}, {BayerGR8, Output::Bgra32, by3x3},     {BayerRG8, Output::Yuv422, {}},
        {BayerRG12p, Output::Rgb24, {}},     {BayerGB16, Output::Rgb48, corrected}, {BayerGR10p, Output::Mono16, {}}};
    support::Random random(support::seed());
    for (const auto& [format, output, options] : cases) {
        for (const int odd : {0, 1}) {
            const Size size{32000, 42}, padded{32008, 43};
            const Bytes memory = support::filled(imageBytes(format, padded), support::Contents::noise, random);
            Frame frame(memory, format, size);
            if (odd) frame = flipped(crop({memory, format, padded}, 4, 1, size.width, size.height), Flip::Vertical);
            Bytes once = support::filled(imageBytes(output, size), support::Contents::noise, random), bands = once;
            Picture whole(once, output, size), banded(bands, output, size);
            convert(frame, whole, options);
            convert(frame, banded, options, threads);
            ASSERT_TRUE(once == bands) << nameOf(format) << " to " << nameOf(output) << ", padded: " << odd;
        }
    }
    Picture picture(Output::Rgb24, {8, 8});
    const Result refusal =
        Converter().tryConvert({Bytes(64), BayerRG8, {8, 8}}, picture, {.debayer = Debayer::LCAA}, threads);
    EXPECT_NE(refusal.text().find("as one stream"), std::string_view::npos) << refusal.text();
}

} // namespace
