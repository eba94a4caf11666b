// Frames in files that say themselves what they hold: PGM, PPM, PAM, .npy, TIFF and PNG.
#pragma once
#include <filesystem>

#include "files.h"
#include "headers.h"

namespace tool {

// Nothing for files of other endings, which are raw. Throws Error.
std::optional<FileHeader> readHeader(const std::filesystem::path& path);

// A page, from 1, of a TIFF or PNG file: its pixels, 16-bit samples as little-endian words. Throws Error.
Bytes readPage(const std::filesystem::path& path, unsigned page);

} // namespace tool
