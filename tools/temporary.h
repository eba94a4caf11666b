// Temporary files that do not outlive the program, not even when it is interrupted.
#pragma once
#include <string>
#include <utility>
#include <vector>

namespace tool {

// From here on SIGINT, SIGTERM and SIGHUP end the program only after its temporary files are removed. To be called
// before other threads exist.
void guardTemporaryFiles();

// Like mkstemp; the file is removed by `discard`, or when the program is interrupted.
int makeTemporaryFile(std::string& pattern);
void discardTemporaryFile(const std::string& path);

// Renames them, all or, if interrupted, none. Returns the index of the first that could not be renamed (errno says why),
// or the count.
std::size_t keepTemporaryFiles(const std::vector<std::pair<std::string, std::string>>& fromTo);

} // namespace tool
