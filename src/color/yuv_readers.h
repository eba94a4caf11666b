// Readers of the YUV families: 8 bits, full range, chroma centred on 128.
//
// A layout unpacks N pixels; a chroma rule says what is added to luma for blue, green and red.
#pragma once
#include "kernels/runs.h"

namespace kel {
namespace {

// Each pixel with chroma of its own, 4 U and 4 V.
struct Yuv {
    Bytes luma;
    Split u, v;
};
// Pairs of pixels with 4 (U - 128) and 4 (V - 128).
struct YuvPairs {
    Bytes luma;
    Ints u, v;
};
INLINE Ints centred(Words chroma4) { return as<Ints>(chroma4) - 512; }
// uv: u v u v ..., for each pair
INLINE YuvPairs sharedChroma(Bytes luma, Bytes uv) {
    return {luma, centred(pairSums<4, 0>(uv)), centred(pairSums<0, 4>(uv))};
}

// ---- Layouts

// U Y V Y
struct Yuv422Layout : Reader<16> {
    static INLINE YuvPairs samples(const u8* s) {
        const Bytes low = loadLanes(s, 2 * L), high = loadLanes(s + L, 2 * L);
        const Halves words{as<Words>(low), as<Words>(high)};
        return sharedChroma(highBytes(words), lowBytes(words));
    }
};

// U Y V
struct Yuv444Layout : Reader<24> {
    static constexpr bool separates = true;
    static INLINE Yuv samples(const u8* s) {
        Bytes u, y, v;
        load3(s, u, y, v);
        return {y, widen<2>(u), widen<2>(v)};
    }
};

// U Y Y V Y Y
struct Yuv411Layout : Reader<12> {
    static INLINE YuvPairs samples(const u8* s) {
        return sharedChroma(pick(s, [](int i) { return i < 2 ? i + 1 : i + 2; }),
                            pick(s, [](int i) { return i % 2 * 3; })); // for each two pixels
    }

private:
    // Bytes of each group of six, for the four positions of a group of pixels.
    template <class At> static INLINE Bytes pick(const u8* s, At at) {
        const Bytes low = loadLanes(s, L * 3 / 2), high = loadLanes(s + L / 2, L * 3 / 2);
        return shuffle(low, high, [=](int i) {
            const int byte = i / 4 * 6 + at(i % 4);
            return byte < L ? byte : byte - L / 2 + L;
        });
    }
};

// ---- Chroma rules, from 4 u and 4 v, where u = U - 128 and v = V - 128

struct Chroma {
    Ints b, g, r;
};

// x c rounded down, for x = -128..127: the high word of 4 x times 16384 c. With 14 fraction bits the product lies on
// the right side of every integer, for the four factors below.
INLINE Ints productDown(Ints x4, int k) { return mulHigh(x4, as<Ints>(fill(k))); }
constexpr int blueFromU = 29016;  // 1.771
constexpr int greenFromU = 5664;  // 0.3457
constexpr int redFromV = 22974;   // 1.4022
constexpr int greenFromV = 11705; // 0.7144

// Each product is truncated on its own:
//   B = Y + trunc(1.771 u), G = Y + trunc(-0.3457 u) + trunc(-0.7144 v), R = Y + trunc(1.4022 v), clamped to 0..255
struct TruncatedProducts {
    static INLINE Chroma of(Ints u4, Ints v4) {
        const Ints lessU = u4 >> 15, lessV = v4 >> 15; // -1 below 0, where the product is rounded up
        return {productDown(u4, blueFromU) - lessU,
                lessU + lessV - productDown(u4, greenFromU) - productDown(v4, greenFromV),
                productDown(v4, redFromV) - lessV};
    }
};

// The sums are truncated, and green's offset is a signed byte:
//   B = trunc(Y + 1.771 u), G = Y + trunc(-0.3457 u - 0.7144 v), R = trunc(Y + 1.4022 v), clamped to 0..255
// For B and R that is Y plus the product rounded down, because Y is whole and the clamp takes what is below 0.
struct TruncatedSums {
    static INLINE Chroma of(Ints u4, Ints v4) {
        return {productDown(u4, blueFromU), greenOffset(u4, v4), productDown(v4, redFromV)};
    }

private:
    // The fractions are exact: no double sum is closer to an integer than 1 / 10000. And a float quotient, which is the
    // nearest one to the exact one, lies on the same side of it.
    static INLINE Ints greenOffset(Ints u4, Ints v4) {
        using Floats = VectorOf<float, N>::type;
        const auto quotient = [](Wides sum) {
            return __builtin_convertvector(__builtin_convertvector(sum, Floats) / 40000.0F, Wides);
        };
        const Sums sums = weigh(pairUp(as<Words>(u4), as<Words>(v4)), PairFactors{-3457, -7144});
        const Sums offset = clampSums(Sums{quotient(sums.a), quotient(sums.b)}, -128, 127);
        return as<Ints>(wordsOf<16>(Sums{offset.a << 16, offset.b << 16}));
    }
};

INLINE Split added(Split luma, Split chroma) { return {luma.a + chroma.a, luma.b + chroma.b}; }

template <class Rule> INLINE RgbSums coloursOf(const Yuv& p) {
    const Split y = widen(p.luma);
    const Chroma a = Rule::of(centred(p.u.a), centred(p.v.a)), b = Rule::of(centred(p.u.b), centred(p.v.b));
    const auto channel = [&](Ints some, Ints others) { return added(y, {as<Words>(some), as<Words>(others)}); };
    return {channel(a.r, b.r), channel(a.g, b.g), channel(a.b, b.b)};
}
template <class Rule> INLINE RgbSums coloursOf(const YuvPairs& p) {
    const Split y = widen(p.luma);
    const Chroma c = Rule::of(p.u, p.v);
    const auto channel = [&](Ints offsets) { return added(y, forPairs(as<Words>(offsets))); };
    return {channel(c.r), channel(c.g), channel(c.b)};
}

// Pairs of pixels, the first apart from the second, and U - 128 and V - 128 of each pair, of a colour.
struct YuvApart {
    Bytes even, odd, u, v;
};
// What productDown makes of every signed byte is the product with n / 10000, rounded towards 0.
constexpr bool isProduct(int k, int n) {
    for (int s = -128; s < 128; ++s)
        if ((s * k >> 15) + (s < 0) != s * n / 10000) return false;
    return true;
}
static_assert(isProduct(25264, 7710) && isProduct(13180, 4022) && isProduct(11329, 3457) && isProduct(23409, 7144));

// In signed bytes: 1.771 u and 1.4022 v are added in two parts of the same sign, so that it does not matter to clamp after
// the first one. What green loses is less than 128 for all colours.
INLINE Apart<Rgb> coloursOf(const YuvApart& p) {
    const Bytes blue = productDown<25264>(p.u), red = productDown<13180>(p.v);
    const Bytes green = -(productDown<11329>(p.u) + productDown<23409>(p.v));
    const auto colours = [=](Bytes luma) {
        return Rgb{addSigned(addSigned(luma, p.v), red), addSigned(luma, green), addSigned(addSigned(luma, p.u), blue)};
    };
    return {colours(p.even), colours(p.odd)};
}

template <class Layout> struct YuvReader : Reader<Layout::bits> {
    static constexpr bool separates = Layout::separates;
    static INLINE RgbSums get(const u8* s) { return coloursOf<TruncatedProducts>(Layout::samples(s)); }
};

} // namespace
} // namespace kel
