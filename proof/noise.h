// A pool of bytes of many characters; buffers are cut out of it anywhere.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "proof/random.h"

namespace proof {

class Noise {
public:
    // Any `longest` bytes can be taken.
    Noise(std::uint64_t seed, std::size_t longest) : bytes_(starts + longest) {
        Random random(seed);
        for (std::size_t begin = 0; begin < bytes_.size(); begin += stretch) {
            const std::uint32_t character = random.below(8);
            const auto constant = static_cast<std::uint8_t>(random.next());
            const std::size_t end = begin + stretch < bytes_.size() ? begin + stretch : bytes_.size();
            for (std::size_t i = begin; i < end; ++i) bytes_[i] = byteOf(character, constant, i, random.next());
        }
    }

    const std::uint8_t* take(Random& random) const { return &bytes_[random.below(starts)]; }

private:
    static constexpr std::size_t stretch = 8192; // bytes of one character
    static constexpr std::uint32_t starts = 1 << 18;

    static std::uint8_t byteOf(std::uint32_t character, std::uint8_t constant, std::size_t i, std::uint64_t random) {
        const auto byte = static_cast<std::uint8_t>(random);
        const bool rarely = random >> 60 == 0;
        switch (character) {
        case 0: return random & 0x100 ? 255 : 0;                                                // extremes
        case 1: return random & 0x300 ? byte : random & 0x400 ? 255 : 0;                        // some of them
        case 2: return rarely ? byte : constant;                                                // flat
        case 3: return static_cast<std::uint8_t>(i + constant);                                 // a gradient
        case 4: return static_cast<std::uint8_t>(i % 2 == 0 ? byte : byte >> 4 & 0x0F);         // words of 12 bits
        case 5: return static_cast<std::uint8_t>(rarely ? byte : constant + (random >> 8) % 3); // almost flat
        default: return byte;
        }
    }

    std::vector<std::uint8_t> bytes_;
};

} // namespace proof
