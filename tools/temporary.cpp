#include "temporary.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
#include <thread>
#include <unistd.h>

namespace tool {

namespace {

std::mutex mutex;
std::set<std::string> files; // guarded by the mutex

// Waits in a thread of its own, where a signal finds it able to lock and to unlink.
void endWhenSignalled(sigset_t signals) {
    int signal = 0;
    if (::sigwait(&signals, &signal) != 0) return;
    const std::lock_guard lock(mutex); // to the end: no file is made or renamed any more
    for (const std::string& file : files) ::unlink(file.c_str());
    std::signal(signal, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    std::raise(signal);
}

} // namespace

void guardTemporaryFiles() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) sigaddset(&signals, signal); // as nohup and shells ask for
    }
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread(endWhenSignalled, signals).detach();
}

int makeTemporaryFile(std::string& pattern) {
    const std::lock_guard lock(mutex);
    const int descriptor = ::mkstemp(pattern.data());
    if (descriptor >= 0) files.insert(pattern);
    return descriptor;
}

void discardTemporaryFile(const std::string& path) {
    const std::lock_guard lock(mutex);
    if (files.erase(path) > 0) ::unlink(path.c_str());
}

std::size_t keepTemporaryFiles(const std::vector<std::pair<std::string, std::string>>& fromTo) {
    const std::lock_guard lock(mutex);
    std::size_t kept = 0;
    for (; kept < fromTo.size(); ++kept) {
        const auto& [from, to] = fromTo[kept];
        if (std::rename(from.c_str(), to.c_str()) != 0) break;
        files.erase(from);
    }
    return kept;
}

} // namespace tool
