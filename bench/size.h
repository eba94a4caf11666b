#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

struct Size {
    std::uint32_t width, height;

    std::size_t pixels() const { return std::size_t{width} * height; }
};
inline std::string text(Size size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
} // "640x480"

} // namespace bench
