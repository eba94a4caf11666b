// Memory between two inaccessible pages: a byte read or written outside ends the test.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>

#include "support/pages.h"

namespace support {

enum class Place { atStart, atEnd }; // right behind the first guard page, or right before the second

// Pages for one buffer at a time, so that a test of many sizes maps them once.
class GuardedMemory {
public:
    explicit GuardedMemory(std::size_t capacity)
        : size_((capacity + Pages::size - 1) / Pages::size * Pages::size), pages_(size_ + 2 * Pages::size) {
        pages_.open(Pages::size, size_);
    }

    // A buffer `shift` bytes away from its guard page. What is left around it is filled with canaries.
    [[nodiscard]] std::span<std::uint8_t> place(std::size_t size, Place place, std::size_t shift = 0) {
        if (size + shift > size_) throw std::bad_alloc();
        start_ = place == Place::atStart ? shift : size_ - size - shift;
        placedSize_ = size;
        for (const auto side : {before(), behind()}) std::fill(side.begin(), side.end(), canary);
        return {placed(), size};
    }

    // Whether nothing around the buffer placed last was written.
    [[nodiscard]] bool canariesLive() const {
        for (const auto side : {before(), behind()})
            if (std::count(side.begin(), side.end(), canary) != std::ssize(side)) return false;
        return true;
    }

private:
    static constexpr std::size_t watched = 128; // bytes on either side that hold canaries
    static constexpr std::uint8_t canary = 0xC5;

    [[nodiscard]] std::uint8_t* placed() const { return pages_.data() + Pages::size + start_; }
    [[nodiscard]] std::span<std::uint8_t> before() const {
        const std::size_t count = std::min(watched, start_);
        return {placed() - count, count};
    }
    [[nodiscard]] std::span<std::uint8_t> behind() const {
        return {placed() + placedSize_, std::min(watched, size_ - start_ - placedSize_)};
    }

    std::size_t size_; // between the guard pages
    Pages pages_;
    std::size_t start_ = 0, placedSize_ = 0; // of the buffer placed last
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
