#pragma once
#include <string>
#include <vector>

namespace tool {

// Reads the command line, without the program's name, and runs its command. Returns the exit code, or throws Error or
// UsageError.
int runCommandLine(std::vector<std::string> arguments);

} // namespace tool
