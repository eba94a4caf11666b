// Pixel formats, outputs and options, and what can be asked about them at compile time.
#pragma once
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "orvella/orv.h"

namespace orvella {

// What a frame holds: codes of the GenICam Pixel Format Naming Convention (PFNC).
enum class PixelFormat : std::uint32_t {
    Mono8 = OrvPixelFormatMono8,
    Mono10 = OrvPixelFormatMono10,
    Mono12 = OrvPixelFormatMono12,
    Mono12Packed = OrvPixelFormatMono12Packed,
    Mono10p = OrvPixelFormatMono10p,
    Mono12p = OrvPixelFormatMono12p,
    Mono14 = OrvPixelFormatMono14,
    Mono16 = OrvPixelFormatMono16,
    BayerGR8 = OrvPixelFormatBayerGR8,
    BayerRG8 = OrvPixelFormatBayerRG8,
    BayerGB8 = OrvPixelFormatBayerGB8,
    BayerBG8 = OrvPixelFormatBayerBG8,
    BayerGR10 = OrvPixelFormatBayerGR10,
    BayerRG10 = OrvPixelFormatBayerRG10,
    BayerGB10 = OrvPixelFormatBayerGB10,
    BayerBG10 = OrvPixelFormatBayerBG10,
    BayerGR12 = OrvPixelFormatBayerGR12,
    BayerRG12 = OrvPixelFormatBayerRG12,
    BayerGB12 = OrvPixelFormatBayerGB12,
    BayerBG12 = OrvPixelFormatBayerBG12,
    BayerGR12Packed = OrvPixelFormatBayerGR12Packed,
    BayerRG12Packed = OrvPixelFormatBayerRG12Packed,
    BayerGB12Packed = OrvPixelFormatBayerGB12Packed,
    BayerBG12Packed = OrvPixelFormatBayerBG12Packed,
    BayerGR10p = OrvPixelFormatBayerGR10p,
    BayerRG10p = OrvPixelFormatBayerRG10p,
    BayerGB10p = OrvPixelFormatBayerGB10p,
    BayerBG10p = OrvPixelFormatBayerBG10p,
    BayerGR12p = OrvPixelFormatBayerGR12p,
    BayerRG12p = OrvPixelFormatBayerRG12p,
    BayerGB12p = OrvPixelFormatBayerGB12p,
    BayerBG12p = OrvPixelFormatBayerBG12p,
    BayerGR16 = OrvPixelFormatBayerGR16,
    BayerRG16 = OrvPixelFormatBayerRG16,
    BayerGB16 = OrvPixelFormatBayerGB16,
    BayerBG16 = OrvPixelFormatBayerBG16,
    Rgb8 = OrvPixelFormatRgb8,
    Bgr8 = OrvPixelFormatBgr8,
    Argb8 = OrvPixelFormatArgb8, // the same code as Rgba8
    Rgba8 = OrvPixelFormatRgba8,
    Bgra8 = OrvPixelFormatBgra8,
    Rgb12 = OrvPixelFormatRgb12,
    Rgb16 = OrvPixelFormatRgb16,
    Yuv411 = OrvPixelFormatYuv411,
    Yuv422 = OrvPixelFormatYuv422,
    Yuv444 = OrvPixelFormatYuv444,
    YCbCr411_8_CbYYCrYY = OrvPixelFormatYCbCr411_8_CbYYCrYY,
    YCbCr422_8_CbYCrY = OrvPixelFormatYCbCr422_8_CbYCrY,
    YCbCr8_CbYCr = OrvPixelFormatYCbCr8_CbYCr,
};

// What a picture holds. How samples of another depth fill 16-bit words is said in docs/faces.md.
enum class Output : std::uint32_t {
    Mono8 = OrvOutputMono8, // luma by BT.601
    Bgr24 = OrvOutputBgr24,
    Bgra32 = OrvOutputBgra32,
    Rgb24 = OrvOutputRgb24,
    Rgba32 = OrvOutputRgba32,
    Mono8Rec709 = OrvOutputMono8Rec709,
    Yuv422 = OrvOutputYuv422, // U Y0 V Y1
    Mono16 = OrvOutputMono16,
    Mono16Rec709 = OrvOutputMono16Rec709,
    Bgr48 = OrvOutputBgr48,
    Rgb48 = OrvOutputRgb48
};

enum class Debayer : std::uint32_t {
    Mode2x2 = OrvDebayerMode2x2,
    Mode3x3 = OrvDebayerMode3x3,
    LCAA = OrvDebayerModeLCAA,
    LCAAV = OrvDebayerModeLCAAV,
    YUV422 = OrvDebayerModeYuv422
};
enum class Alignment : std::uint32_t { High = 0, Low = 1 }; // where 16-bit words hold samples of fewer bits
enum class ByteOrder : std::uint32_t { Little = 0, Big = 1 };
using Matrix = std::array<float, 9>; // row by row: R', G', B' from R, G, B

struct Options {
    Debayer debayer = Debayer::Mode2x2;
    std::optional<Matrix> matrix = std::nullopt;
    // Of sources in 16-bit words; other sources refuse them.
    std::optional<unsigned> bitsUsed = std::nullopt; // those of the format
    Alignment alignment = Alignment::Low;
    ByteOrder byteOrder = ByteOrder::Little;
    // The fourth byte of Bgra32 and Rgba32, where the source has none; nothing: the picture's own bytes stay.
    std::optional<std::uint8_t> alpha = std::uint8_t{255};

