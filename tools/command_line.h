#pragma once

namespace tool {

// Reads the command line and runs its command. Returns the exit code, or throws Error or UsageError.
int runCommandLine(int argc, char** argv);

} // namespace tool
