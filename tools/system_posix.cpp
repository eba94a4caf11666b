#include <csignal>
#include <fcntl.h>
#include <malloc.h>
#include <thread>
#include <unistd.h>

#include "system.h"

namespace tool {

namespace {

// Waits in a thread of its own, where a signal finds it able to lock and to remove files.
void endWhenSignalled(sigset_t signals, void (*cleanUp)()) {
    int signal = 0;
    if (::sigwait(&signals, &signal) != 0) return;
    cleanUp();
    std::signal(signal, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    std::raise(signal);
}

} // namespace

int openToRead(const std::filesystem::path& path) { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }
int openToWrite(const std::filesystem::path& path) { return ::open(path.c_str(), O_WRONLY | O_CLOEXEC); }
int createFile(const std::filesystem::path& path, std::filesystem::perms permissions) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, static_cast<mode_t>(permissions));
}
int duplicate(int descriptor) { return ::dup(descriptor); }

void whenInterrupted(void (*cleanUp)()) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) sigaddset(&signals, signal); // as nohup and shells ask for
    }
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread(endWhenSignalled, signals, cleanUp).detach();
}

bool errorsAreOnTerminal() { return ::isatty(STDERR_FILENO) == 1; }

void reuseBuffers() {
    ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
    ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
}

} // namespace tool