    constexpr bool operator==(const Options&) const = default;
};

// Pixels. Any integers will do; what is below 1 or above 2^32 - 1 is refused by what takes the size.
struct Size {
    std::int64_t width = 0, height = 0;

    constexpr Size() = default;
    template <std::integral Width, std::integral Height>
    constexpr Size(Width w, Height h) : width(saturated(w)), height(saturated(h)) {}
    constexpr bool operator==(const Size&) const = default;

private:
    template <std::integral Number> static constexpr std::int64_t saturated(Number number) {
        constexpr auto most = std::numeric_limits<std::int64_t>::max();
        return std::in_range<std::int64_t>(number) ? static_cast<std::int64_t>(number) : most;
    }
};

struct FormatInfo {
    PixelFormat format;
    std::string_view name; // PFNC's, but for the case of some letters
    unsigned bitsUsed;     // per pixel, all channels together
    OrvPixelLayout layout;
    OrvBayerPattern bayer; // 255: no mosaic

    constexpr unsigned bits() const { return static_cast<std::uint32_t>(format) >> 16 & 0xFF; } // per pixel, in memory
    constexpr bool isMosaic() const { return bayer != OrvBayerPatternNone; }
    constexpr bool hasWords() const { // of 16 bits, one per pixel
        return bits() == 16 && (layout == OrvPixelLayoutMono || layout == OrvPixelLayoutRaw);
    }
    // The pixels that share bytes or colour: lines begin and end between such groups.
    constexpr unsigned group() const {
        switch (layout) {
        case OrvPixelLayoutMonoP:
        case OrvPixelLayoutRawP: return bits() == 10 ? 4 : 2;
        case OrvPixelLayoutMonoPacked:
        case OrvPixelLayoutRawPacked:
        case OrvPixelLayoutYuv422: return 2;
        case OrvPixelLayoutYuv411: return 4;
        default: return 1;
        }
    }
};

inline constexpr FormatInfo formats[] = {
    {PixelFormat::Mono8, "Mono8", 8, OrvPixelLayoutMono, OrvBayerPatternNone},
    {PixelFormat::Mono10, "Mono10", 10, OrvPixelLayoutMono, OrvBayerPatternNone},
    {PixelFormat::Mono12, "Mono12", 12, OrvPixelLayoutMono, OrvBayerPatternNone},
    {PixelFormat::Mono12Packed, "Mono12Packed", 12, OrvPixelLayoutMonoPacked, OrvBayerPatternNone},
    {PixelFormat::Mono10p, "Mono10p", 10, OrvPixelLayoutMonoP, OrvBayerPatternNone},
    {PixelFormat::Mono12p, "Mono12p", 12, OrvPixelLayoutMonoP, OrvBayerPatternNone},
    {PixelFormat::Mono14, "Mono14", 14, OrvPixelLayoutMono, OrvBayerPatternNone},
    {PixelFormat::Mono16, "Mono16", 16, OrvPixelLayoutMono, OrvBayerPatternNone},
    {PixelFormat::BayerGR8, "BayerGR8", 8, OrvPixelLayoutRaw, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG8, "BayerRG8", 8, OrvPixelLayoutRaw, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB8, "BayerGB8", 8, OrvPixelLayoutRaw, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG8, "BayerBG8", 8, OrvPixelLayoutRaw, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR10, "BayerGR10", 10, OrvPixelLayoutRaw, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG10, "BayerRG10", 10, OrvPixelLayoutRaw, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB10, "BayerGB10", 10, OrvPixelLayoutRaw, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG10, "BayerBG10", 10, OrvPixelLayoutRaw, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR12, "BayerGR12", 12, OrvPixelLayoutRaw, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG12, "BayerRG12", 12, OrvPixelLayoutRaw, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB12, "BayerGB12", 12, OrvPixelLayoutRaw, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG12, "BayerBG12", 12, OrvPixelLayoutRaw, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR12Packed, "BayerGR12Packed", 12, OrvPixelLayoutRawPacked, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG12Packed, "BayerRG12Packed", 12, OrvPixelLayoutRawPacked, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB12Packed, "BayerGB12Packed", 12, OrvPixelLayoutRawPacked, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG12Packed, "BayerBG12Packed", 12, OrvPixelLayoutRawPacked, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR10p, "BayerGR10p", 10, OrvPixelLayoutRawP, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG10p, "BayerRG10p", 10, OrvPixelLayoutRawP, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB10p, "BayerGB10p", 10, OrvPixelLayoutRawP, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG10p, "BayerBG10p", 10, OrvPixelLayoutRawP, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR12p, "BayerGR12p", 12, OrvPixelLayoutRawP, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG12p, "BayerRG12p", 12, OrvPixelLayoutRawP, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB12p, "BayerGB12p", 12, OrvPixelLayoutRawP, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG12p, "BayerBG12p", 12, OrvPixelLayoutRawP, OrvBayerPatternBGGR},
    {PixelFormat::BayerGR16, "BayerGR16", 16, OrvPixelLayoutRaw, OrvBayerPatternGRBG},
    {PixelFormat::BayerRG16, "BayerRG16", 16, OrvPixelLayoutRaw, OrvBayerPatternRGGB},
    {PixelFormat::BayerGB16, "BayerGB16", 16, OrvPixelLayoutRaw, OrvBayerPatternGBRG},
    {PixelFormat::BayerBG16, "BayerBG16", 16, OrvPixelLayoutRaw, OrvBayerPatternBGGR},
    {PixelFormat::Rgb8, "Rgb8", 24, OrvPixelLayoutRgb, OrvBayerPatternNone},
    {PixelFormat::Bgr8, "Bgr8", 24, OrvPixelLayoutBgr, OrvBayerPatternNone},
    {PixelFormat::Argb8, "Argb8", 32, OrvPixelLayoutRgba, OrvBayerPatternNone},
    {PixelFormat::Rgba8, "Rgba8", 32, OrvPixelLayoutRgba, OrvBayerPatternNone},
    {PixelFormat::Bgra8, "Bgra8", 32, OrvPixelLayoutBgra, OrvBayerPatternNone},
    {PixelFormat::Rgb12, "Rgb12", 36, OrvPixelLayoutRgb, OrvBayerPatternNone},
    {PixelFormat::Rgb16, "Rgb16", 48, OrvPixelLayoutRgb, OrvBayerPatternNone},
    {PixelFormat::Yuv411, "Yuv411", 12, OrvPixelLayoutYuv411, OrvBayerPatternNone},
    {PixelFormat::Yuv422, "Yuv422", 16, OrvPixelLayoutYuv422, OrvBayerPatternNone},
    {PixelFormat::Yuv444, "Yuv444", 24, OrvPixelLayoutYuv444, OrvBayerPatternNone},
    {PixelFormat::YCbCr411_8_CbYYCrYY, "YCbCr411_8_CbYYCrYY", 12, OrvPixelLayoutYuv411, OrvBayerPatternNone},
    {PixelFormat::YCbCr422_8_CbYCrY, "YCbCr422_8_CbYCrY", 16, OrvPixelLayoutYuv422, OrvBayerPatternNone},
    {PixelFormat::YCbCr8_CbYCr, "YCbCr8_CbYCr", 24, OrvPixelLayoutYuv444, OrvBayerPatternNone},
};

inline constexpr FormatInfo unknownFormat{PixelFormat{}, "an unknown pixel format", 0, OrvPixelLayoutMono,
                                          OrvBayerPatternNone};

// What is known about a format; of a code that is none, unknownFormat with 0 bits.
constexpr const FormatInfo& infoOf(PixelFormat format) {
    for (const FormatInfo& info : formats)
        if (info.format == format) return info;
    return unknownFormat;
}

namespace detail {

constexpr char upper(char letter) { return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter; }

constexpr bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (upper(a[i]) != upper(b[i])) return false;
    return true;
}

inline constexpr std::uint64_t mostBytes = std::numeric_limits<std::uint64_t>::max();

// Sums and products that are too large stay at the largest number, which no buffer holds.
constexpr std::uint64_t times(std::uint64_t a, std::uint64_t b) {
    return b > 0 && a > mostBytes / b ? mostBytes : a * b;
}
constexpr std::uint64_t plus(std::uint64_t a, std::uint64_t b) { return a > mostBytes - b ? mostBytes : a + b; }

constexpr std::uint64_t bytesOf(std::uint64_t pixels, unsigned bits) {
    return plus(times(pixels / 8, bits), (pixels % 8 * bits + 7) / 8);
}

// Phases by the place of red: bit 0 its column, bit 1 its line. Pattern codes count the middle two the other way.
constexpr unsigned phaseOf(OrvBayerPattern pattern) { return pattern == 1 ? 2 : pattern == 2 ? 1 : pattern; }
constexpr unsigned movedBy(std::int64_t x, std::int64_t y) { return static_cast<unsigned>((x & 1) | (y & 1) << 1); }

} // namespace detail

