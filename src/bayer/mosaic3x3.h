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

// c: the first of N pixels; `site`: where they are sites of the row's own colour.
template <bool redRow> INLINE Rgb demosaic3x3(const u8* c, ptrdiff_t pitch, Bytes site) {
    const Bytes here = load(c), left = load(c - 1), right = load(c + 1), up = load(c - pitch), down = load(c + pitch);
    const Bytes upRight = load(c - pitch + 1), downLeft = load(c + pitch - 1);
    const Bytes diagonals = mean(load(c - pitch - 1), upRight, downLeft, load(c + pitch + 1));

    const Bytes own = select(site, here, mean(left, right));
    const Bytes other = select(site, diagonals, mean(up, down));
    const Bytes green = mean(select(site, left, here), select(site, right, here), select(site, up, upRight),
                             select(site, down, downLeft));
    return redRow ? Rgb{own, green, other} : Rgb{other, green, own};
}

// The inner pixels of a row of less than N of them, through a buffer.
template <bool redRow, class W>
__attribute__((noinline)) void narrowRow3x3(u8* d, const u8* s, size_t width, const W& write, Bytes site) {
    constexpr ptrdiff_t pitch = N + 2;
    u8 rows[3 * pitch] = {};
    for (ptrdiff_t k = 0; k < 3; ++k) std::memcpy(rows + k * pitch, s + (k - 1) * static_cast<ptrdiff_t>(width), width);
    putPart(write, d + W::bytes, demosaic3x3<redRow>(rows + pitch + 1, pitch, site), width - 2);
}

template <bool redRow, class W> INLINE void row3x3(u8* d, const u8* s, size_t width, const W& write, Bytes site) {
    const auto block = [&](size_t x) {
        write.put(d + x * W::bytes, demosaic3x3<redRow>(s + x, static_cast<ptrdiff_t>(width), site));
    };
    if (width >= N + 2) {
        for (size_t x = 1; x + N < width - 1; x += N) block(x);
        block(width - 1 - N);
    } else if (width > 2) {
        narrowRow3x3<redRow>(d, s, width, write, site);
    }
    // Right border first: at a width of 2 both columns become what the first one held.
    std::memcpy(d + (width - 1) * W::bytes, d + (width - 2) * W::bytes, W::bytes);
    std::memcpy(d, d + W::bytes, W::bytes);
}

template <class W> void mosaic3x3Kernel(u8* d, const u8* s, size_t width, size_t height, unsigned phase) {
    const size_t pitch = width * W::bytes;
    const Bytes evenColumns = columns<Bytes>(true), oddColumns = ~evenColumns; // blocks begin at an odd column
    std::memset(d, 0, pitch);
    for (size_t y = 1; y + 1 < height; ++y) {
        const bool redRow = (phase / 2 + y) % 2 == 0, siteInOddColumn = (phase % 2 == 1) == redRow;
        const Bytes site = siteInOddColumn ? evenColumns : oddColumns;
        if (redRow)
            row3x3<true>(d + y * pitch, s + y * width, width, W(), site);
        else
            row3x3<false>(d + y * pitch, s + y * width, width, W(), site);
    }
    std::memcpy(d + (height - 1) * pitch, d + (height - 2) * pitch, pitch);
    std::memcpy(d, d + pitch, pitch);
}

template <class Set> constexpr ByOutput<Mosaic> mosaics3x3(Set outputs) {
    return mosaicTable<Mosaic>(outputs, []<u32 output>() { return mosaic3x3Kernel<WriterOf<output>>; });
}

} // namespace
} // namespace kel
