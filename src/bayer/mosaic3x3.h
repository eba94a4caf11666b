// The 3x3 demosaic: bilinear, from the neighbourhood of each pixel. All means are truncated.
//
//     a u b      a row has one colour of its own (red or blue, at every other column) besides green
//     l c r
//     e d f      at a site of the row's colour             at a green site
//                own   = c                                 own   = (l + r) >> 1
//                other = (a + b + e + f) >> 2              other = (u + d) >> 1
//                green = (l + r + u + d) >> 2              green = (2 c + b + e) >> 2
//
// Green sites use one diagonal only, the same in every phase.
#pragma once
#include "kernels/mosaic2x2.h"

namespace kel {
namespace {

// Samples of a row as words: those of every second column, from the one left of a block on.
struct Columns {
    Words left, here, right, right2;

    INLINE explicit Columns(const u8* c)
        : left(firstOfPairs(load(c - 1))), here(firstOfPairs(load(c))), right(secondOfPairs(load(c))),
          right2(secondOfPairs(load(c + 1))) {}
};

// The even and the odd ones of N pixels.
struct EvenOdd {
    Words even, odd;
};
struct EvenOddRgb {
    EvenOdd r, g, b;
};
INLINE Rgb to8(const EvenOddRgb& p) {
    const auto joined = [](EvenOdd v) { return as<Bytes>(v.even | v.odd << 8); };
    return {joined(p.r), joined(p.g), joined(p.b)};
}
template <Weights k> INLINE Split weigh(const EvenOddRgb& p) {
    if constexpr (splitPart(1) == 0) return weigh<k>(to8(p));
    const auto sum = [](Words r, Words g, Words b) {
        return times(r, k.r) + times(g, k.g) + times(b, k.b) + fill(k.add);
    };
    return {sum(p.r.even, p.g.even, p.b.even), sum(p.r.odd, p.g.odd, p.b.odd)};
}

// c: the first of N pixels; siteFirst: whether it is a site of the row's own colour.
template <bool redRow, bool siteFirst> INLINE EvenOddRgb demosaic3x3(const u8* c, ptrdiff_t pitch) {
    const Columns up(c - pitch), row(c), down(c + pitch);
    const Words atLeft = up.left + down.left, atHere = up.here + down.here, atRight = up.right + down.right;
    EvenOdd own, green, other;
    if constexpr (siteFirst) {
        own = {row.here, (row.here + row.right2) >> 1};
        green = {(row.left + row.right + atHere) >> 2, (2 * row.right + up.right2 + down.here) >> 2};
        other = {(atLeft + atRight) >> 2, atRight >> 1};
    } else {
        own = {(row.left + row.right) >> 1, row.right};
        green = {(2 * row.here + up.right + down.left) >> 2, (row.here + row.right2 + atRight) >> 2};
        other = {atHere >> 1, (atHere + up.right2 + down.right2) >> 2};
    }
    return redRow ? EvenOddRgb{own, green, other} : EvenOddRgb{other, green, own};
}

// The inner pixels of a row of less than N of them, through a buffer.
template <bool redRow, bool siteFirst, class W>
__attribute__((noinline)) void narrowRow3x3(u8* d, const u8* s, size_t width, const W& write) {
    constexpr ptrdiff_t pitch = N + 2;
    u8 rows[3 * pitch] = {};
    for (ptrdiff_t k = 0; k < 3; ++k) std::memcpy(rows + k * pitch, s + (k - 1) * static_cast<ptrdiff_t>(width), width);
    putPart(write, d + W::bytes, demosaic3x3<redRow, siteFirst>(rows + pitch + 1, pitch), width - 2);
}

template <bool redRow, bool siteFirst, class W> INLINE void row3x3(u8* d, const u8* s, size_t width, const W& write) {
    if (width >= N + 2) {
        const size_t last = width - 1 - N; // of the last block, which steps back; all of them begin at an odd column
        for (size_t x = 1;; x = x + N < last ? x + N : last) {
            write.put(d + x * W::bytes, demosaic3x3<redRow, siteFirst>(s + x, static_cast<ptrdiff_t>(width)));
            if (x == last) break;
        }
    } else if (width > 2) {
        narrowRow3x3<redRow, siteFirst>(d, s, width, write);
    }
    // Right border first: at a width of 2 both columns become what the first one held.
    std::memcpy(d + (width - 1) * W::bytes, d + (width - 2) * W::bytes, W::bytes);
    std::memcpy(d, d + W::bytes, W::bytes);
}

template <class W> void mosaic3x3Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase) {
    const size_t pitch = width * W::bytes;
    std::memset(d, 0, pitch);
    for (size_t y = 1; y + 1 < height; ++y) {
        const bool redRow = (phase / 2 + y) % 2 == 0, siteFirst = (phase % 2 == 1) == redRow; // in the odd columns
        u8* to = d + y * pitch;
        const u8* from = s + y * width;
        if (redRow)
            siteFirst ? row3x3<true, true>(to, from, width, W()) : row3x3<true, false>(to, from, width, W());
        else
            siteFirst ? row3x3<false, true>(to, from, width, W()) : row3x3<false, false>(to, from, width, W());
    }
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
    std::memcpy(d, d + pitch, pitch);
}

template <class Set> constexpr ByOutput<Mosaic> mosaics3x3(Set outputs) {
    return mosaicTable<Mosaic>(outputs, []<u32 output>() { return mosaic3x3Kernel<WriterOf<output>>; });
}

} // namespace
} // namespace kel
