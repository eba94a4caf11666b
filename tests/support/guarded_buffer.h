// Memory between two inaccessible pages: a byte read or written outside ends the test.
#pragma once
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>

namespace support {

enum class Place { atStart, atEnd }; // right behind the first guard page, or right before the second

// Pages for one buffer at a time, so that a test of many sizes maps them once.
class GuardedMemory {
public:
    explicit GuardedMemory(std::size_t capacity) : pages_((capacity + page - 1) / page * page) {
        void* memory = mmap(nullptr, pages_ + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::bad_alloc();
        mapping_ = static_cast<std::uint8_t*>(memory);
        if (pages_ > 0 && mprotect(mapping_ + page, pages_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    ~GuardedMemory() { munmap(mapping_, pages_ + 2 * page); }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    // A buffer `shift` bytes away from its guard page. What is left around it is filled with canaries.
    [[nodiscard]] std::span<std::uint8_t> place(std::size_t size, Place place, std::size_t shift = 0) {
        if (size + shift > pages_) throw std::bad_alloc();
        start_ = place == Place::atStart ? shift : pages_ - size - shift;
        size_ = size;
        for (const auto side : {before(), behind()}) std::ranges::fill(side, canary);
        return {placed(), size};
    }

    // Whether nothing around the buffer placed last was written.
    [[nodiscard]] bool canariesLive() const {
        const auto live = [](std::uint8_t byte) { return byte == canary; };
        return std::ranges::all_of(before(), live) && std::ranges::all_of(behind(), live);
    }

private:
    static constexpr std::size_t page = 4096, watched = 128; // bytes on either side that hold canaries
    static constexpr std::uint8_t canary = 0xC5;

    [[nodiscard]] std::uint8_t* placed() const { return mapping_ + page + start_; }
    [[nodiscard]] std::span<std::uint8_t> before() const {
        const std::size_t count = std::min(watched, start_);
        return {placed() - count, count};
    }
    [[nodiscard]] std::span<std::uint8_t> behind() const {
        return {placed() + size_, std::min(watched, pages_ - start_ - size_)};
    }

    std::size_t pages_;
    std::uint8_t* mapping_;
    std::size_t start_ = 0, size_ = 0; // of the buffer placed last
};

// One buffer with memory of its own.
class GuardedBuffer {
public:
    explicit GuardedBuffer(std::size_t size, Place place = Place::atEnd)
        : memory_(size), bytes_(memory_.place(size, place)) {}

    [[nodiscard]] std::uint8_t* data() const { return bytes_.data(); }
    [[nodiscard]] std::span<std::uint8_t> bytes() const { return bytes_; }

private:
    GuardedMemory memory_;
    std::span<std::uint8_t> bytes_;
};

} // namespace support
