#include <algorithm>
#include <cstdio>

#include "camera.h"
#include "commands.h"
#include "errors.h"
#include "picture.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

// "BayerRG8_640x480": from such a part of a name, frames are read back without options.
std::string nameOf(const FrameFormat& frame) { return std::string(frame.pixels.name) + "_" + text(frame.size); }

// Where frames go, by their number.
class Destination {
public:
    Destination(const GrabOptions& options, const std::string& camera)
        : path_(options.output), single_(options.frames == 1) {
        if (path_.has_filename() && !fs::is_directory(path_)) return;
        fs::create_directories(path_);
        std::string name = camera;
        std::ranges::replace(name, '/', '-');
        path_ /= name + ".raw";
        inDirectory_ = true;
    }

    FileType type() const { return path_ == "-" ? FileType::raw : fileTypeOf(path_); }

    fs::path operator()(const FrameFormat& frame, unsigned number) const {
        if (path_ == "-" || (single_ && !inDirectory_)) return path_;
        fs::path name = path_.stem();
        char digits[16];
        std::snprintf(digits, sizeof digits, "-%04u", number);
        if (!single_) name += digits;
        if (type() == FileType::raw) (name += "_") += nameOf(frame);
        name += path_.extension();
        return path_.parent_path() / name;
    }

private:
    fs::path path_;
    bool single_, inDirectory_ = false;
};

} // namespace

void grabCommand(const GrabOptions& options) {
    CameraSettings settings{options.camera, {}, {}, options.features, options.frames};
    if (!options.format.empty()) settings.format = pixelFormatNamed(options.format);
    if (!options.size.empty()) settings.size = sizeNamed(options.size);
    if (options.camera.empty()) settings.camera = findCameras().at(0).name;
    const Destination destination(options, settings.camera);
    const FileType type = destination.type();

    unsigned count = 0;
    const std::uint64_t lost = grab(settings, [&](const FrameFormat& frame, Bytes bytes) {
        const fs::path path = destination(frame, ++count);
        if (type == FileType::raw)
            writeFile(path, std::move(bytes));
        else
            writeFile(path, encode(convert(frame, std::move(bytes), suitableOutput(frame, type)), type));
        std::fprintf(path == "-" ? stderr : stdout, "%s: %s\n", outputName(path).c_str(), text(frame).c_str());
    });
    if (lost > 0)
        std::fprintf(stderr, "orvella: %llu frames were lost on the way\n", static_cast<unsigned long long>(lost));
}

void camerasCommand() {
    for (const Camera& camera : findCameras())
        std::printf("%-32s %s\n", camera.name.c_str(), camera.description.c_str());
}

} // namespace tool
