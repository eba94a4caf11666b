#include "linear.h"

#include <utility>

namespace tool {

namespace {

// Throws Refusal.
Bytes bytesOf(const FrameFormat& frame, Bytes source, const char* output, const Processing& processing = {}) {
    return convert(frame, std::move(source), outputNamed(output), processing).bytes;
}

std::vector<std::uint16_t> words(const Bytes& littleEndian) {
    std::vector<std::uint16_t> words(littleEndian.size() / 2);
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = static_cast<std::uint16_t>(littleEndian[2 * i] | littleEndian[2 * i + 1] << 8);
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
    std::vector<std::uint16_t> colours =
        words(bytesOf(plainMosaic(frame, "16"), unpacked(frame, std::move(source)), "BGR48"));
    for (std::size_t i = 0; i < colours.size(); i += 3) std::swap(colours[i], colours[i + 2]);
    return colours;
}

std::vector<std::uint16_t> reducedColours(const FrameFormat& frame, Bytes source, const DebayerMode& debayer) {
    const Bytes deep = unpacked(frame, std::move(source));
    Bytes shallow(deep.size() / 2);
    for (std::size_t i = 0; i < shallow.size(); ++i) shallow[i] = deep[2 * i + 1];
    return widened(bytesOf(plainMosaic(frame, "8"), std::move(shallow), "RGB24", {debayer}));
}

std::uint16_t sampleOf(const LinearImage& linear, std::size_t pixel, unsigned channel) {
    return linear.samples[linear.channels == 1 ? pixel : 3 * pixel + channel];
}

std::uint16_t greyOf(const LinearImage& linear, std::size_t pixel, bool rec709) {
    if (linear.channels == 1) return linear.samples[pixel];
    const unsigned red = sampleOf(linear, pixel, 0), green = sampleOf(linear, pixel, 1),
                   blue = sampleOf(linear, pixel, 2);
    return static_cast<std::uint16_t>(
        (rec709 ? 54 * red + 184 * green + 18 * blue : 77 * red + 150 * green + 29 * blue) >> 8);
}

// Which channels an output has, in memory order: r, g, b, opaque alpha, y grey, Y grey by BT.709; and its bits.
struct Arrangement {
    std::string_view channels;
    unsigned bits;
};
Arrangement arrangementOf(OrvOutputCode output) {
    switch (output) {
    case OrvOutputMono8: return {"y", 8};
    case OrvOutputMono8Rec709: return {"Y", 8};
    case OrvOutputMono16: return {"y", 16};
    case OrvOutputMono16Rec709: return {"Y", 16};
    case OrvOutputBgr24: return {"bgr", 8};
    case OrvOutputRgb24: return {"rgb", 8};
    case OrvOutputBgra32: return {"bgra", 8};
    case OrvOutputRgba32: return {"rgba", 8};
    case OrvOutputBgr48: return {"bgr", 16};
    default: return {"rgb", 16};
    }
}

std::uint16_t channelOf(const LinearImage& linear, std::size_t pixel, char channel) {
    switch (channel) {
    case 'y': return greyOf(linear, pixel, false);
    case 'Y': return greyOf(linear, pixel, true);
    case 'r': return sampleOf(linear, pixel, 0);
    case 'g': return sampleOf(linear, pixel, 1);
    case 'b': return sampleOf(linear, pixel, 2);
    default: return 0xFFFF;
    }
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
    const auto [channels, bits] = arrangementOf(output.code);
    Image image{output, linear.size, {}};
    image.bytes.reserve(linear.size.pixels() * channels.size() * bits / 8);
    for (std::size_t pixel = 0; pixel < linear.size.pixels(); ++pixel) {
        for (const char channel : channels) {
            const std::uint16_t value = channelOf(linear, pixel, channel);
            if (bits == 16) image.bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
            image.bytes.push_back(static_cast<std::uint8_t>(value >> 8));
        }
    }
    return image;
}

} // namespace tool
