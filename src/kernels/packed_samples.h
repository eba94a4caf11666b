// Packed samples of 10 and 12 bits, shared by the mono readers and the mosaics: MSB-aligned in 16-bit words, or the top
// eight bits alone (Top12Packed).
//
// `from`: skip that many samples (0 or 1) first. No byte is touched that does not hold a wanted sample.
#pragma once
#include "kernels/pixels.h"
#include "kernels/runs.h"

namespace kel {
namespace {

// 10p and 12p (the PFNC's "p"), a little-endian bit stream. The 16-bit word at byte floor(i * bits / 8) holds all of sample i;
// multiplying it by scale(i) moves the sample to the top, and the mask drops what is left of its neighbour.
//
//   10p   byte    0        1        2        3        4
//                 aaaaaaaa bbbbbbaa ccccbbbb ddcccccc dddddddd
//   12p   byte    0        1        2
//                 aaaaaaaa bbbbaaaa bbbbbbbb
struct Layout10p {
    static constexpr int bits = 10, group = 4; // samples until the phase repeats
    static constexpr u16 mask = 0xFFC0;
    static constexpr int scale(int i) { return 64 >> 2 * (i % 4); }
};
struct Layout12p {
    static constexpr int bits = 12, group = 2;
    static constexpr u16 mask = 0xFFF0;
    static constexpr int scale(int i) { return i % 2 ? 1 : 16; }
};

template <class Layout> struct BitStreamSamples : Reader<Layout::bits> {
    static constexpr int group = Layout::group;
    static constexpr bool unpackOnce = true;

    template <int from = 0> static INLINE Halves samples(const u8* s) {
        return {half<from, from>(s), half<from, from + L / 2>(s)};
    }
    static INLINE Grey16 get(const u8* s) { return {samples(s)}; }

private:
    static constexpr int byteOf(int i) { return i * Layout::bits / 8; }
    static constexpr bool liesInOneWord(int i) { return i * Layout::bits % 8 + Layout::bits <= 16; }
    static_assert(liesInOneWord(0) && liesInOneWord(1) && liesInOneWord(2) && liesInOneWord(3));

    // Samples first .. first + L / 2 - 1 of each lane. They fit in L bytes; the second half ends with the last sample's
    // word, so that nothing behind it is read.
    template <int from, int first> static INLINE Words half(const u8* s) {
        constexpr int start = first == from ? 0 : byteOf(L - 1 + from) + 2 - L;
        const Words words = wordsAt(s + start, L * Layout::bits / 8, [](int i) { return byteOf(first + i) - start; });
        return words * kept(scales<first>(Indices<N / 2>())) & Layout::mask;
    }
    template <int first, int... i> static INLINE Words scales(std::integer_sequence<int, i...>) {
        return Words{static_cast<u16>(Layout::scale(i + first))...};
    }
};

using Samples10p = BitStreamSamples<Layout10p>;
using Samples12p = BitStreamSamples<Layout12p>;

// 12Packed: bytes 0 and 2 of three hold the top bits of two samples, byte 1 their low nibbles, the first one's below.
constexpr int topByteOf(int i) { return i / 2 * 3 + i % 2 * 2; }

struct Top12Packed : Reader<12> {
    static constexpr bool separates = true;
    static constexpr int group = 2;
    static constexpr bool unpackOnce = true;

    template <int from = 0> static INLINE Bytes samples(const u8* s) {
        constexpr int start = topByteOf(L - 1 + from) + 1 - L; // of a second load, that ends with the last sample
        const Bytes a = loadLanes(s, L * 3 / 2), b = loadLanes(s + start, L * 3 / 2);
        return shuffle(a, b, [](int i) {
            const int byte = topByteOf(i + from);
            return byte < L ? byte : byte - start + L;
        });
    }
    static INLINE auto get(const u8* s) {
        if constexpr (separatesAsItLoads) {
            const Apart<Bytes> v = apart(s);
            return Apart{Grey{v.even}, Grey{v.odd}};
        } else {
            return Grey{samples(s)};
        }
    }
    static INLINE Apart<Bytes> apart(const u8* s) {
        Apart<Bytes> v;
        Bytes nibbles;
        load3(s, v.even, nibbles, v.odd);
        return v;
    }
};

// The same from images of even width, where columns are separated as they are loaded.
struct Apart12Packed : Reader<12> {
    static constexpr int group = 2;
    static constexpr bool unpackOnce = false;
    template <int from> static INLINE Apart<Bytes> samples(const u8* s) {
        const Apart<Bytes> v = Top12Packed::apart(s);
        if constexpr (from == 0) return v;
        return {v.odd, Top12Packed::apart(s + 3).even};
    }
};

struct Samples12Packed : Reader<12> {
    static constexpr bool separates = true;
    static constexpr int group = 2;
    static constexpr bool unpackOnce = true;

    template <int from = 0> static INLINE Halves samples(const u8* s) {
        return {half<from, from>(s), half<from, from + L / 2>(s)};
    }
    static INLINE auto get(const u8* s) {
        if constexpr (separatesAsItLoads) {
            Bytes even, nibbles, odd;
            load3(s, even, nibbles, odd);
            return Apart{DeepBytes{even, nibbles << 4}, DeepBytes{odd, nibbles & 0xF0}};
        } else {
            return Grey16{samples(s)};
        }
    }

private:
    static constexpr int nibblesOf(int i) { return i / 2 * 3 + 1; }
    static constexpr int endOf(int i) { return i % 2 ? topByteOf(i) + 1 : nibblesOf(i) + 1; }

    template <int from, int first> static INLINE Words half(const u8* s) {
        constexpr int start = first == from ? 0 : endOf(L - 1 + from) - L;
        const Bytes bytes = loadLanes(s + start, L * 12 / 8);
        const Words words = as<Words>(permute(bytes, [](int i) {
            const int sample = first + i / 2;
            return (i % 2 ? topByteOf(sample) : nibblesOf(sample)) - start;
        }));
        const Words firstOfTwo = as<Words>(maskWhere([](int i) { return (first + i / 2) % 2 == 0; }));
        return (words & 0xFF00) | (select(firstOfTwo, words << 4, words) & 0x00F0);
    }
};

} // namespace
} // namespace kel
