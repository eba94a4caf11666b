// The types of files that pictures are written to.
#pragma once
#include <filesystem>
#include <string>

#include "processing.h"
#include "transform.h"

namespace tool {

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

} // namespace tool
