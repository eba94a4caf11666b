#include "frames/pack.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace frames {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint16_t>; // samples of 16 bits, in memory order

// A mosaic's four colours, row by row.
std::uint16_t Rgb16::*const mosaics[][4] = {
    {&Rgb16::red, &Rgb16::green, &Rgb16::green, &Rgb16::blue}, // rggb
    {&Rgb16::green, &Rgb16::red, &Rgb16::blue, &Rgb16::green}, // grbg
    {&Rgb16::green, &Rgb16::blue, &Rgb16::red, &Rgb16::green}, // gbrg
    {&Rgb16::blue, &Rgb16::green, &Rgb16::green, &Rgb16::red}, // bggr
};

Words mosaicSamples(const Chart& chart, Samples samples) {
    const auto& colours = mosaics[static_cast<int>(samples) - static_cast<int>(Samples::rggb)];
    Words words;
    for (std::uint32_t y = 0; y < chart.size.height; ++y) {
        for (std::uint32_t x = 0; x < chart.size.width; ++x)
            words.push_back(chart.at(x, y).*colours[y % 2 * 2 + x % 2]);
    }
    return words;
}

Words channelSamples(const Chart& chart, Samples samples) {
    constexpr std::uint16_t opaque = 0xFFFF;
    Words words;
    for (const Rgb16& p : chart.pixels) {
        switch (samples) {
        case Samples::grey: words.push_back(luma(p)); break;
        case Samples::rgb: words.insert(words.end(), {p.red, p.green, p.blue}); break;
        case Samples::bgr: words.insert(words.end(), {p.blue, p.green, p.red}); break;
        case Samples::rgba: words.insert(words.end(), {p.red, p.green, p.blue, opaque}); break;
        default: words.insert(words.end(), {p.blue, p.green, p.red, opaque}); break;
        }
    }
    return words;
}

// How the cells of a complementary-colour sensor see red, green and blue, so that the library's formula gives the
// colours back: its inverse, for cells with Cy + Ye = Gr + Mg.
struct Cell {
    double red, green, blue;
};
constexpr Cell cy{-0.0296, 0.6550, 0.3746}, ye{0.6278, 0.5188, -0.1466};
constexpr Cell gr{-0.0345, 1.0165, 0.0180}, mg{0.6326, 0.1573, 0.2101};

// Odd lines first, then even ones.
Words cygmSamples(const Chart& chart) {
    constexpr Cell lines[4][2] = {{cy, ye}, {gr, mg}, {cy, ye}, {mg, gr}};
    Words words;
    for (const std::uint32_t first : {1u, 0u}) {
        for (std::uint32_t y = first; y < chart.size.height; y += 2) {
            for (std::uint32_t x = 0; x < chart.size.width; ++x) {
                const Rgb16& p = chart.at(x, y);
                const Cell& cell = lines[y % 4][x % 2];
                const double value = cell.red * p.red + cell.green * p.green + cell.blue * p.blue;
                words.push_back(static_cast<std::uint16_t>(std::clamp(std::lround(value), 0L, 0xFFFFL)));
            }
        }
    }
    return words;
}

// ITU-R BT.601 over the full range, 0 to 255.
struct Yuv {
    double y = 0, u = 0, v = 0;
};

Yuv yuv(const Rgb16& pixel) {
    const double red = pixel.red / 257.0, green = pixel.green / 257.0, blue = pixel.blue / 257.0;
    const double y = 0.299 * red + 0.587 * green + 0.114 * blue;
    return {y, 128 + (blue - y) / 1.772, 128 + (red - y) / 1.402};
}

std::uint16_t word(double value8) {
    return static_cast<std::uint16_t>(std::clamp(std::lround(value8), 0L, 255L) * 257);
}

