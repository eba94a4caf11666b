// Samples of 16 bits in memory, of either byte order.
#pragma once
#include "kernels/pixels.h"

namespace kel {
namespace {

enum class Endian { little, big };

// The even (0) or odd (1) bytes of N words.
template <int odd> INLINE Bytes bytesOfWords(const u8* s) {
    return unzip<odd>(loadLanes(s, 2 * L), loadLanes(s + L, 2 * L));
}

// N words shifted left, which makes samples with fewer bits used MSB-aligned.
template <Endian endian> INLINE Words shifted(Words w, int shift) {
    if constexpr (endian == Endian::big) w = swapped(w);
    return w << static_cast<u16>(shift);
}
template <Endian endian> INLINE Halves loadShifted(const u8* s, int shift) {
    const Halves words = loadHalves(s);
    return {shifted<endian>(words.a, shift), shifted<endian>(words.b, shift)};
}

} // namespace
} // namespace kel
