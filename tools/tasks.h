// Which file becomes which.
#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// One input and what becomes of it.
struct Task {
    std::filesystem::path input;
    std::vector<std::filesystem::path> outputs; // one, or one for each plane
};

// Without a directory, the last of `files` is the output; with one, all are inputs, and the outputs are files of the same
// name with another ending in that directory. Planes have a letter each: "picture.png" is "picture.r.png" and so on then.
// Only a sequence, which is one file, has several inputs and one output. Throws UsageError, also if an output would
// replace an input or another output.
std::vector<Task> planTasks(const std::vector<std::filesystem::path>& files, const std::filesystem::path& directory,
                            const std::string& ending, std::string_view planes, bool sequence);

// "picture-0003.png"
std::filesystem::path numbered(const std::filesystem::path& path, unsigned number);

} // namespace tool
