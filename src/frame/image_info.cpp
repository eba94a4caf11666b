#include "frame/outputs.h"
#include "frame/pixel_formats.h"
#include "orvella/orv.h"

namespace kel {

namespace {

OrvErrorType checkImage(const OrvImage* image) {
    if (!image) return OrvErrorBadParameter;
    return image->Size == sizeof(OrvImage) ? OrvErrorSuccess : OrvErrorStructSize;
}

// The setters leave this behind even when they refuse the format after it.
void setGeometry(OrvImageInfo& info, u32 width, u32 height) {
    info.Width = width;
    info.Height = height;
    info.Stride = static_cast<i32>(width);
}

} // namespace

} // namespace kel

OrvErrorType OrvSetImageInfoFromPixelFormat(OrvPixelFormatType format, uint32_t width, uint32_t height,
                                            OrvImage* image) {
    if (const OrvErrorType refusal = kel::checkImage(image)) return refusal;
    kel::setGeometry(image->ImageInfo, width, height);
    OrvPixelInfo& pixel = image->ImageInfo.PixelInfo;
    if (const OrvErrorType refusal = OrvBitsPerPixel(&pixel.BitsPerPixel, format)) return refusal;
    const kel::PixelFormat* found = kel::findPixelFormat(format);
    if (!found) return OrvErrorBadParameter;
    pixel.BitsUsed = found->bitsUsed;
    pixel.PixelLayout = found->layout;
    pixel.BayerPattern = found->pattern;
    pixel.ColorSpace = found->colorSpace;
    pixel.Endianness = 0;
    pixel.Alignment = 1;
    return OrvErrorSuccess;
}

OrvErrorType OrvSetImageInfoOutput(OrvOutputCode output, uint32_t width, uint32_t height, OrvImage* image) {
    if (const OrvErrorType refusal = kel::checkImage(image)) return refusal;
    kel::setGeometry(image->ImageInfo, width, height);
    if (output > OrvOutputRgb48) return OrvErrorBadParameter;
    const kel::OutputFormat& format = kel::outputFormats[output];
    image->ImageInfo.PixelInfo = {.BitsPerPixel = format.bits,
                                  .BitsUsed = format.bits,
                                  .Alignment = 1,
                                  .Endianness = 0,
                                  .PixelLayout = format.layout,
                                  .BayerPattern = OrvBayerPatternNone,
                                  .ColorSpace = format.colorSpace};
    return OrvErrorSuccess;
}
