#include <cerrno>
#include <cstdio>
#include <cstring>
#include <malloc.h>
#include <new>
#include <string>

#include "command_line.h"
#include "errors.h"
#include "temporary.h"

namespace {

constexpr int failure = 1, usage = 2;

int complain(const char* message, int code) {
    std::fprintf(stderr, "orvella: %s\n", message);
    return code;
}

// The buffers of a frame serve the next one, instead of going back to the system, which would clear them again.
void reuseBuffers() {
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
    ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
}

// What was printed may not have arrived, on a full disk for example.
void finishOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw tool::Error(std::string("cannot write standard output: ") + std::strerror(errno));
}

} // namespace

int main(int argc, char** argv) {
    try {
        reuseBuffers();
        tool::guardTemporaryFiles();
        const int code = tool::runCommandLine(argc, argv);
        finishOutput();
        return code;
    } catch (const tool::UsageError& error) {
        return complain(error.what(), usage);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", failure);
    } catch (const std::exception& error) {
        return complain(error.what(), failure);
    }
}
