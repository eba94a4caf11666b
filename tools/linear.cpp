#include "linear.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tool {

namespace {

// Throws Refusal.
Bytes bytesOf(const FrameFormat& frame, Bytes source, const char* output, const Processing& processing = {}) {
    return convert(frame, std::move(source), outputNamed(output), processing).bytes;
}

using Words = std::vector<std::uint16_t>;

Words words(const Bytes& littleEndian) {
    Words words(littleEndian.size() / 2);
    std::memcpy(words.data(), littleEndian.data(), words.size() * 2); // as the machine is
    return words;
}

Words widened(const Bytes& bytes) {
    Words words(bytes.size());
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = static_cast<std::uint16_t>(bytes[i] * 257);
    return words;
}

void exchangeBytes(Bytes& words) {
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) std::swap(words[i], words[i + 1]);
}

// Grey samples, or a mosaic's as if they were grey, in the high bits of little-endian words.
Bytes unpacked(const FrameFormat& frame, Bytes source) {
    if (frame.pixels.packing == Packing::packed12) {
        Bytes result(frame.size.pixels() * 2);
        const OrvErrorType code = OrvPacked12BitTo16Bit(result.data(), source.data(),
                                                        static_cast<std::int32_t>(frame.size.width), frame.size.height);
        if (code != OrvErrorSuccess) throw refusal(frame, outputNamed("Mono16"), {}, code);
        exchangeBytes(result); // from big-endian
        return result;
    }
    FrameFormat grey = frame;
    grey.pixels = *findPixelFormat(frame.pixels.packing == Packing::words ? "Mono16"
                                   : frame.pixels.bits == 10              ? "Mono10p"
                                                                          : "Mono12p");
    grey.pixels.bits = frame.pixels.bits;
    return bytesOf(grey, std::move(source), "Mono16");
}

// Red, green, blue in words.
Words deepColours(const FrameFormat& frame, const Bytes& source) {
    Words colours = words(source);
    const unsigned shift = frame.msbAligned ? 0 : 16 - frame.pixels.bits;
    for (std::uint16_t& each : colours) {
        const unsigned word = each, value = frame.bigEndian ? word >> 8 | word << 8 : word;
        each = static_cast<std::uint16_t>(value << shift & 0xFFFF);
    }
    return colours;
}

// The format of the same mosaic with plain samples.
FrameFormat plainMosaic(const FrameFormat& frame, const char* bits) {
    return {*findPixelFormat(std::string(frame.pixels.name.substr(0, 7)) + bits), frame.size};
}

Words demosaicedDeep(const FrameFormat& frame, Bytes source) {
    Words colours = words(bytesOf(plainMosaic(frame, "16"), unpacked(frame, std::move(source)), "BGR48"));
    for (std::size_t i = 0; i < colours.size(); i += 3) std::swap(colours[i], colours[i + 2]);
    return colours;
}

Words demosaicedReduced(const FrameFormat& frame, Bytes source, const DebayerMode& debayer) {
    const Bytes deep = unpacked(frame, std::move(source));
    Bytes shallow(deep.size() / 2);
    for (std::size_t i = 0; i < shallow.size(); ++i) shallow[i] = deep[2 * i + 1];
    return widened(bytesOf(plainMosaic(frame, "8"), std::move(shallow), "RGB24", {debayer}));
}

Words samplesOf(const FrameFormat& frame, Bytes source, const DebayerMode& debayer) {
    const bool bytes = frame.pixels.packing == Packing::bytes;
    if (frame.pixels.samples == Samples::grey)
        return bytes ? widened(source) : words(unpacked(frame, std::move(source)));
    if (isDeepColour(frame.pixels)) return deepColours(frame, source);
    if (!isMosaic(frame.pixels.samples) || bytes) return widened(bytesOf(frame, std::move(source), "RGB24", {debayer}));
    if (debayer.code == OrvDebayerMode2x2) return demosaicedDeep(frame, std::move(source));
    return demosaicedReduced(frame, std::move(source), debayer);
}

// Rows that are converted by themselves, so that what lies between the steps stays in the cache. A mosaic's row needs the
// one below.
constexpr std::uint32_t bandRows = 64, rowsBelow = 2;

// Whether every such part of the frame is one that the library converts, and to the same pixels.
bool hasBands(const FrameFormat& frame, const DebayerMode& debayer) {
    const bool local = debayer.code == OrvDebayerMode2x2 && frame.pixels.samples != Samples::cygm;
    return local && frame.size.width % 4 == 0 && frame.size.height % 2 == 0 && frame.size.height > 2 * bandRows;
}

