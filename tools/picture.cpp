#include "picture.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "errors.h"
#include "frames/names.h"
#include "offers.h"

namespace tool {

namespace {

struct Type {
    std::string_view name;
    FileType type;
};
constexpr Type types[] = {{"png", FileType::png}, {"pgm", FileType::pgm},  {"ppm", FileType::ppm},
                          {"pnm", FileType::pnm}, {"tif", FileType::tiff}, {"tiff", FileType::tiff},
                          {"y4m", FileType::y4m}, {"raw", FileType::raw}};
constexpr std::string_view typeList = "png, pgm, ppm, pnm, tif, tiff, y4m, raw";

const Type* find(std::string_view name) {
    const auto* const found = std::ranges::find_if(types, [&](const Type& type) { return sameName(type.name, name); });
    return found == std::end(types) ? nullptr : found;
}

// Without pixels. No channels if no picture is made of this output.
Picture shapeOf(const Output& output, Size size) {
    switch (output.code) {
    case OrvOutputMono8:
    case OrvOutputMono8Rec709: return {size, 1, 8, {}};
    case OrvOutputMono16:
    case OrvOutputMono16Rec709: return {size, 1, 16, {}};
    case OrvOutputBgr24:
    case OrvOutputRgb24: return {size, 3, 8, {}};
    case OrvOutputBgr48:
    case OrvOutputRgb48: return {size, 3, 16, {}};
    case OrvOutputBgra32:
    case OrvOutputRgba32: return {size, 4, 8, {}};
    default: return {size, 0, 8, {}};
    }
}

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

FileType fileTypeNamed(const std::string& name) {
    if (const Type* const type = find(name)) return type->type;
    throw UsageError("unknown file type '" + name + "'; known: " + std::string(typeList));
}

FileType fileTypeOf(const std::filesystem::path& path, const std::string& advice) {
    if (path == "-") return FileType::png;
    const std::string ending = path.extension().string();
    if (const Type* const type = ending.empty() ? nullptr : find(ending.substr(1))) return type->type;
    throw UsageError("the ending of '" + path.string() + "' says no known file type (" + std::string(typeList) + "); " +
                     advice);
}

void requireHolds(FileType type, const Output& output) {
    const auto refuse = [&](const std::string& reason) {
        throw UsageError(reason + ", not " + std::string(output.names[0]) +
                         "; choose another output (-t) or file type, or --raw");
    };
    const unsigned channels = shapeOf(output, {}).channels;
    if (type == FileType::raw) return;
    if (channels == 0) refuse("pictures hold grey and RGB pixels");
    if (type == FileType::y4m && (channels == 4 || shapeOf(output, {}).bits != 8))
        refuse("Y4M files hold grey and RGB pixels of 8 bits");
    if (type == FileType::pgm && channels != 1) refuse("PGM files hold grey pixels");
    if (type == FileType::ppm && channels != 3) refuse("PPM files hold RGB pixels without alpha");
    if (type == FileType::pnm && channels == 4) refuse("PNM files hold grey and RGB pixels without alpha");
}

Output suitableOutput(const FrameFormat& frame, FileType type, const Processing& processing) {
    const bool grey = frame.pixels.samples == Samples::grey;
    const auto choose = [&](const char* first, const char* second) {
        const auto offers = [&](const char* name) { return isOffered(frame, outputNamed(name), processing); };
        return outputNamed(!offers(first) && offers(second) ? second : first);
    };
    if (type == FileType::y4m) return outputNamed(grey ? "Mono8" : "RGB24");
    if (type == FileType::ppm || (!grey && type != FileType::pgm)) return choose("RGB24", "BGR48");
    return grey && frame.pixels.bits > 8 ? choose("Mono16", "Mono8") : choose("Mono8", "Mono16");
}

Bytes encode(Image image, FileType type, const Encoding& encoding) {
    if (type == FileType::raw) return std::move(image.bytes);
    Picture picture = shapeOf(image.output, image.size);
    picture.bytes = std::move(image.bytes);
    if (isBlueFirst(image.output)) exchangeRedAndBlue(picture);
    switch (type) {
    case FileType::png: return encodePng(picture, encoding);
    case FileType::tiff: return encodeTiff(picture, encoding);
    case FileType::y4m: return encodeY4mFrame(picture);
    default: return encodePnm(picture);
    }
}

Bytes y4mHeader(const Image& image, const Encoding& encoding) {
    const bool grey = shapeOf(image.output, image.size).channels == 1;
    const std::string header = "YUV4MPEG2 W" + std::to_string(image.size.width) + " H" +
                               std::to_string(image.size.height) + " F" + std::to_string(encoding.framesPerSecond) +
                               ":1 Ip A1:1 C" + (grey ? "mono" : "444") + "\n";
    return {header.begin(), header.end()};
}

} // namespace tool
