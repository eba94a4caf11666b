#include "program.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>

#include "command_line.h"
#include "errors.h"
#include "system.h"
#include "temporary.h"

namespace {

constexpr int failure = 1, usage = 2;

int complain(const char* message, int code) {
    std::fprintf(stderr, "orvella: %s\n", message);
    return code;
}

// What was printed may not have arrived, on a full disk for example.
void finishOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw tool::Error(std::string("cannot write standard output: ") + std::strerror(errno));
}

} // namespace

int tool::runProgram(std::vector<std::string> arguments) {
    try {
        reuseBuffers();
        guardTemporaryFiles();
        const int code = runCommandLine(std::move(arguments));
        finishOutput();
        return code;
    } catch (const UsageError& error) {
        return complain(error.what(), usage);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", failure);
    } catch (const std::exception& error) {
        return complain(error.what(), failure);
    }
}
