// Temporary files that do not outlive the program, not even when it is interrupted.
#pragma once
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace tool {

// From here on what interrupts the program ends it only after its temporary files are removed. To be called before other
// threads exist.
void guardTemporaryFiles();

// A new file in the folder of `target`, and its name. The file is removed by `discard`, or when the program is
// interrupted. Returns a descriptor, or -1, and errno says why.
int makeTemporaryFile(const std::filesystem::path& target, std::filesystem::perms permissions,
                      std::filesystem::path& name);
void discardTemporaryFile(const std::filesystem::path& name);

// Renames them, all or, if interrupted, none. Returns the index of the first that could not be renamed, or the count.
std::size_t keepTemporaryFiles(const std::vector<std::pair<std::filesystem::path, std::filesystem::path>>& fromTo,
                               std::error_code& error);

} // namespace tool
