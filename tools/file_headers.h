// Frames in files that say themselves what they hold: PGM, PPM, PAM, TIFF and .npy.
#pragma once
#include <filesystem>
#include <optional>

#include "files.h"
#include "outputs.h"

namespace tool {

struct FileHeader {
    FrameFormat frame;        // as plain grey or RGB; a mosaic looks like grey
    std::uint64_t offset = 0; // of the first frame in the file
    bool isTiff = false;      // to be read by readTiff
};

// Nothing for files of other endings, which are raw. Throws Error.
std::optional<FileHeader> readHeader(const std::filesystem::path& path);
Bytes readTiff(const std::filesystem::path& path);

} // namespace tool
