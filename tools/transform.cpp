#include "transform.h"

#include <string>
#include <utility>

#include "errors.h"

namespace tool {

namespace {

std::string errorText(OrvErrorType code) {
    char text[256] = "";
    OrvGetErrorInfo(code, text, sizeof text - 1);
    return text;
}

void require(OrvErrorType code) {
    if (code != OrvErrorSuccess) throw Refusal(errorText(code) + " (" + std::to_string(code) + ")");
}

bool isCygm(const FrameFormat& frame) { return frame.pixels.samples == Samples::cygm; }

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
    require(processing.matrix ? OrvSetColorCorrectionMatrix3x3(processing.matrix->data(), &record)
                              : OrvSetDebayerMode(processing.debayer.code, &record));
    return record;
}

std::uint64_t byteCountOf(const OrvImageInfo& info) {
    return (std::uint64_t{info.Width} * info.Height * info.PixelInfo.BitsPerPixel + 7) / 8;
}

// With a matrix, the library takes these two patterns for each other.
void exchangeGreenFirstPatterns(OrvPixelInfo& info) {
    if (info.BayerPattern == OrvBayerPatternGBRG)
        info.BayerPattern = OrvBayerPatternGRBG;
    else if (info.BayerPattern == OrvBayerPatternGRBG)
        info.BayerPattern = OrvBayerPatternGBRG;
}

// The library copies the bytes of full-depth grey words as they are.
bool copiesBigEndianWords(const OrvPixelInfo& source, const Output& output) {
    return source.PixelLayout == OrvPixelLayoutMono && source.BitsUsed == 16 && source.Endianness == 1 &&
           (output.code == OrvOutputMono16 || output.code == OrvOutputMono16Rec709);
}

// Of which the library's reader reads one byte more.
bool isGreyWords(const FrameFormat& frame) {
    return frame.pixels.samples == Samples::grey && frame.pixels.packing == Packing::words;
}

// The library takes these frames, too, but makes no picture of them.
bool makesNoPicture(const FrameFormat& frame, const Processing& processing) {
    const bool oddLines = frame.pixels.packing == Packing::packed12 && frame.size.width % 2 == 1;
    const bool tooSmall = frame.size.width < 4 || frame.size.height < 4;
    return processing.matrix ? oddLines : processing.debayer.code == OrvDebayerMode3x3 && tooSmall;
}

OrvErrorType transformPixels(OrvImage from, OrvImage to, const Processing& processing) {
    if (processing.matrix) exchangeGreenFirstPatterns(from.ImageInfo.PixelInfo);
    const OrvTransformInfo record = describe(processing);
    return OrvImageTransform(&from, &to, &record, 1);
}

OrvErrorType transformCygm(const Bytes& source, Image& image, const Processing& processing) {
    if (processing.matrix) return OrvErrorNotImplemented;
    return OrvIRaw8CYGMImageTransform(image.bytes.data(), source.data(), image.size.width, image.size.height,
                                      image.output.code, 0);
}

} // namespace

std::uint64_t byteCount(const FrameFormat& frame) {
    return isCygm(frame) ? frame.size.pixels() : byteCountOf(describe(frame).ImageInfo);
}

OrvErrorType transform(const FrameFormat& frame, Bytes& source, Image& image, const Processing& processing) {
    if (makesNoPicture(frame, processing)) return OrvErrorBadParameter;
    OrvImage to = describe(image.output, image.size);
    const std::uint64_t read = byteCount(frame) + (isGreyWords(frame) ? 1 : 0);
    if (source.size() < read) source.resize(read);
    image.bytes.assign(byteCountOf(to.ImageInfo), 0xFF); // the library leaves alpha alone
    if (isCygm(frame)) return transformCygm(source, image, processing);

    OrvImage from = describe(frame);
    from.Data = source.data();
    to.Data = image.bytes.data();
    const OrvErrorType code = transformPixels(from, to, processing);
    if (code == OrvErrorSuccess && copiesBigEndianWords(from.ImageInfo.PixelInfo, image.output)) {
        for (std::size_t i = 0; i < image.bytes.size(); i += 2) std::swap(image.bytes[i], image.bytes[i + 1]);
    }
    return code;
}

} // namespace tool
