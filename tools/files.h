// Whole files in and out; "-" is standard input or output.
#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tool {

using Bytes = std::vector<std::uint8_t>;

// The name for messages: the path itself, or "standard input" / "standard output" for "-".
std::string inputName(const std::filesystem::path& path);
std::string outputName(const std::filesystem::path& path);

// A file that is read from its beginning to its end. Throws Error.
class InputFile {
public:
    explicit InputFile(const std::filesystem::path& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    std::optional<std::uint64_t> size() const { return size_; } // not of pipes and devices
    const std::string& name() const { return name_; }           // for messages
    // Up to `limit` bytes; fewer only at the end. Never holds much more than the file has, whatever the limit.
    Bytes read(std::uint64_t limit);
    void skip(std::uint64_t count);

private:
    std::string name_;
    int descriptor_;
    std::optional<std::uint64_t> size_;
};

struct File {
    std::filesystem::path path;
    Bytes content;
};

// A file that grows, and appears when it is finished; pipes and devices are written directly. Throws Error.
class OutputFile {
public:
    explicit OutputFile(const std::filesystem::path& path);
    ~OutputFile();

    void append(const Bytes& content);
    void finish();

private:
    struct Target;
    std::unique_ptr<Target> target_;
};

// Writes files whole, and all of them or none: to temporary names beside them, which are renamed at the end. Things
// that are no ordinary files (pipes, devices) are written directly. Throws Error.
void writeFiles(const std::vector<File>& files);
void writeFile(const std::filesystem::path& path, Bytes content);

} // namespace tool
