#include "picture.h"

#include <algorithm>
#include <utility>

namespace tool {

namespace {

bool isBlueFirst(const Output& output) {
    return output.code == OrvOutputBgr24 || output.code == OrvOutputBgra32 || output.code == OrvOutputBgr48;
}

void exchangeRedAndBlue(Picture& picture) {
    const std::size_t sample = picture.bits / 8, pixel = sample * picture.channels;
    for (std::size_t i = 0; i < picture.bytes.size(); i += pixel) {
        const auto first = picture.bytes.begin() + static_cast<std::ptrdiff_t>(i);
        std::swap_ranges(first, first + static_cast<std::ptrdiff_t>(sample),
                         first + static_cast<std::ptrdiff_t>(2 * sample));
    }
}

} // namespace

Bytes encode(Image image, FileType type, const Encoding& encoding) {
    if (type == FileType::raw) return std::move(image.bytes);
    const auto [channels, bits] = shapeOf(image.output);
    Picture picture{image.size, channels, bits, std::move(image.bytes)};
    if (isBlueFirst(image.output)) exchangeRedAndBlue(picture);
    switch (type) {
    case FileType::png: return encodePng(picture, encoding);
    case FileType::tiff: return encodeTiff(picture, encoding);
    case FileType::y4m: return encodeY4mFrame(picture);
    default: return encodePnm(picture);
    }
}

Bytes y4mHeader(const Image& image, const Encoding& encoding) {
    const bool grey = shapeOf(image.output).channels == 1;
    const std::string header = "YUV4MPEG2 W" + std::to_string(image.size.width) + " H" +
                               std::to_string(image.size.height) + " F" + std::to_string(encoding.framesPerSecond) +
                               ":1 Ip A1:1 C" + (grey ? "mono XCOLORRANGE=FULL" : "444") + "\n";
    return {header.begin(), header.end()};
}

} // namespace tool
