// Memory that nobody may touch, but for what is opened of it.
#pragma once
#if defined(_WIN32)
#include <windows.h>
#elif !defined(__EMSCRIPTEN__)
#include <sys/mman.h>
#endif

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>

namespace support {

#if defined(__EMSCRIPTEN__)

class Pages {
public:
    static constexpr std::size_t size = 4096;

    explicit Pages(std::size_t bytes) : bytes_(std::make_unique<std::uint8_t[]>(bytes)) {
        [[maybe_unused]] static const int once = std::puts("Skipped: protected pages, which are not here");
    }
    [[nodiscard]] std::uint8_t* data() const { return bytes_.get(); }
    void open(std::size_t, std::size_t) {}

private:
    std::unique_ptr<std::uint8_t[]> bytes_;
};

#else

class Pages {
public:
    static constexpr std::size_t size = 4096; // of one

    explicit Pages(std::size_t bytes) : bytes_(bytes) {
#if defined(_WIN32)
        void* memory = VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
        if (!memory) throw std::bad_alloc();
#else
        void* memory = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
#endif
        start_ = static_cast<std::uint8_t*>(memory);
    }
    ~Pages() {
#if defined(_WIN32)
        VirtualFree(start_, 0, MEM_RELEASE);
#else
        munmap(start_, bytes_);
#endif
    }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    [[nodiscard]] std::uint8_t* data() const { return start_; }

    void open(std::size_t from, std::size_t bytes) {
        if (bytes == 0) return;
#if defined(_WIN32)
        if (!VirtualAlloc(start_ + from, bytes, MEM_COMMIT, PAGE_READWRITE)) throw std::bad_alloc();
#else
        if (mprotect(start_ + from, bytes, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
#endif
    }

private:
    std::size_t bytes_;
    std::uint8_t* start_;
};

#endif

} // namespace support
