#include "file_types.h"

#include <string_view>

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
    for (const Type& type : types)
        if (sameName(type.name, name)) return &type;
    return nullptr;
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
    const auto [channels, bits] = shapeOf(output);
    if (type == FileType::raw) return;
    if (channels == 0) refuse("pictures hold grey and RGB pixels");
    if (type == FileType::y4m && (channels == 4 || bits != 8)) refuse("Y4M files hold grey and RGB pixels of 8 bits");
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

} // namespace tool
