// Pictures and the files that hold them.
#pragma once
#include <filesystem>
#include <optional>

#include "conversion.h"

namespace tool {

// Rows of pixels without padding: grey, R G B or R G B A; 16-bit samples are little-endian words.
struct Picture {
    Size size;
    unsigned channels = 1; // 1, 3, 4
    unsigned bits = 8;     // 8, 16
    Bytes bytes;

    std::size_t rowBytes() const { return std::size_t{size.width} * channels * bits / 8; }
};

enum class FileType { png, pgm, ppm, pnm, tiff, y4m, raw };

// "png", "tif", ..., whatever the case of its letters. Throws UsageError.
FileType fileTypeNamed(const std::string& name);
// By the ending of the name; PNG for "-". Throws UsageError, which advises what to do.
FileType fileTypeOf(const std::filesystem::path& path, const std::string& advice = "rename it");

// Throws UsageError if files of this type cannot hold the output. Raw files hold every one.
void requireHolds(FileType type, const Output& output);

// The output that shows as much of the frame as the file type can: RGB24 or, if that is not offered, BGR48; Mono8 or
// Mono16.
Output suitableOutput(const FrameFormat& frame, FileType type, const Processing& processing = {});

struct Encoding {
    std::optional<unsigned> compression; // 0 to 9, of PNG and TIFF; otherwise what is quick
    unsigned framesPerSecond = 25;       // of Y4M
};

// The content of such a file; of Y4M, one frame, which follows the header and the frames before. Throws Error.
Bytes encode(Image image, FileType type, const Encoding& encoding = {});
Bytes y4mHeader(const Image& image, const Encoding& encoding);

Bytes encodePng(const Picture& picture, const Encoding& encoding);
Bytes encodePnm(const Picture& picture);
Bytes encodeTiff(const Picture& picture, const Encoding& encoding);
Bytes encodeY4mFrame(const Picture& picture);

} // namespace tool
