#include "planes.h"

#include <utility>

#include "errors.h"

namespace tool {

namespace {

// The planes are red, green, blue and luma, which may be null.
using Splitter = OrvErrorType (*)(void*, void*, void*, void*, const void*, std::uint32_t, std::uint32_t);

// Null for frames that cannot be split as they are.
Splitter splitterFor(const PixelFormat& pixels) {
    if (pixels.packing != Packing::bytes) return nullptr;
    switch (pixels.samples) {
    case Samples::rgb: return OrvRGB8ToRGBYPlanes;
    case Samples::yuv411: return OrvYUV411ToRGBYPlanes;
    case Samples::yuv422: return OrvYUV422ToRGBYPlanes;
    case Samples::yuv444: return OrvYUV444ToRGBYPlanes;
    default: return nullptr;
    }
}

} // namespace

std::vector<Image> convertToPlanes(const FrameFormat& frame, Bytes source, const Output& output,
                                   const Processing& processing) {
    const Output& rgb = outputNamed("RGB24");
    Splitter split = processing.matrix ? nullptr : splitterFor(frame.pixels);
    if (!split) {
        source = convert(frame, std::move(source), rgb, processing).bytes;
        split = OrvRGB8ToRGBYPlanes;
    }
    const Image empty{outputNamed("Mono8"), frame.size, Bytes(frame.size.pixels())};
    std::vector<Image> planes(output.planes.size(), empty);
    void* const luma = planes.size() == 4 ? planes[3].bytes.data() : nullptr;
    const OrvErrorType code = split(planes[0].bytes.data(), planes[1].bytes.data(), planes[2].bytes.data(), luma,
                                    source.data(), frame.size.width, frame.size.height);
    if (code != OrvErrorSuccess) throw refusal(frame, output, processing, code);
    return planes;
}

} // namespace tool
