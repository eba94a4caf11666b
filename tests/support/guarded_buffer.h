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
        const std::size_t offset = place == Place::atStart ? shift : pages_ - size - shift;
        placed_ = {mapping_ + page + offset, size};
        for (const auto side : {before(), behind()}) std::ranges::fill(side, canary);
        return placed_;
    }

    // Whether nothing around the buffer placed last was written.
    [[nodiscard]] bool canariesLive() const {
        return std::ranges::count(before(), canary) == std::ssize(before()) &&
               std::ranges::count(behind(), canary) == std::ssize(behind());
    }

private:
    static constexpr std::size_t page = 4096, watched = 128; // bytes on either side that hold canaries
    static constexpr std::uint8_t canary = 0xC5;

    [[nodiscard]] std::span<std::uint8_t> before() const {
        const auto room = static_cast<std::size_t>(placed_.data() - mapping_ - page);
        const std::size_t count = std::min(watched, room);
        return {placed_.data() - count, count};
    }
    [[nodiscard]] std::span<std::uint8_t> behind() const {
        std::uint8_t* end = placed_.data() + placed_.size();
        const auto room = static_cast<std::size_t>(mapping_ + page + pages_ - end);
        return {end, std::min(watched, room)};
    }

    std::size_t pages_;
    std::uint8_t* mapping_;
    std::span<std::uint8_t> placed_{};
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
