// Random numbers that are the same everywhere: splitmix64.
#pragma once
#include <cstdint>

namespace proof {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15U;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9U;
        z = (z ^ z >> 27) * 0x94D049BB133111EBU;
        return z ^ z >> 31;
    }
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>((next() >> 32) * limit >> 32); }
    std::uint32_t between(std::uint32_t first, std::uint32_t last) { return first + below(last - first + 1); }

private:
    std::uint64_t state_;
};

} // namespace proof
