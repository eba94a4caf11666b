// The catalogue's matrix in steps of 1/1024, for one pixel.
#pragma once
#include "bench/plain/pixels.h"
#include "catalogue/colour_matrix.h"

namespace bench {
namespace {

// From a channel's sum to its value: 8 bits, 16 bits, and the 12Packed samples of OrvImageTransform, which wrap around.
inline u8 clamped8(int sum) { return clamp(sum >> 10); }
inline u16 clamped16(int sum) {
    const int v = sum >> 10;
    return static_cast<u16>(v < 0 ? 0 : v > 65535 ? 65535 : v);
}
inline u8 wrapped8(int sum) { return static_cast<u8>(sum < 0 ? 0 : sum >> 10); }

template <auto rule, class Pixel> Pixel corrected(Pixel p) {
    constexpr auto step = [](int i) { return static_cast<int>(catalogue::colourMatrix[i] * 1024); };
    return {rule(step(0) * p.r + step(1) * p.g + step(2) * p.b), rule(step(3) * p.r + step(4) * p.g + step(5) * p.b),
            rule(step(6) * p.r + step(7) * p.g + step(8) * p.b)};
}

} // namespace
} // namespace bench
