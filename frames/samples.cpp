#include "frames/samples.h"

namespace frames {

namespace {

using Bytes = std::span<const std::uint8_t>;

unsigned word(const FrameFormat& frame, Bytes bytes, std::size_t i) {
    const unsigned first = bytes[2 * i], second = bytes[2 * i + 1];
    const unsigned value = frame.bigEndian ? first << 8 | second : second << 8 | first;
    return frame.msbAligned ? value >> (16 - frame.pixels.bits) : value;
}

unsigned packed12(Bytes bytes, std::size_t i) {
    const std::size_t at = i / 2 * 3;
    const unsigned middle = bytes[at + 1], high = bytes[i % 2 == 0 ? at : at + 2];
    return high << 4 | (i % 2 == 0 ? middle & 0xF : middle >> 4);
}

unsigned fromStream(Bytes bytes, unsigned bits, std::size_t i) {
    const std::size_t at = i * bits / 8, shift = i * bits % 8;
    const unsigned next =
        shift + bits > 8 ? bytes[at + 1] : 0u; // no more: samples have at most 12 bits, from even ones
    return (next << 8 | bytes[at]) >> shift & ((1u << bits) - 1);
}

void readSamples(const FrameFormat& frame, Bytes bytes, std::size_t first, std::span<std::uint16_t> values) {
    const auto read = [&](const auto& sample) {
        for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<std::uint16_t>(sample(first + i));
    };
    switch (frame.pixels.packing) { // here, so that each loop has its own reader in it
    case Packing::words: return read([&](std::size_t i) { return word(frame, bytes, i); });
    case Packing::packed12: return read([&](std::size_t i) { return packed12(bytes, i); });
    case Packing::bitStream: return read([&](std::size_t i) { return fromStream(bytes, frame.pixels.bits, i); });
    default: return read([&](std::size_t i) { return bytes[i]; });
    }
}

// Where Y, U and V of a pixel lie, in groups of pixels that share U and V.
struct Group {
    std::size_t pixels, bytes, u, v, y[4];
};
constexpr Group yuv411{4, 6, 0, 3, {1, 2, 4, 5}}, yuv422{2, 4, 0, 2, {1, 3}}, yuv444{1, 3, 0, 2, {1}};

void readYuv(const Group& group, Bytes bytes, std::size_t pixel, std::span<std::uint16_t> values) {
    for (std::size_t i = 0; i < values.size(); i += 3, ++pixel) {
        const Bytes here = bytes.subspan(pixel / group.pixels * group.bytes);
        values[i] = here[group.y[pixel % group.pixels]];
        values[i + 1] = here[group.u];
        values[i + 2] = here[group.v];
    }
}

// Complementary colours come as two fields, the odd lines first.
std::uint32_t storedLine(std::uint32_t y, std::uint32_t height) { return y % 2 == 1 ? y / 2 : height / 2 + y / 2; }

} // namespace

unsigned samplesOfPixel(const PixelFormat& format) {
    if (!isColour(format.samples) || format.samples == Samples::cygm) return 1;
    return format.samples == Samples::rgba || format.samples == Samples::bgra ? 4 : 3;
}

void readPixels(const FrameFormat& frame, Bytes bytes, std::uint32_t x, std::uint32_t y,
                std::span<std::uint16_t> values) {
    if (frame.pixels.samples == Samples::cygm) y = storedLine(y, frame.size.height);
    const std::size_t pixel = std::size_t{y} * frame.size.width + x;
    switch (frame.pixels.samples) {
    case Samples::yuv411: return readYuv(yuv411, bytes, pixel, values);
    case Samples::yuv422: return readYuv(yuv422, bytes, pixel, values);
    case Samples::yuv444: return readYuv(yuv444, bytes, pixel, values);
    default: return readSamples(frame, bytes, pixel * samplesOfPixel(frame.pixels), values);
    }
}

} // namespace frames