// Groups of pixels share the mean of their chroma: U Y V, U Y V Y, U Y Y V Y Y.
Words yuvSamples(const Chart& chart, std::size_t group) {
    Words words;
    for (std::size_t first = 0; first < chart.pixels.size(); first += group) {
        Yuv sum;
        Words lumas;
        for (std::size_t i = first; i < first + group; ++i) {
            const Yuv pixel = yuv(chart.pixels[i]);
            lumas.push_back(word(pixel.y));
            sum.u += pixel.u;
            sum.v += pixel.v;
        }
        const auto beforeV = lumas.begin() + static_cast<std::ptrdiff_t>((group + 1) / 2);
        words.push_back(word(sum.u / static_cast<double>(group)));
        words.insert(words.end(), lumas.begin(), beforeV);
        words.push_back(word(sum.v / static_cast<double>(group)));
        words.insert(words.end(), beforeV, lumas.end());
    }
    return words;
}

Words samplesOf(const Chart& chart, Samples samples) {
    switch (samples) {
    case Samples::yuv411: return yuvSamples(chart, 4);
    case Samples::yuv422: return yuvSamples(chart, 2);
    case Samples::yuv444: return yuvSamples(chart, 1);
    case Samples::cygm: return cygmSamples(chart);
    default: return isMosaic(samples) ? mosaicSamples(chart, samples) : channelSamples(chart, samples);
    }
}

std::uint8_t low(unsigned value) { return static_cast<std::uint8_t>(value & 0xFF); }

Bytes packBytes(const Words& words) {
    Bytes bytes;
    for (const std::uint16_t word : words) bytes.push_back(low(word >> 8u));
    return bytes;
}

Bytes packWords(const Words& words, const FrameFormat& frame) {
    const unsigned shift = 16 - frame.pixels.bits;
    Bytes bytes;
    for (const std::uint16_t word : words) {
        const unsigned value = static_cast<unsigned>(word) >> shift << (frame.msbAligned ? shift : 0);
        const std::uint8_t pair[] = {low(value), low(value >> 8)};
        bytes.push_back(pair[frame.bigEndian ? 1 : 0]);
        bytes.push_back(pair[frame.bigEndian ? 0 : 1]);
    }
    return bytes;
}

// High byte of the first, low nibbles (the second one's above), high byte of the second.
Bytes pack12Packed(const Words& words) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
        const unsigned a = words[i], b = words[i + 1];
        bytes.insert(bytes.end(), {low(a >> 8), low((a >> 4 & 0xF) | (b & 0xF0)), low(b >> 8)});
    }
    return bytes;
}

Bytes packBits(const Words& words, unsigned bits) {
    Bytes bytes;
    unsigned held = 0, count = 0; // bits not yet written
    for (const std::uint16_t word : words) {
        held |= static_cast<unsigned>(word) >> (16 - bits) << count;
        for (count += bits; count >= 8; count -= 8, held >>= 8) bytes.push_back(low(held));
    }
    if (count > 0) bytes.push_back(low(held));
    return bytes;
}

} // namespace

std::string missingFor(const FrameFormat& frame) {
    const auto [width, height] = frame.size;
    const Samples samples = frame.pixels.samples;
    if (frame.pixels.packing == Packing::packed12 && frame.size.pixels() % 2 == 1) return "an even number of pixels";
    if (samples == Samples::yuv422 && width % 2 == 1) return "an even width";
    if (samples == Samples::yuv411 && width % 4 != 0) return "a width that is a multiple of 4";
    if (samples == Samples::cygm && (width % 2 == 1 || height % 4 != 0))
        return "an even width, and a height that is a multiple of 4";
    return "";
}

Bytes pack(const Chart& chart, const FrameFormat& frame) {
    const Words words = samplesOf(chart, frame.pixels.samples);
    switch (frame.pixels.packing) {
    case Packing::bytes: return packBytes(words);
    case Packing::words: return packWords(words, frame);
    case Packing::packed12: return pack12Packed(words);
    default: return packBits(words, frame.pixels.bits);
    }
}

} // namespace frames
