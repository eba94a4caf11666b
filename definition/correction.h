// Colour correction by a 3x3 matrix, for one pixel.
//
// Each channel is its row of the matrix times (R, G, B), in steps of 1/1024, in 32 bits that wrap around. What becomes of
// the sum depends on the source and the output.
#pragma once
#include "definition/definition.h"
#include "definition/outputs.h"

namespace definition {
namespace {

class Matrix {
public:
    explicit Matrix(const float* matrix) {
        for (int i = 0; i < 9; ++i) steps_[i] = fixedPoint(matrix[i]);
    }
    template <auto rule, class Pixel> Pixel correct(Pixel p) const {
        return {rule(sum(0, p)), rule(sum(3, p)), rule(sum(6, p))};
    }

private:
    template <class Pixel> i32 sum(int row, Pixel p) const {
        const auto product = [&](int i, int sample) {
            return static_cast<u32>(steps_[row + i]) * static_cast<u32>(sample);
        };
        return static_cast<i32>(product(0, p.r) + product(1, p.g) + product(2, p.b));
    }

    i32 steps_[9];
};

// Bytes: bits 10 to 25 of the sum, as a signed word, clamped.
inline u8 byteOfSum(i32 sum) { return clamp(static_cast<i16>(sum >> 10)); }

// Words.
inline u16 wordOfSum(i32 sum) {
    const i32 v = sum >> 10;
    return static_cast<u16>(v < 0 ? 0 : v > 0xFFFF ? 0xFFFF : v);
}

// Bytes of 12Packed samples: what fits in a word keeps its low byte.
inline u8 lowByteOfSum(i32 sum) {
    const i32 v = sum >> 10;
    return static_cast<u8>(v < 0 ? 0 : v > 0xFFFF ? 255 : v);
}

} // namespace
} // namespace definition
