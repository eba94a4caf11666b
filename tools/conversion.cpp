#include "conversion.h"

#include <utility>

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

OrvTransformInfo describe(const Processing& processing) {
    OrvTransformInfo record{};
    require(OrvSetDebayerMode(processing.debayer.code, &record));
    return record;
}

std::uint64_t byteCount(const OrvImageInfo& info) {
    return (std::uint64_t{info.Width} * info.Height * info.PixelInfo.BitsPerPixel + 7) / 8;
}

// The library copies the bytes of full-depth grey words as they are.
bool copiesBigEndianWords(const OrvPixelInfo& source, const Output& output) {
    return source.PixelLayout == OrvPixelLayoutMono && source.BitsUsed == 16 && source.Endianness == 1 &&
           (output.code == OrvOutputMono16 || output.code == OrvOutputMono16Rec709);
}

// The library takes frames of two lines or columns, too, but makes nothing of them.
bool isTooSmall(Size size, const Processing& processing) {
    return processing.debayer.code == OrvDebayerMode3x3 && (size.width < 4 || size.height < 4);
}

// Converts into image.bytes; the source may be overwritten.
OrvErrorType transform(const FrameFormat& frame, Bytes& source, Image& image, const Processing& processing) {
    if (isTooSmall(frame.size, processing)) return OrvErrorBadParameter;
    OrvImage from = describe(frame);
    OrvImage to = describe(image.output, image.size);
    source.resize(byteCount(from.ImageInfo) + 1);      // the reader of little-endian grey words reads one byte more
    image.bytes.assign(byteCount(to.ImageInfo), 0xFF); // the library leaves alpha alone
    from.Data = source.data();
    to.Data = image.bytes.data();
    const OrvTransformInfo record = describe(processing);
    const OrvErrorType code = OrvImageTransform(&from, &to, &record, 1);
    if (code == OrvErrorSuccess && copiesBigEndianWords(from.ImageInfo.PixelInfo, image.output)) {
        for (std::size_t i = 0; i < image.bytes.size(); i += 2) std::swap(image.bytes[i], image.bytes[i + 1]);
    }
    return code;
}

bool accepts(FrameFormat frame, const Output& output, const Processing& processing, Size size) {
    frame.size = size;
    Bytes source;
    Image image{output, size, {}};
    return transform(frame, source, image, processing) == OrvErrorSuccess;
}

// Sources without debayer modes take any, even one that does not exist, and convert as always.
bool ignoresMode(const FrameFormat& frame, const Output& output, const Processing& processing) {
    constexpr DebayerMode nonexistent{"", 0xFFFF, ""};
    return processing.debayer.code != OrvDebayerMode2x2 && accepts(frame, output, {nonexistent}, {4, 4});
}

void addTo(std::string& list, std::string_view item) { list.append(list.empty() ? "" : ", ").append(item); }

std::string offeredDepths(FrameFormat frame, const Output& output, const Processing& processing) {
    std::string list;
    if (frame.pixels.packing != Packing::words) return list;
    for (unsigned bits = 1; bits <= 16; ++bits) {
        frame.pixels.bits = bits;
        if (isOffered(frame, output, processing)) addTo(list, std::to_string(bits));
    }
    return list;
}

std::string offeredOutputs(const FrameFormat& frame, const Processing& processing) {
    std::string list;
    for (const Output& output : outputs()) {
        if (isOffered(frame, output, processing)) addTo(list, output.names[0]);
    }
    return list;
}

// What the user can change when the library refuses.
std::string hint(const FrameFormat& frame, const Output& output, const Processing& processing) {
    if (isOffered(frame, output, processing)) return "it needs " + sizeRule(frame, output, processing);
    if (const auto depths = offeredDepths(frame, output, processing); !depths.empty())
        return "offered with these bits used: " + depths;
    if (const auto others = offeredOutputs(frame, processing); !others.empty()) return "offered are " + others;
    if (const auto options = text(processing); !options.empty())
        return options + " is offered for " + offeredSources(processing);
    return "see 'orvella formats'";
}

} // namespace

std::string errorText(OrvErrorType code) {
    char text[256] = "";
    OrvGetErrorInfo(code, text, sizeof text - 1);
    return text;
}

std::uint64_t byteCount(const FrameFormat& frame) { return byteCount(describe(frame).ImageInfo); }

Refusal refusal(const FrameFormat& frame, const Output& output, const Processing& processing, OrvErrorType code) {
    const std::string options = text(processing);
    return Refusal("cannot convert " + text(frame) + " to " + std::string(output.names[0]) +
                   (options.empty() ? "" : " with " + options) + ": " + errorText(code) + " (" + std::to_string(code) +
                   "); " + hint(frame, output, processing));
}

Image convert(const FrameFormat& frame, Bytes source, const Output& output, const Processing& processing) {
    Image image{output, frame.size, {}};
    const OrvErrorType code =
        ignoresMode(frame, output, processing) ? OrvErrorNotImplemented : transform(frame, source, image, processing);
    if (code == OrvErrorSuccess) return image;
    throw refusal(frame, output, processing, code);
}

bool isOffered(const FrameFormat& frame, const Output& output, const Processing& processing) {
    return accepts(frame, output, processing, {4, 4}) && !ignoresMode(frame, output, processing);
}

std::string offeredSources(const Processing& processing) {
    std::string list;
    for (const PixelFormat& pixels : pixelFormats()) {
        const bool otherPhase = isMosaic(pixels.samples) && pixels.samples != Samples::rggb;
        if (!otherPhase && !offeredOutputs({pixels, {}}, processing).empty()) addTo(list, pixels.name);
    }
    return list + " (mosaics in every phase)";
}

std::string sizeRule(const FrameFormat& frame, const Output& output, const Processing& processing) {
    const auto takes = [&](std::uint32_t width, std::uint32_t height) {
        return accepts(frame, output, processing, {width, height});
    };
    if (!takes(2, 4) && !takes(4, 2)) return "an even width and height of at least 4";
    if (!takes(2, 4)) return "a width that is a multiple of 4";
    if (!takes(1, 4)) return takes(4, 1) ? "an even width" : "an even width and height";
    return takes(1, 1) ? "any size" : "an even number of pixels";
}

} // namespace tool
