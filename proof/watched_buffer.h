// A buffer among bytes that must stay as they are.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>

namespace proof {

class WatchedBuffer {
public:
    static constexpr std::size_t watched = 64; // bytes on either side

    explicit WatchedBuffer(std::size_t longest)
        : memory_(static_cast<std::uint8_t*>(::operator new (longest + 3 * watched, std::align_val_t{watched}))) {}
    ~WatchedBuffer() { ::operator delete (memory_, std::align_val_t{watched}); }
    WatchedBuffer(const WatchedBuffer&) = delete;
    WatchedBuffer& operator=(const WatchedBuffer&) = delete;

    // The contents, `shift` bytes behind a multiple of 64, among the first bytes of `around`, which must stay.
    std::uint8_t* place(std::span<const std::uint8_t> contents, std::size_t shift, const std::uint8_t* around) {
        around_ = around;
        buffer_ = {memory_ + watched + shift % watched, contents.size()};
        std::memcpy(buffer_.data() - watched, around, watched);
        if (!contents.empty()) std::memcpy(buffer_.data(), contents.data(), contents.size());
        std::memcpy(buffer_.data() + buffer_.size(), around + watched, watched);
        return buffer_.data();
    }

    std::span<std::uint8_t> bytes() const { return buffer_; }
    bool surroundingsIntact() const {
        return std::memcmp(buffer_.data() - watched, around_, watched) == 0 &&
               std::memcmp(buffer_.data() + buffer_.size(), around_ + watched, watched) == 0;
    }

private:
    std::uint8_t* memory_;
    std::span<std::uint8_t> buffer_;
    const std::uint8_t* around_ = nullptr;
};

} // namespace proof
