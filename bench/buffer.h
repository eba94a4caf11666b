// Page-aligned buffers filled with noise, so that no branch or page of zeros flatters anybody.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>

namespace bench {

class Buffer {
public:
    explicit Buffer(std::size_t size) : bytes_(static_cast<std::uint8_t*>(std::aligned_alloc(4096, roundUp(size)))) {
        std::minstd_rand noise;
        for (std::size_t i = 0; i < size; ++i) bytes_.get()[i] = static_cast<std::uint8_t>(noise() >> 8);
    }
    std::uint8_t* data() const { return bytes_.get(); }

private:
    struct Free {
        void operator()(void* p) const { std::free(p); }
    };
    static std::size_t roundUp(std::size_t size) { return (size + 4096) / 4096 * 4096; }

    std::unique_ptr<std::uint8_t, Free> bytes_;
};

} // namespace bench
