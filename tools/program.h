#pragma once
#include <string>
#include <vector>

namespace tool {

// The program, but for how the system starts it (main_*.cpp). Arguments are UTF-8, without the program's name. Returns the
// exit code.
int runProgram(std::vector<std::string> arguments);

} // namespace tool
