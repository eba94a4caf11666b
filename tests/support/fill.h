// What buffers hold before a call.
#pragma once
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace support {

using Bytes = std::vector<std::uint8_t>;
using Random = std::minstd_rand;

// The same in every run, unless --gtest_random_seed asks for another.
[[nodiscard]] inline unsigned seed() { return static_cast<unsigned>(GTEST_FLAG_GET(random_seed)); }

enum class Contents {
    noise, // with many bytes at the ends of their range, where sums overflow and clamps bite
    zeros,
    ones,     // all bits set
    extremes, // 0 and 255 in every neighbourhood
    gradient
};
constexpr Contents plainContents[] = {Contents::zeros, Contents::ones, Contents::extremes, Contents::gradient};

inline std::uint8_t noiseByte(Random& random) {
    const auto value = random() >> 8;
    if (value % 4 == 0) return value & 0x100 ? 255 : 0;
    return static_cast<std::uint8_t>(value >> 12);
}

inline std::uint8_t byteOf(Contents contents, std::size_t i, Random& random) {
    switch (contents) {
    case Contents::noise: return noiseByte(random);
    case Contents::zeros: return 0;
    case Contents::ones: return 255;
    case Contents::extremes: return random() & 0x100 ? 255 : 0;
    case Contents::gradient: break;
    }
    return static_cast<std::uint8_t>(i);
}

[[nodiscard]] inline Bytes filled(std::size_t size, Contents contents, Random& random) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = byteOf(contents, i, random);
    return bytes;
}

} // namespace support