// By its name, "BayerRG12p" or "PixelFormatBayerRG12p" in any case.
constexpr std::optional<PixelFormat> find(std::string_view name) {
    constexpr std::string_view prefix = "PixelFormat";
    if (detail::sameName(name.substr(0, prefix.size()), prefix)) name.remove_prefix(prefix.size());
    for (const FormatInfo& info : formats)
        if (detail::sameName(info.name, name)) return info.format;
    return std::nullopt;
}

constexpr std::string_view nameOf(PixelFormat format) { return infoOf(format).name; }

constexpr std::string_view nameOf(Output output) {
    constexpr std::string_view names[] = {"Mono8",  "Bgr24",  "Bgra32",       "Rgb24", "Rgba32", "Mono8Rec709",
                                          "Yuv422", "Mono16", "Mono16Rec709", "Bgr48", "Rgb48"};
    return static_cast<std::uint32_t>(output) < std::size(names) ? names[static_cast<std::uint32_t>(output)]
                                                                 : "an unknown output";
}

constexpr std::string_view nameOf(Debayer debayer) {
    constexpr std::string_view names[] = {"2x2", "3x3", "LCAA", "LCAAV", "YUV422"};
    return static_cast<std::uint32_t>(debayer) < std::size(names) ? names[static_cast<std::uint32_t>(debayer)]
                                                                  : "an unknown method";
}

