#include "linear.h"

#include <utility>

namespace tool {

namespace {

// Throws Refusal.
Bytes bytesOf(const FrameFormat& frame, Bytes source, const char* output, const Processing& processing = {}) {
    return convert(frame, std::move(source), outputNamed(output), processing).bytes;
}

std::uint16_t word(const Bytes& littleEndian, std::size_t i) {
    return static_cast<std::uint16_t>(littleEndian[2 * i] | littleEndian[2 * i + 1] << 8);
}

std::vector<std::uint16_t> words(const Bytes& littleEndian) {
    std::vector<std::uint16_t> words(littleEndian.size() / 2);
    for (std::size_t i = 0; i < words.size(); ++i) words[i] = word(littleEndian, i);
    return words;
}

std::vector<std::uint16_t> widened(const Bytes& bytes) {
    std::vector<std::uint16_t> words(bytes.size());
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

// The format of the same mosaic with plain samples.
FrameFormat plainMosaic(const FrameFormat& frame, const char* bits) {
    return {*findPixelFormat(std::string(frame.pixels.name.substr(0, 7)) + bits), frame.size};
}

std::vector<std::uint16_t> deepColours(const FrameFormat& frame, Bytes source) {
    const Bytes bgr = bytesOf(plainMosaic(frame, "16"), unpacked(frame, std::move(source)), "BGR48");
    std::vector<std::uint16_t> colours(bgr.size() / 2);
    for (std::size_t i = 0; i < colours.size(); i += 3)
        for (std::size_t c = 0; c < 3; ++c) colours[i + c] = word(bgr, i + 2 - c);
    return colours;
}

std::vector<std::uint16_t> reducedColours(const FrameFormat& frame, Bytes source, const DebayerMode& debayer) {
    const Bytes deep = unpacked(frame, std::move(source));
    Bytes shallow(deep.size() / 2);
    for (std::size_t i = 0; i < shallow.size(); ++i) shallow[i] = deep[2 * i + 1];
    return widened(bytesOf(plainMosaic(frame, "8"), std::move(shallow), "RGB24", {debayer}));
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

LinearImage linearImage(const FrameFormat& frame, Bytes source, const DebayerMode& debayer) {
    const bool bytes = frame.pixels.packing == Packing::bytes;
    if (frame.pixels.samples == Samples::grey)
        return {frame.size, 1, bytes ? widened(source) : words(unpacked(frame, std::move(source)))};
    if (isMosaic(frame.pixels.samples) && !bytes) {
        const bool deep = debayer.code == OrvDebayerMode2x2;
        return {frame.size, 3,
                deep ? deepColours(frame, std::move(source)) : reducedColours(frame, std::move(source), debayer)};
    }
    return {frame.size, 3, widened(bytesOf(frame, std::move(source), "RGB24", {debayer}))};
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
