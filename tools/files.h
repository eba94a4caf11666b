// Whole files in and out; "-" is standard input or output.
#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tool {

using Bytes = std::vector<std::uint8_t>;

// The name for messages: the path itself, or "standard input" / "standard output" for "-".
std::string inputName(const std::filesystem::path& path);
std::string outputName(const std::filesystem::path& path);

// Reads a file that must have exactly `size` bytes. Throws Error, which says what `size` stands for (`what`) and what
// was found. Never holds much more than the file has, whatever `size` claims.
Bytes readFile(const std::filesystem::path& path, std::uint64_t size, const std::string& what);

struct File {
    std::filesystem::path path;
    Bytes content;
};

// Writes files whole, and all of them or none: to temporary names beside them, which are renamed at the end. Things
// that are no ordinary files (pipes, devices) are written directly. Throws Error.
void writeFiles(const std::vector<File>& files);
void writeFile(const std::filesystem::path& path, Bytes content);

} // namespace tool