// Bits per pixel in memory; 0 for an unknown format.
constexpr unsigned bitsPerPixel(PixelFormat format) { return infoOf(format).bits(); }
constexpr unsigned bitsPerPixel(Output output) {
    constexpr unsigned bits[] = {8, 24, 32, 24, 32, 8, 16, 16, 16, 48, 48};
    return static_cast<std::uint32_t>(output) < std::size(bits) ? bits[static_cast<std::uint32_t>(output)] : 0;
}

constexpr bool isMosaic(PixelFormat format) { return infoOf(format).isMosaic(); }

// Bytes of an image whose lines follow each other; 2^64 - 1 if there are more, 0 for sizes and formats that are none.
template <class Kind> constexpr std::uint64_t imageBytes(Kind kind, Size size) {
    if (size.width < 1 || size.height < 1) return 0;
    return detail::bytesOf(
        detail::times(static_cast<std::uint64_t>(size.width), static_cast<std::uint64_t>(size.height)),
        bitsPerPixel(kind));
}

// The format of a mosaic seen from x columns further right and y lines further down; other formats stay as they are.
constexpr PixelFormat phase(PixelFormat format, std::int64_t x, std::int64_t y) {
    const FormatInfo& info = infoOf(format);
    if (!info.isMosaic()) return format;
    const unsigned wanted = detail::phaseOf(info.bayer) ^ detail::movedBy(x, y);
    for (const FormatInfo& other : formats)
        if (other.layout == info.layout && other.bits() == info.bits() && other.bitsUsed == info.bitsUsed &&
            detail::phaseOf(other.bayer) == wanted)
            return other.format;
    return format;
}

