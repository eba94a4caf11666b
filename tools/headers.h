// Headers of files that hold frames as plain bytes: PGM, PPM, PAM and .npy.
#pragma once
#include <optional>

#include "outputs.h"

namespace tool {

struct FileHeader {
    FrameFormat frame;        // as plain grey or RGB; a mosaic looks like grey
    std::uint64_t offset = 0; // of the first frame in the file
    unsigned pages = 0;       // of a TIFF or PNG file, whose frames libraries read
};

constexpr std::size_t longestHeader = 4096;

// From the beginning of a file of such a name; nothing for files of other endings. Throws Error.
std::optional<FileHeader> plainHeader(const std::string& name, std::string_view beginning);

// Samples that are `bits` deep and lie in bytes or words. Throws Error, with the file's name.
FrameFormat plainFrame(const std::string& name, Size size, unsigned channels, unsigned bits, bool bigEndian);

bool endsWith(const std::string& name, std::initializer_list<std::string_view> endings);

} // namespace tool
