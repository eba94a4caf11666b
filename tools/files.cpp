#include "files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "errors.h"
#include "system.h"
#include "temporary.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    int operator*() const { return number_; }
    bool close() { return ::close(std::exchange(number_, -1)) == 0; } // false: a write failed late

private:
    int number_;
};

[[noreturn]] void fail(const std::string& what, int error = errno) { throw Error(what + ": " + std::strerror(error)); }

// What one call reads or writes: its count has 32 bits on some systems.
unsigned step(std::uint64_t count) { return static_cast<unsigned>(std::min(count, std::uint64_t{1} << 30)); }

// Up to `limit` bytes.
Bytes readUpTo(int descriptor, std::uint64_t limit, const std::string& name) {
    constexpr std::uint64_t beginning = 1 << 20;
    Bytes content;
    std::size_t filled = 0;
    while (filled < limit) {
        if (filled == content.size()) content.resize(std::min(limit, std::max(2 * std::uint64_t{filled}, beginning)));
        const auto count = ::read(descriptor, content.data() + filled, step(content.size() - filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("cannot read " + name);
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    return content;
}

void writeAll(int descriptor, const Bytes& content, const std::string& name) {
    std::size_t written = 0;
    while (written < content.size()) {
        const auto count = ::write(descriptor, content.data() + written, step(content.size() - written));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail("cannot write " + name);
        written += static_cast<std::size_t>(count);
    }
}

constexpr fs::perms ofNewFiles{0666}; // less what the user's mask takes away

// New content beside a file, gone again unless it is put in the file's place. What a link points to is replaced, not
// the link; the file's permissions stay.
class Replacement {
public:
    Replacement(const fs::path& path, const fs::file_status& status)
        : target_(fs::exists(status) ? fs::canonical(path) : path) {
        if (fs::exists(status)) permissions_ = status.permissions();
        const int descriptor = makeTemporaryFile(target_, permissions_.value_or(ofNewFiles), path_);
        if (descriptor < 0) fail("cannot write " + target_.string());
        descriptor_.emplace(descriptor);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        descriptor_.reset();
        discardTemporaryFile(path_);
    }

    void append(const Bytes& content) { writeAll(**descriptor_, content, target_.string()); }
    void close() {
        std::error_code error;
        if (permissions_) fs::permissions(path_, *permissions_, error);
        if (error) fail("cannot write " + target_.string(), error.default_error_condition().value());
        if (!descriptor_->close()) fail("cannot write " + target_.string());
    }
    const fs::path& path() const { return path_; }
    const fs::path& target() const { return target_; }

private:
    fs::path target_, path_;
    std::optional<fs::perms> permissions_; // of the file that is there
    std::optional<Descriptor> descriptor_;
};

void putInPlace(const std::deque<Replacement>& replacements) {
    std::vector<std::pair<fs::path, fs::path>> fromTo;
    for (const Replacement& replacement : replacements) fromTo.emplace_back(replacement.path(), replacement.target());
    std::error_code error;
    const std::size_t kept = keepTemporaryFiles(fromTo, error);
    if (error) fail("cannot write " + fromTo[kept].second.string(), error.default_error_condition().value());
}

fs::file_status requireWritable(const fs::path& path) {
    std::error_code none;
    const fs::file_status status = fs::status(path, none);
    if (fs::is_directory(status)) fail("cannot write " + path.string(), EISDIR);
    if (fs::is_regular_file(status) && *Descriptor(openToWrite(path)) < 0) fail("cannot write " + path.string());
    return status;
}

} // namespace

std::string inputName(const fs::path& path) { return path == "-" ? "standard input" : path.string(); }
std::string outputName(const fs::path& path) { return path == "-" ? "standard output" : path.string(); }

InputFile::InputFile(const fs::path& path)
    : name_(inputName(path)), descriptor_(path == "-" ? duplicate(STDIN_FILENO) : openToRead(path)) {
    if (descriptor_ < 0) fail("cannot open " + name_);
    std::error_code none;
    if (path != "-" && fs::is_regular_file(path, none)) size_ = fs::file_size(path);
}

InputFile::~InputFile() { ::close(descriptor_); }

Bytes InputFile::read(std::uint64_t limit) { return readUpTo(descriptor_, limit, name_); }

void InputFile::skip(std::uint64_t count) {
    constexpr std::uint64_t most = 1 << 20;
    if (size_ && ::lseek(descriptor_, static_cast<off_t>(count), SEEK_CUR) >= 0) return;
    for (std::uint64_t left = count; left > 0;) { // a pipe
        const std::size_t got = read(std::min(left, most)).size();
        if (got == 0) return;
        left -= got;
    }
}

// Either a new file, or one that is there and is no ordinary one.
struct OutputFile::Target {
    explicit Target(const fs::path& path) : name(outputName(path)) {
        if (path == "-") {
            direct.emplace(duplicate(STDOUT_FILENO));
        } else {
            const fs::file_status status = requireWritable(path);
            if (fs::exists(status) && !fs::is_regular_file(status))
                direct.emplace(openToWrite(path));
            else
                replacement.emplace_back(path, status);
        }
        if (direct && **direct < 0) fail("cannot write " + name);
    }

    std::string name;
    std::optional<Descriptor> direct;
    std::deque<Replacement> replacement; // one, or none
};

OutputFile::OutputFile(const fs::path& path) : target_(std::make_unique<Target>(path)) {}
OutputFile::~OutputFile() = default;

void OutputFile::append(const Bytes& content) {
    if (target_->direct)
        writeAll(**target_->direct, content, target_->name);
    else
        target_->replacement.front().append(content);
}

void OutputFile::finish() {
    if (target_->direct) {
        if (!target_->direct->close()) fail("cannot write " + target_->name);
        return;
    }
    target_->replacement.front().close();
    putInPlace(target_->replacement);
}

void writeFiles(const std::vector<File>& files) {
    std::deque<Replacement> replacements;
    for (const auto& [path, content] : files) {
        const bool there = path == "-" || fs::exists(path);
        if (there && (path == "-" || !fs::is_regular_file(requireWritable(path)))) {
            OutputFile direct(path);
            direct.append(content);
            direct.finish();
            continue;
        }
        replacements.emplace_back(path, requireWritable(path)).append(content);
        replacements.back().close();
    }
    putInPlace(replacements);
}

void writeFile(const fs::path& path, Bytes content) { writeFiles({{path, std::move(content)}}); }

} // namespace tool
