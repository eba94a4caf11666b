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
#include "kernels/columns.h"
#include "kernels/mosaic2x2.h"

namespace kel {
namespace {

INLINE Bytes meanOf(Bytes v, Bytes w) { return mean(v, w); }
INLINE Bytes meanOf(Bytes v, Bytes w, Bytes x, Bytes y) { return mean(v, w, x, y); }
INLINE Words meanOf(Words v, Words w) { return (v + w) >> 1; }
INLINE Words meanOf(Words v, Words w, Words x, Words y) { return (v + w + (x + y)) >> 2; }

struct ColumnRgb {
    Words r, g, b;
};
template <> constexpr int pixelsIn<ColumnRgb> = N / 2;

INLINE Rgb colours(Bytes r, Bytes g, Bytes b) { return {r, g, b}; }
INLINE ColumnRgb colours(Words r, Words g, Words b) { return {r, g, b}; }

INLINE Rgb to8(const Apart<ColumnRgb>& p) {
    const auto joined = [](Words even, Words odd) { return as<Bytes>(even | odd << 8); };
    return {joined(p.even.r, p.odd.r), joined(p.even.g, p.odd.g), joined(p.even.b, p.odd.b)};
}
template <Weights k> INLINE Split weigh(const Apart<ColumnRgb>& p) {
    const auto sum = [](const ColumnRgb& c) {
        return times(c.r, k.r) + times(c.g, k.g) + times(c.b, k.b) + fill(k.add);
    };
    return {sum(p.even), sum(p.odd)};
}

template <bool redRow>
INLINE auto colouredSite(const Three<Column>& up, const Three<Column>& row, const Three<Column>& down) {
    const Column own = row.here, green = meanOf(row.left, row.right, up.here, down.here);
    const Column other = meanOf(up.left, down.left, up.right, down.right);
    return redRow ? colours(own, green, other) : colours(other, green, own);
}
template <bool redRow>
INLINE auto greenSite(const Three<Column>& up, const Three<Column>& row, const Three<Column>& down) {
    const Column own = meanOf(row.left, row.right), green = meanOf(row.here, meanOf(up.right, down.left));
    const Column other = meanOf(up.here, down.here);
    return redRow ? colours(own, green, other) : colours(other, green, own);
}

// siteFirst: whether the first of a block of pixels is a site of the row's own colour.
template <bool redRow, bool siteFirst>
INLINE auto demosaic3x3(const Threes<Column>& up, const Threes<Column>& row, const Threes<Column>& down) {
    if constexpr (siteFirst)
        return Apart{colouredSite<redRow>(up.even, row.even, down.even), greenSite<redRow>(up.odd, row.odd, down.odd)};
    else
        return Apart{greenSite<redRow>(up.even, row.even, down.even), colouredSite<redRow>(up.odd, row.odd, down.odd)};
}
// c: the first of a block.
template <bool redRow, bool siteFirst> INLINE auto demosaic3x3(const u8* c, ptrdiff_t pitch) {
    return demosaic3x3<redRow, siteFirst>(Threes<Column>(c - pitch), Threes<Column>(c), Threes<Column>(c + pitch));
}
constexpr size_t block3x3 = 2 * pixelsIn<Column>;

// The inner pixels of a row of less than a block of them, through a buffer.
template <bool redRow, bool siteFirst, class W>
__attribute__((noinline)) void narrowRow3x3(u8* d, const u8* s, size_t width, const W& write) {
    constexpr ptrdiff_t pitch = block3x3 + 2;
    u8 rows[3 * pitch] = {};
    for (ptrdiff_t k = 0; k < 3; ++k) std::memcpy(rows + k * pitch, s + (k - 1) * static_cast<ptrdiff_t>(width), width);
    putPart(write, d + W::bytes, demosaic3x3<redRow, siteFirst>(rows + pitch + 1, pitch), width - 2);
}

// The blocks from column 1 on that end before the last column, with an address for each of the rows' two loads.
template <bool redRow, bool siteFirst, class W>
INLINE void wholeBlocks3x3(u8* d, const u8* s, size_t width, const W& write) {
    struct Walk {
        const u8 *left, *right;
        INLINE explicit Walk(const u8* c) : left(c - 1), right(c - 1) { stepOn(2, right); }
        INLINE Threes<Column> here() const { return {left, right}; }
    };
    Walk up(s + 1 - width), row(s + 1), down(s + 1 + width);
    RowSink<W> to{d + W::bytes, write};
    for (size_t blocks = (width - 2) / block3x3; blocks > 0; --blocks) {
        to.put(0, demosaic3x3<redRow, siteFirst>(up.here(), row.here(), down.here()));
        stepOn(block3x3, up.left, up.right, row.left, row.right, down.left, down.right), to.stepOn(block3x3);
    }
}

template <bool redRow, bool siteFirst, class W> INLINE void row3x3(u8* d, const u8* s, size_t width, const W& write) {
    if (width >= block3x3 + 2) {
        const size_t last = width - 1 - block3x3; // the last block steps back; all of them begin at an odd column
        if constexpr (movesAsItLoads) wholeBlocks3x3<redRow, siteFirst>(d, s, width, write);
        for (size_t x = movesAsItLoads ? last : 1;; x = x + block3x3 < last ? x + block3x3 : last) {
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
