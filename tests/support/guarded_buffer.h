// Memory with an inaccessible page on either side: a byte read or written outside ends the test.
#pragma once
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>

namespace support {

enum class Place { atStart, atEnd }; // right behind the first guard page, or right before the second

class GuardedBuffer {
public:
    GuardedBuffer(std::size_t size, Place place) : pages_((size + page - 1) / page * page) {
        void* memory = mmap(nullptr, pages_ + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
        base_ = static_cast<std::uint8_t*>(memory);
        if (pages_ > 0 && mprotect(base_ + page, pages_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
        bytes_ = {base_ + page + (place == Place::atEnd ? pages_ - size : 0), size};
    }
    ~GuardedBuffer() { munmap(base_, pages_ + 2 * page); }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    std::uint8_t* data() const { return bytes_.data(); }
    std::span<std::uint8_t> bytes() const { return bytes_; }

private:
    static constexpr std::size_t page = 4096;
    std::size_t pages_;
    std::uint8_t* base_;
    std::span<std::uint8_t> bytes_;
};

} // namespace support
