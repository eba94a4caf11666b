// How samples and pixels of one kind follow each other: in groups of so many, of so many bytes. pixel<k>() is number k of
// the group at s.
#pragma once
#include <utility>

#include "definition/outputs.h"

namespace definition {
namespace {

template <int pixelsOfGroup, int bytesOfGroup> struct Groups {
    static constexpr int group = pixelsOfGroup, bytes = bytesOfGroup;
};

struct Byte8 : Groups<1, 1> {
    template <int> static Grey8 pixel(const u8* s) { return {*s}; }
};

// 16-bit words, of which the lower bits are used; they are shifted to the top.
template <int bitsUsed, bool bigEndian> struct Word : Groups<1, 2> {
    template <int> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((bigEndian ? s[0] << 8 | s[1] : s[1] << 8 | s[0]) << (16 - bitsUsed))};
    }
};
// Only the top eight of the used bits.
template <int bitsUsed, bool bigEndian> struct TopOfWord : Groups<1, 2> {
    template <int> static Grey8 pixel(const u8* s) { return {top(Word<bitsUsed, bigEndian>::template pixel<0>(s).v)}; }
};

// The "p" formats are one stream of bits, the lowest ones first. (A sample lies in two bytes.)
struct Bits10p : Groups<4, 5> {
    template <int k> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((s[k] | s[k + 1] << 8) << (6 - 2 * k) & 0xFFC0)};
    }
};
struct Bits12p : Groups<2, 3> {
    template <int k> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((s[k] | s[k + 1] << 8) << (4 - 4 * k) & 0xFFF0)};
    }
};
// 12Packed: bytes 0 and 2 of three are the top bits of two samples, byte 1 holds their low nibbles, the first one's below.
struct Whole12Packed : Groups<2, 3> {
    template <int k> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>(s[2 * k] << 8 | (k == 0 ? s[1] << 4 & 0xF0 : s[1] & 0xF0))};
    }
};
struct Top12Packed : Groups<2, 3> {
    template <int k> static Grey8 pixel(const u8* s) { return {s[2 * k]}; }
};

// Calls f(k) with the numbers of a group as constants.
template <class Source, class F> void forGroup(F f) {
    [&]<int... k>(std::integer_sequence<int, k...>) { (f(std::integral_constant<int, k>()), ...); }
    (std::make_integer_sequence<int, Source::group>());
}

// Calls put(i, pixel) for each of n pixels; the last group may be incomplete.
template <class Source, class Put> void forEachPixel(const u8* __restrict s, size_t n, Put put) {
    const size_t groups = n / Source::group, rest = n % Source::group;
    for (size_t i = 0; i < groups; ++i)
        forGroup<Source>([&](auto k) { put(Source::group * i + k, Source::template pixel<k>(s + Source::bytes * i)); });
    if constexpr (Source::group > 1)
        forGroup<Source>([&](auto k) {
            if (k < rest) put(Source::group * groups + k, Source::template pixel<k>(s + Source::bytes * groups));
        });
}

} // namespace
} // namespace definition
