#include "temporary.h"

#include <cerrno>
#include <mutex>
#include <random>
#include <set>
#include <string>

#include "system.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

std::mutex mutex;
std::set<fs::path> files; // guarded by the mutex

void removeFile(const fs::path& name) {
    std::error_code none;
    fs::remove(name, none);
}

void removeAll() {
    mutex.lock(); // to the end: no file is made or renamed any more
    for (const fs::path& name : files) removeFile(name);
}

std::string anyName() {
    static std::random_device random;
    return ".orvella." + std::to_string(random());
}

} // namespace

void guardTemporaryFiles() { whenInterrupted(removeAll); }

int makeTemporaryFile(const fs::path& target, fs::perms permissions, fs::path& name) {
    const std::lock_guard lock(mutex);
    int descriptor = -1;
    do {
        name = target.parent_path() / anyName();
        descriptor = createFile(name, permissions);
    } while (descriptor < 0 && errno == EEXIST);
    if (descriptor >= 0) files.insert(name);
    return descriptor;
}

void discardTemporaryFile(const fs::path& name) {
    const std::lock_guard lock(mutex);
    if (files.erase(name) > 0) removeFile(name);
}

std::size_t keepTemporaryFiles(const std::vector<std::pair<fs::path, fs::path>>& fromTo, std::error_code& error) {
    const std::lock_guard lock(mutex);
    std::size_t kept = 0;
    for (; kept < fromTo.size(); ++kept) {
        const auto& [from, to] = fromTo[kept];
        fs::rename(from, to, error);
        if (error) break;
        files.erase(from);
    }
    return kept;
}

} // namespace tool
