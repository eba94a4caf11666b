// Readers of the mono sources of whole bytes. (Bit-packed ones: kernels/packed_samples.h.)
#pragma once
#include "kernels/packed_samples.h"
#include "kernels/runs.h"
#include "kernels/words.h"

namespace kel {
namespace {

struct Mono8Reader : Reader<8> {
    static INLINE Grey get(const u8* s) { return {load(s)}; }
};

// 16 bits used: the high byte is the grey value.
template <Endian endian> struct Mono16MainByte : Reader<16> {
    static INLINE Grey get(const u8* s) { return {bytesOfWords<endian == Endian::little>(s)}; }
};

// Grey in colour: blue goes up one step by bit 6 of a fraction byte and red by bit 7, so that a display shows more than
// 256 grey levels.
INLINE Rgb tinted(Bytes main, Bytes fraction) {
    return {addSaturated(main, fraction >> 7), main, addSaturated(main, fraction >> 6 & 1)};
}

// 16 bits used, in colour. (In the luma outputs the steps vanish: 77 + 29 and 54 + 18 + 128 stay below 256.)
// The big-endian fraction is the sample's low byte; the little-endian one is the byte after the main byte, which
// belongs to the next sample, so one byte behind the last sample is read.
template <Endian endian> struct Mono16Tinted : Reader<16> {
    static constexpr int beyond = endian == Endian::little;
    static INLINE Rgb get(const u8* s) {
        return tinted(bytesOfWords<endian == Endian::little>(s),
                      endian == Endian::little ? bytesOfWords<1>(s + 1) : bytesOfWords<1>(s));
    }
};

// Fewer bits used: shifted to the top. In the order of lanes, and in that of memory.
template <Endian endian> struct Mono16Shifted : Reader<16> {
    int shift;
    INLINE explicit Mono16Shifted(int by) : shift(by) {}
    INLINE Grey16 get(const u8* s) const { return {loadShifted<endian>(s, shift)}; }
};
template <Endian endian> struct Mono16ShiftedRow : Mono16Shifted<endian> {
    using Mono16Shifted<endian>::Mono16Shifted;
    INLINE GreyRow16 get(const u8* s) const {
        return {shifted<endian>(load<Words>(s), this->shift), shifted<endian>(load<Words>(s + N), this->shift)};
    }
};

// The same, tinted by the sample's own fraction in either byte order, or rounded.
template <Endian endian> struct Mono16ShiftedTinted : Mono16Shifted<endian> {
    using Mono16Shifted<endian>::Mono16Shifted;
    INLINE Rgb get(const u8* s) const {
        const Halves words = Mono16Shifted<endian>::get(s).v;
        return tinted(highBytes(words), lowBytes(words));
    }
};
template <Endian endian> struct Mono16ShiftedRounded : Mono16ShiftedRow<endian> {
    using Mono16ShiftedRow<endian>::Mono16ShiftedRow;
    INLINE GreyRow16 get(const u8* s) const {
        const GreyRow16 words = Mono16ShiftedRow<endian>::get(s);
        return {rounded(words.a), rounded(words.b)};
    }

private:
    // Half a step more, for what is cut to eight bits; 255 stays.
    static INLINE Words rounded(Words w) {
        const Words most = fill(0xFFFF - 0x80);
        return (w < most ? w : most) + 0x80;
    }
};

} // namespace
} // namespace kel