Words samplesByBands(const FrameFormat& frame, std::span<const std::uint8_t> source, const DebayerMode& debayer) {
    const auto [width, height] = frame.size;
    const std::size_t channels = frame.pixels.samples == Samples::grey ? 1 : 3;
    Words samples;
    samples.reserve(frame.size.pixels() * channels);
    FrameFormat band = frame;
    band.size.height = bandRows;
    const std::uint64_t step = byteCount(band);
    for (std::uint32_t y = 0; y < height; y += bandRows) {
        const std::uint32_t rows = std::min(bandRows, height - y);
        band.size.height = std::min(rows + rowsBelow, height - y);
        const auto bytes = source.subspan(y / bandRows * step, byteCount(band));
        const Words made = samplesOf(band, {bytes.begin(), bytes.end()}, debayer);
        samples.insert(samples.end(), made.data(), made.data() + rows * width * channels);
    }
    return samples;
}

// Which channels an output has, in memory order: r, g, b, opaque alpha, y grey, Y grey by BT.709.
std::string_view channelsOf(OrvOutputCode output) {
    switch (output) {
    case OrvOutputMono8:
    case OrvOutputMono16: return "y";
    case OrvOutputMono8Rec709:
    case OrvOutputMono16Rec709: return "Y";
    case OrvOutputBgra32: return "bgra";
    case OrvOutputRgba32: return "rgba";
    case OrvOutputBgr24:
    case OrvOutputBgr48: return "bgr";
    default: return "rgb";
    }
}

// Writes one channel of every pixel; `valueOf` takes the samples of a pixel.
template <class Value>
void writeChannel(const LinearImage& linear, Image& image, std::size_t channel, const Value& valueOf) {
    const auto [channels, bits] = shapeOf(image.output);
    const std::size_t bytes = bits / 8, step = channels * bytes;
    std::uint8_t* to = image.bytes.data() + channel * bytes;
    const std::uint16_t *from = linear.samples.data(), *const end = from + linear.samples.size();
    for (; from < end; from += linear.channels, to += step) {
        const unsigned value = valueOf(from);
        to[bytes - 1] = static_cast<std::uint8_t>(value >> 8);
        if (bytes == 2) to[0] = static_cast<std::uint8_t>(value & 0xFF);
    }
}

void writeChannel(const LinearImage& linear, Image& image, std::size_t channel, char name) {
    const auto write = [&](const auto& valueOf) { writeChannel(linear, image, channel, valueOf); };
    const bool grey = linear.channels == 1;
    const auto sample = [&](std::size_t c) { write([c](const std::uint16_t* p) { return unsigned{p[c]}; }); };
    switch (name) {
    case 'a': return write([](const std::uint16_t*) { return 0xFFFFu; });
    case 'y':
        if (!grey) return write([](const std::uint16_t* p) { return (77u * p[0] + 150u * p[1] + 29u * p[2]) >> 8; });
        break;
    case 'Y':
        if (!grey) return write([](const std::uint16_t* p) { return (54u * p[0] + 184u * p[1] + 18u * p[2]) >> 8; });
        break;
    case 'g': return sample(grey ? 0 : 1);
    case 'b': return sample(grey ? 0 : 2);
    default: break;
    }
    sample(0);
}

} // namespace

LinearImage linearImage(const FrameFormat& frame, std::span<const std::uint8_t> source, const DebayerMode& debayer) {
    return {frame.size, frame.pixels.samples == Samples::grey ? 1u : 3u,
            hasBands(frame, debayer) ? samplesByBands(frame, source, debayer)
                                     : samplesOf(frame, {source.begin(), source.end()}, debayer)};
}

std::string reduction(const FrameFormat& frame, const DebayerMode& debayer) {
    if (!isMosaic(frame.pixels.samples) || frame.pixels.bits == 8 || debayer.code == OrvDebayerMode2x2) return "";
    return "samples of " + std::to_string(frame.pixels.bits) + " bits are reduced to 8 for --debayer " +
           std::string(debayer.name);
}

Image imageOf(const LinearImage& linear, const Output& output) {
    const auto [channels, bits] = shapeOf(output);
    Image image{output, linear.size, Bytes(linear.size.pixels() * channels * bits / 8)};
    const std::string_view names = channelsOf(output.code);
    for (std::size_t channel = 0; channel < names.size(); ++channel)
        writeChannel(linear, image, channel, names[channel]);
    return image;
}

} // namespace tool
