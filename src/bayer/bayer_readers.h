// Sample readers of the mosaics of whole bytes. (Bit-packed ones: kernels/packed_samples.h.)
#pragma once
#include "kernels/mosaic2x2.h"
#include "kernels/words.h"

namespace kel {
namespace {

using Raw8Samples = PlainSamples<Bytes>;

// One byte of each word.
template <int byte> struct Apart16Byte : Reader<16> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = false;
    template <int from> static INLINE Apart<Bytes> samples(const u8* s) {
        Bytes bytes[4];
        load4(s + 2 * from, bytes);
        return {bytes[byte], bytes[2 + byte]};
    }
};

// The first byte of each word: the top eight bits of a big-endian sample.
struct Raw16FirstByte : Reader<16> {
    using WithColumnsApart = Apart16Byte<0>;
    static constexpr int group = 2;
    static constexpr bool unpackOnce = true;
    template <int from> static INLINE Bytes samples(const u8* s) { return bytesOfWords<0>(s + 2 * from); }
};

// Words shifted to the top.
template <Endian endian> struct Raw16Samples : Reader<16> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = separatesAsItLoads;
    int shift;
    INLINE explicit Raw16Samples(int by) : shift(by) {}
    template <int from> INLINE Halves samples(const u8* s) const { return loadShifted<endian>(s + 2 * from, shift); }
};

// The top eight of the used bits.
template <Endian endian> struct Raw16TopBits : Raw16Samples<endian> {
    static constexpr bool unpackOnce = true;
    using Raw16Samples<endian>::Raw16Samples;
    using Unshifted = Apart16Byte<endian == Endian::little>; // where columns are apart
    template <int from> INLINE Bytes samples(const u8* s) const {
        return highBytes(Raw16Samples<endian>::template samples<from>(s));
    }
    INLINE Apart<Bytes> apart(const u8* s) const {
        constexpr int high = endian == Endian::little, low = 1 - high;
        Bytes bytes[4];
        load4(s, bytes);
        return {highBytes(bytes[high], bytes[low], this->shift),
                highBytes(bytes[2 + high], bytes[2 + low], this->shift)};
    }
};

} // namespace
} // namespace kel