namespace detail {

using Outputs = std::uint32_t; // a bit per output

template <class... Output> constexpr Outputs outputs(Output... output) { return ((1u << output) | ...); }

constexpr Outputs eightBits =
    outputs(OrvOutputMono8, OrvOutputBgr24, OrvOutputBgra32, OrvOutputRgb24, OrvOutputRgba32, OrvOutputMono8Rec709);
constexpr Outputs grey16 = outputs(OrvOutputMono16, OrvOutputMono16Rec709);
constexpr Outputs yuv = outputs(OrvOutputYuv422);
constexpr Outputs colour48 = outputs(OrvOutputBgr48, OrvOutputRgb48); // the library writes Bgr48 only

constexpr Outputs correctedOutputs(const FormatInfo& info) {
    switch (info.layout) {
    case OrvPixelLayoutRgb:
    case OrvPixelLayoutBgr:
    case OrvPixelLayoutRgba:
    case OrvPixelLayoutBgra: return info.bits() == 48 ? 0 : eightBits & ~outputs(OrvOutputMono8, OrvOutputMono8Rec709);
    case OrvPixelLayoutRaw:
        return info.bits() == 16 ? grey16 | colour48
                                 : outputs(OrvOutputMono8, OrvOutputBgr24, OrvOutputRgb24, OrvOutputMono8Rec709);
    case OrvPixelLayoutRawPacked: return outputs(OrvOutputBgr24) | colour48;
    default: return 0;
    }
}

// By one call of the library.
constexpr Outputs directOutputs(const FormatInfo& info, const Options& options) {
    const bool is2x2 = options.debayer == Debayer::Mode2x2;
    if (options.matrix) return is2x2 || !info.isMosaic() ? correctedOutputs(info) : 0;
    const bool isFull = options.bitsUsed.value_or(info.bitsUsed) == 16;
    switch (info.layout) {
    case OrvPixelLayoutMono:
        if (info.bits() == 8) return eightBits | yuv;
        return eightBits | grey16 | (isFull ? 0 : colour48);
    case OrvPixelLayoutMonoPacked: return eightBits;
    case OrvPixelLayoutMonoP: return eightBits | grey16;
    case OrvPixelLayoutRaw:
        if (info.bits() == 8) return eightBits | grey16 | (is2x2 ? yuv : 0);
        if (!is2x2) return 0;
        return isFull && options.byteOrder == ByteOrder::Big ? eightBits : eightBits | grey16 | colour48;
    case OrvPixelLayoutRawPacked:
    case OrvPixelLayoutRawP: return is2x2 ? eightBits | grey16 : 0;
    default: return info.bits() == 48 ? 0 : eightBits;
    }
}

// The mosaic with the same colours in words or bytes.
constexpr const FormatInfo& mosaicOf(unsigned bits, const FormatInfo& mosaic) {
    for (const FormatInfo& info : formats)
        if (info.bits() == bits && info.bitsUsed == bits && info.bayer == mosaic.bayer) return info;
    return mosaic;
}

// By two calls: 10p and 12p by the mosaic of their samples in 16-bit words, deep mosaics by that of their top eight bits.
constexpr Outputs outputsByWords(const FormatInfo& info, const Options& options) {
    return info.layout == OrvPixelLayoutRawP ? directOutputs(mosaicOf(16, info), options) : 0;
}
constexpr Outputs outputsOf(const FormatInfo& info, const Options& options) {
    const Outputs direct = directOutputs(info, options);
    if (!info.isMosaic()) return direct;
    return direct | outputsByWords(info, options) | directOutputs(mosaicOf(8, info), options);
}

constexpr bool contains(Outputs set, Output output) {
    return static_cast<std::uint32_t>(output) < 32 && (set >> static_cast<std::uint32_t>(output) & 1) != 0;
}

} // namespace detail

// Whether a source of this format can become that output; sizes have rules of their own.
constexpr bool offers(PixelFormat format, Output output, const Options& options = {}) {
    const FormatInfo& info = infoOf(format);
    return info.bits() != 0 && detail::contains(detail::outputsOf(info, options), output);
}

// Whether only the top eight bits of a deep mosaic's samples count: for all methods but 2x2, and for what 2x2 and the
// matrix do not write from more.
constexpr bool takesTopBits(PixelFormat format, Output output, const Options& options = {}) {
    const FormatInfo& info = infoOf(format);
    const detail::Outputs full = detail::directOutputs(info, options) | detail::outputsByWords(info, options);
    return offers(format, output, options) && !detail::contains(full, output);
}

} // namespace orvella
