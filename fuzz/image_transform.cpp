// OrvImageTransform, by records that the setters make and that are then changed.
#include "fuzz/image_transform.h"

#include "fuzz/calls.h"
#include "fuzz/functions.h"
#include "orvella/orv.h"

namespace fuzz {

namespace {

// Any field, to something near what fields hold.
void change(OrvImage& image, Choices& choices) {
    OrvPixelInfo& info = image.ImageInfo.PixelInfo;
    std::uint32_t* const fields[] = {&info.BitsPerPixel,     &info.BitsUsed,         &info.Alignment,  &info.Endianness,
                                     &info.PixelLayout,      &info.BayerPattern,     &info.ColorSpace, &image.Size,
                                     &image.ImageInfo.Width, &image.ImageInfo.Height};
    constexpr std::uint32_t depths[] = {8, 10, 12, 14, 16, 24, 32, 48};
    for (std::uint32_t count = choices.below(4); count > 0; --count) {
        const std::uint32_t field = choices.below(std::size(fields));
        *fields[field] = field == 0 ? depths[choices.below(8)] : choices.code(field == 1 ? 17 : field < 8 ? 14 : 64);
    }
}

// Bytes that the pixels take, which a record describes; too many for `longest` if it overflows.
std::size_t sizeOf(const OrvImageInfo& image, std::uint64_t bits) {
    const unsigned __int128 size = static_cast<unsigned __int128>(image.Width) * image.Height * bits;
    return size > 16 * longest ? 2 * longest : static_cast<std::size_t>((size + 7) / 8);
}
std::uint64_t bitsOfSource(const OrvPixelInfo& pixel) {
    switch (pixel.PixelLayout) {
    case OrvPixelLayoutYuv411: return 12;
    case OrvPixelLayoutYuv422: return 16;
    case OrvPixelLayoutYuv444: return 24;
    default: return pixel.BitsPerPixel;
    }
}
std::uint64_t bitsOfDestination(const OrvPixelInfo& pixel) {
    return pixel.PixelLayout == OrvPixelLayoutYuv422 ? 16 : pixel.BitsPerPixel;
}

OrvTransformInfo option(Choices& choices) {
    OrvTransformInfo option{};
    float matrix[9];
    for (float& coefficient : matrix) coefficient = choices.coefficient();
    switch (choices.below(4)) {
    case 0: OrvSetDebayerMode(choices.code(5), &option); break;
    case 1: OrvSetColorCorrectionMatrix3x3(matrix, &option); break;
    case 2: OrvSetGammaCorrection(matrix[0], &option); break;
    default: option.TransformType = choices.code(4); break;
    }
    return option;
}

} // namespace

void callImageTransform(Choices& choices) {
    OrvImage source{sizeof source, nullptr, {}}, destination{sizeof destination, nullptr, {}};
    const std::uint32_t width = choices.size(), height = choices.size();
    OrvSetImageInfoFromPixelFormat(knownFormat(choices), width, height, &source);
    OrvSetImageInfoOutput(choices.code(11), width, height, &destination);
    if (choices.once(2)) change(source, choices);
    if (choices.once(2)) change(destination, choices);
    OrvTransformInfo options[3];
    for (OrvTransformInfo& each : options) each = option(choices);
    const std::uint32_t count = choices.below(4);
    const OrvTransformInfo* const info = choices.once(8) ? nullptr : options;
    const bool sourceGiven = !choices.once(32), destinationGiven = !choices.once(32);

    // The tint of words of 16 bits reads a byte more.
    const OrvPixelInfo& pixel = source.ImageInfo.PixelInfo;
    const bool readsOn = pixel.PixelLayout == OrvPixelLayoutMono && pixel.BitsPerPixel == 16 && pixel.BitsUsed == 16;
    const std::size_t sizes[] = {sizeOf(destination.ImageInfo, bitsOfDestination(destination.ImageInfo.PixelInfo)),
                                 sizeOf(source.ImageInfo, bitsOfSource(pixel)) + (readsOn ? 1 : 0)};
    if (sizes[0] > longest || sizes[1] > longest) return;
    const auto call = [&](std::uint8_t* const* buffers) {
        destination.Data = buffers[0];
        source.Data = buffers[1];
        return static_cast<std::uint32_t>(
            OrvImageTransform(sourceGiven ? &source : nullptr, destinationGiven ? &destination : nullptr, info, count));
    };
    run({"OrvImageTransform", {call}, {sizes[0], sizes[1]}, false, true}, choices);
}

} // namespace fuzz
