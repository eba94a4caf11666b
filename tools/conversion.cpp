#include "conversion.h"

#include <utility>

#include "errors.h"

namespace tool {

namespace {

void require(OrvErrorType code) {
    if (code != OrvErrorSuccess) throw Refusal(errorText(code) + " (" + std::to_string(code) + ")");
}

OrvImage describe(const FrameFormat& frame) {
    OrvImage image{};
    image.Size = sizeof image;
    require(OrvSetImageInfoFromPixelFormat(frame.pixels.code, frame.size.width, frame.size.height, &image));
    OrvPixelInfo& info = image.ImageInfo.PixelInfo;
    if (frame.pixels.packing == Packing::words && info.BitsPerPixel == 16) {
        info.BitsUsed = frame.pixels.bits;
        info.Alignment = frame.msbAligned ? 0 : 1;
        info.Endianness = frame.bigEndian ? 1 : 0;
    }
    return image;
}

OrvImage describe(const Output& output, Size size) {
    OrvImage image{};
    image.Size = sizeof image;
    require(OrvSetImageInfoOutput(output.code, size.width, size.height, &image));
    return image;
}

std::uint64_t byteCount(const OrvImageInfo& info) {
    return (std::uint64_t{info.Width} * info.Height * info.PixelInfo.BitsPerPixel + 7) / 8;
}

// The library copies the bytes of full-depth grey words as they are.
bool copiesBigEndianWords(const OrvPixelInfo& source, const Output& output) {
    return source.PixelLayout == OrvPixelLayoutMono && source.BitsUsed == 16 && source.Endianness == 1 &&
           (output.code == OrvOutputMono16 || output.code == OrvOutputMono16Rec709);
}

// Converts into image.bytes; the source may be overwritten.
OrvErrorType transform(const FrameFormat& frame, Bytes& source, Image& image) {
    OrvImage from = describe(frame);
    OrvImage to = describe(image.output, image.size);
    source.resize(byteCount(from.ImageInfo) + 1);      // the reader of little-endian grey words reads one byte more
    image.bytes.assign(byteCount(to.ImageInfo), 0xFF); // the library leaves alpha alone
    from.Data = source.data();
    to.Data = image.bytes.data();
    const OrvErrorType code = OrvImageTransform(&from, &to, nullptr, 0);
    if (code == OrvErrorSuccess && copiesBigEndianWords(from.ImageInfo.PixelInfo, image.output)) {
        for (std::size_t i = 0; i < image.bytes.size(); i += 2) std::swap(image.bytes[i], image.bytes[i + 1]);
    }
    return code;
}

bool accepts(FrameFormat frame, const Output& output, Size size) {
    frame.size = size;
    Bytes source;
    Image image{output, size, {}};
    return transform(frame, source, image) == OrvErrorSuccess;
}

// What the user can change when the library refuses.
std::string hint(const FrameFormat& frame, const Output& output) {
    if (isOffered(frame, output)) return "it needs " + sizeRule(frame, output);
    std::string depths;
    for (unsigned bits = 1; bits <= 16 && frame.pixels.packing == Packing::words; ++bits) {
        FrameFormat other = frame;
        other.pixels.bits = bits;
        if (isOffered(other, output)) depths += (depths.empty() ? "" : ", ") + std::to_string(bits);
    }
    return depths.empty() ? "see 'orvella formats'" : "offered with these bits used: " + depths;
}

} // namespace

std::string errorText(OrvErrorType code) {
    char text[256] = "";
    OrvGetErrorInfo(code, text, sizeof text - 1);
    return text;
}

std::uint64_t byteCount(const FrameFormat& frame) { return byteCount(describe(frame).ImageInfo); }

Image convert(const FrameFormat& frame, Bytes source, const Output& output) {
    Image image{output, frame.size, {}};
    const OrvErrorType code = transform(frame, source, image);
    if (code == OrvErrorSuccess) return image;
    throw Refusal("cannot convert " + text(frame) + " to " + std::string(output.names[0]) + ": " + errorText(code) +
                  " (" + std::to_string(code) + "); " + hint(frame, output));
}

bool isOffered(const FrameFormat& frame, const Output& output) { return accepts(frame, output, {4, 4}); }

std::string sizeRule(const FrameFormat& frame, const Output& output) {
    const auto takes = [&](std::uint32_t width, std::uint32_t height) {
        return accepts(frame, output, {width, height});
    };
    if (!takes(2, 4)) return "a width that is a multiple of 4";
    if (!takes(1, 4)) return takes(4, 1) ? "an even width" : "an even width and height";
    return takes(1, 1) ? "any size" : "an even number of pixels";
}

} // namespace tool
