#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <filesystem>

#include "program.h"

extern "C" {
int _dowildcard = -1; // *.raw is expanded, as shells do elsewhere
int wmain(int argc, wchar_t** argv);
}

int wmain(int argc, wchar_t** argv) {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(std::filesystem::path(argv[i]).string());

    const UINT before = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
    const int code = tool::runProgram(std::move(arguments));
    ::SetConsoleOutputCP(before);
    return code;
}
