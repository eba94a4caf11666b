// Page-aligned buffers filled with noise, so that no branch or page of zeros flatters anybody.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <random>

namespace bench {

class Buffer {
public:
    explicit Buffer(std::size_t size) : bytes_(static_cast<std::uint8_t*>(std::aligned_alloc(page, roundUp(size)))) {
        if (!bytes_) throw std::bad_alloc();
        std::mt19937_64 noise;
        for (std::size_t i = 0; i < roundUp(size); i += sizeof(std::uint64_t)) {
            const std::uint64_t word = noise();
            std::memcpy(data() + i, &word, sizeof word);
        }
    }
    std::uint8_t* data() const { return bytes_.get(); }

private:
    struct Free {
        void operator()(void* p) const { std::free(p); }
    };
    static constexpr std::size_t page = 4096;
    static std::size_t roundUp(std::size_t size) { return (size + page) / page * page; }

    std::unique_ptr<std::uint8_t, Free> bytes_;
};

} // namespace bench
