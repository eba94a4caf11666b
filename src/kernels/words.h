// Samples of 16 bits in memory, of either byte order.
#pragma once
#include "kernels/pixels.h"

namespace kel {
namespace {

enum class Endian { little, big };

// The even (0) or odd (1) bytes of N words.
template <int odd> INLINE Bytes bytesOfWords(const u8* s) {
    const Halves words{load<Words>(s), load<Words>(s + N)};
    return inRow(odd ? highBytes(words) : lowBytes(words));
}

// N words shifted left, which makes samples with fewer bits used MSB-aligned.
template <Endian endian> INLINE Words shifted(Words w, int shift) {
    if constexpr (endian == Endian::big) w = swapped(w);
    return shiftUp(w, shift);
}
template <Endian endian> INLINE Halves loadShifted(const u8* s, int shift) {
    const Halves words = loadHalves(s);
    return {shifted<endian>(words.a, shift), shifted<endian>(words.b, shift)};
}

} // namespace
} // namespace kel
