// Where threads wait for each other, to begin at once.
#pragma once
#include <atomic>
#include <cstddef>
#include <thread>

namespace support {

// Without sleep: they race better, and std::latch of g++ 12 sometimes sleeps forever on Windows.
class StartLine {
public:
    explicit StartLine(std::size_t threads) : missing_(threads) {}

    void wait() {
        --missing_;
        while (missing_ > 0) std::this_thread::yield();
    }

private:
    std::atomic<std::size_t> missing_;
};

} // namespace support
