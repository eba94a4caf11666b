// Luma by formulas in double precision, each operation rounded in the order written and the sum truncated.
//
// The weights are whole numbers over 100 or 1000. An integer formula gives the same luma, except where the exact one is
// a whole number: binary fractions put 0.21 * 255 + 0.72 * 255 + 0.07 * 255 just below 255. So luma is rounded down in
// integers, a strip of pixels at a time, and whole ones, a pixel in a hundred or a thousand of most pictures, are left to
// the formula. Greys are all whole: where there are many, they look up whether they are one less.
#pragma once
#include <bit>

#include "color/luma_products.h"
#include "color/rgb_readers.h"

namespace kel {
namespace {

template <const DoubleWeights& k> constexpr u8 doubleLuma(u8 r, u8 g, u8 b) {
    return static_cast<u8>(static_cast<int>(k.r * r + k.g * g + k.b * b));
}

// ---- Rounded down, in integers

constexpr int wholeWeight(double weight, int unit) { return static_cast<int>(weight * unit + 0.5); }

template <const DoubleWeights& k, int by> constexpr Weights wholeWeights() {
    return {wholeWeight(k.r, k.unit) / by, wholeWeight(k.g, k.unit) / by, wholeWeight(k.b, k.unit) / by, 0};
}

// 128 times a sum of less than 2^15 over 100 or 125, rounded down: the whole part stands above the seven lowest bits, which
// are 0 where nothing is left. (The factor is rounded up, which adds less than what one more in the sum does.)
template <int by> INLINE Words divide128(Words sum) {
    constexpr int factor = (128 - by) * 65536 / by + 1;
    return sum + as<Words>(mulHigh(as<Ints>(sum), as<Ints>(fill(factor))));
}

// 128 times the luma of N pixels, which are at s with pixels around them and have the colours p; seven bits that are 0 where
// it is whole.
template <const DoubleWeights& k>
requires(k.unit == 100) INLINE Quarters luma128(const u8* s, const Rgb&) {
    const Quarters sums = weighWithin<3, wholeWeights<k, 1>()>(s);
    return {divide128<100>(sums.a), divide128<100>(sums.b)};
}
// In thousandths the sum is 8 times what fits: it is put together of eighths and of what the weights leave by 8.
template <const DoubleWeights& k>
requires(k.unit == 1000) INLINE Split luma128(const u8*, const Rgb& p) {
    constexpr Weights all = wholeWeights<k, 1>();
    const Split eighths = weigh<wholeWeights<k, 8>()>(p);
    const Split low = weigh<Weights{all.r % 8, all.g % 8, all.b % 8, 0}>(p);
    return {divide128<125>(eighths.a + (low.a >> 3)) | (low.a & 7),
            divide128<125>(eighths.b + (low.b >> 3)) | (low.b & 7)};
}

// The pixel of each byte where the words of both vectors of a pair take turns.
struct PixelOfTurn {
    u8 of[64];
};
template <const DoubleWeights& k>
constexpr PixelOfTurn pixelOfTurn = [] {
    PixelOfTurn pixel{};
    for (int i = 0; i < 64; ++i) {
        const int x = i % N;
        const int turn = k.unit == 100 ? 2 * quartersIndex(x) + quartersPart(x) : 2 * splitIndex(x) + splitPart(x);
        pixel.of[i - x + turn] = static_cast<u8>(i);
    }
    return pixel;
}();

// ---- Greys

// Of every grey v, whether its luma is v - 1: bit v % 8 of byte v / 8, in two vectors for lookUp.
template <const DoubleWeights& k> struct LoweredGreys {
    alignas(N) u8 bytes[2][N] = {}, bit[N] = {};

    constexpr LoweredGreys() {
        for (int i = 0; i < N; ++i) {
            bit[i] = static_cast<u8>(1 << i % 8);
            bytes[0][i] = byteAt(i % L), bytes[1][i] = byteAt(L + i % L);
        }
    }

private:
    static constexpr u8 byteAt(int i) {
        int bits = 0;
        for (int v = 8 * i; v < 8 * i + 8 && v < 256; ++v) {
            const u8 grey = static_cast<u8>(v);
            bits |= (doubleLuma<k>(grey, grey, grey) < v) << v % 8;
        }
        return static_cast<u8>(bits);
    }
};
template <const DoubleWeights& k> constexpr LoweredGreys<k> loweredGreys;

// 255 for greys that are what they are, 0 for those that are one less.
template <const DoubleWeights& k> INLINE Bytes isKept(Bytes grey) {
    constexpr const LoweredGreys<k>& lowered = loweredGreys<k>;
    const Bytes bit = lookUp(load(lowered.bit), load(lowered.bit), grey & 7);
    return as<Bytes>((lookUp(load(lowered.bytes[0]), load(lowered.bytes[1]), grey >> 3) & bit) == 0);
}

// ---- Strips of pixels

// How a strip is converted, each way for more pictures than the one before: where few pixels are whole; where the whole
// ones are greys mostly; by the formula.
enum class Way { coloured, greys, formula };

template <const DoubleWeights& k> class LumaStrip {
public:
    static constexpr size_t capacity = 2048, group = 64; // pixels; those of a group are bits of a word

    // n pixels with others around them, and what else sink does with them. Luma has room for a whole group at its end.
    // Returns how many are left to decide(). A function of its own keeps the constants of each way in registers.
    template <Way way, class Sink>
    __attribute__((noinline)) size_t convert(u8* luma, const u8* s, size_t n, const Sink& sink) {
        const std::uintptr_t distance = prefetchDistance();
        size_t listed = 0, before = 0;
        u64 whole = 0; // of the group before: by now they are known, and nothing waits for them
        for (size_t x = 0; x < n; x += group, s += 3 * group) {
            prefetch<3 * group, false>(s, distance);
            const u64 here = putGroup<way>(luma + x, s, [&](size_t i, const Rgb& colours) {
                if (i + N <= n - x)
                    sink(x + i, colours, N);
                else if (i < n - x)
                    sink(x + i, colours, n - x - i);
            });
            listed = list<way>(before, whole, listed);
            whole = here, before = x;
        }
        return list<way>(before, whole, listed);
    }

    // By the formula what is listed. The strip's colours are at `rgb`.
    INLINE void decide(u8* luma, const u8* rgb, size_t listed) const {
        for (size_t i = 0; i < listed; ++i) {
            const u8* const p = rgb + 3 * list_[i];
            const LumaProducts& times = k.products;
            luma[list_[i]] = static_cast<u8>(static_cast<int>(times.r[p[0]] + times.g[p[1]] + times.b[p[2]]));
        }
    }

private:
    // The pixels of a group, which are at s. Returns which ones are whole, as bits.
    template <Way way, class Sink> static INLINE u64 putGroup(u8* luma, const u8* s, const Sink& sink) {
        u64 whole = 0;
        for (size_t i = 0; i < group; i += N) {
            const Rgb colours = Rgb24Reader<Order::rgb>::get(s + 3 * i);
            whole |= put<way>(luma + i, s + 3 * i, colours) << i;
            sink(i, colours);
        }
        return whole;
    }

    // N pixels, which are at s and have the colours p. Returns which ones are whole, as bits: of coloured ones by turns.
    template <Way way> static INLINE u64 put(u8* luma, const u8* s, const Rgb& p) {
        if constexpr (way == Way::formula) return putByFormula(luma, p), 0;
        const auto scaled = luma128<k>(s, p);
        using Pair = decltype(luma128<k>(s, p));
        const Bytes y = clamp(Pair{scaled.a >> 7, scaled.b >> 7});
        if constexpr (way == Way::greys) {
            const Bytes isGrey = as<Bytes>(((p.r ^ p.g) | (p.g ^ p.b)) == 0);
            store(luma, y + (isGrey & ~isKept<k>(p.g)));
            return zeros(clamp(Pair{scaled.a & 127, scaled.b & 127}) | isGrey);
        }
        store(luma, y);
        return zeros(as<Bytes>((scaled.a & 127) | scaled.b << 9));
    }

    // A plain loop is the form in which compilers vectorise conversions to double and back.
    static INLINE void putByFormula(u8* luma, const Rgb& p) {
        alignas(N) u8 r[N], g[N], b[N], y[N];
        store(r, p.r), store(g, p.g), store(b, p.b);
        for (size_t i = 0; i < N; ++i) y[i] = static_cast<u8>(static_cast<int>(k.r * r[i] + k.g * g[i] + k.b * b[i]));
        store(luma, load(y));
    }

    // Adds pixel x + i for each bit i. Most groups have one, two or none; how many, nobody can predict: two are written in
    // any case.
    template <Way way> INLINE size_t list(size_t x, u64 bits, size_t listed) {
        const auto add = [&](size_t at) {
            const auto bit = static_cast<u32>(std::countr_zero(bits | u64{1} << 63));
            u32 pixel = static_cast<u32>(x) + (way == Way::coloured ? pixelOfTurn<k>.of[bit] : bit);
            asm("" : "+r"(pixel)); // else g++ would put two into a vector to store them
            list_[at] = static_cast<u16>(pixel);
            const bool isOne = bits != 0;
            bits &= bits - 1;
            return at + isOne;
        };
        listed = add(add(listed));
        while (__builtin_expect(bits != 0, 0)) listed = add(listed);
        return listed;
    }

    u16 list_[capacity + 2];
};

// Copies up to `group` pixels to where others are around them, which are not whole.
template <size_t group> INLINE const u8* copyAlone(u8 (&room)[3 * (group + 2 * N)], const u8* s, size_t n) {
    std::memset(room, 0, sizeof room);
    u8* const pixels = room + 3 * N;
    std::memcpy(pixels, s, 3 * n);
    for (size_t x = n; x < group; ++x) pixels[3 * x] = 1;
    return pixels;
}

// n RGB8 pixels to luma. sink: what else is done with their colours: sink(x, colours, how many of them are pixels).
template <const DoubleWeights& k, class Sink> INLINE void lumaRun(u8* d, const u8* s, size_t n, Sink sink) {
    LumaStrip<k> strip;
    constexpr size_t group = strip.group, around = 2; // pixels that may be read behind a strip
    alignas(N) u8 buffer[strip.capacity], room[3 * (group + 2 * N)];
    const bool apart = areApart(d, n, s, 3 * n); // else luma is written where a strip's colours are still needed
    const auto smaller = [](size_t a, size_t b) { return a < b ? a : b; };
    Way way = Way::coloured;
    size_t stay = 0; // pixels that are converted the same way again
    for (size_t start = 0, count; start < n; start += count, s += 3 * count) {
        const size_t left = n - start;
        const bool isEdge = start == 0 || left < group + around;
        count = isEdge ? smaller(left, group) : smaller(left - around, strip.capacity) / group * group;
        const u8* const pixels = isEdge ? copyAlone<group>(room, s, count) : s;
        const bool direct = apart && count % group == 0;
        u8* const luma = direct ? d + start : buffer;
        const auto convert = [&]<Way by>() {
            return strip.template convert<by>(luma, pixels, count, [&](size_t x, const Rgb& colours, size_t some) {
                sink(start + x, colours, some);
            });
        };
        const auto areMany = [count](size_t whole) { return whole > count / 8; };
        if (stay == 0) way = Way::coloured;
        stay -= smaller(stay, count);
        size_t whole = 0;
        if (way == Way::coloured) whole = convert.template operator()<Way::coloured>();
        if (way == Way::coloured && areMany(whole)) way = Way::greys, stay = 64 * count;
        if (way == Way::greys) whole = convert.template operator()<Way::greys>();
        if (way == Way::greys && areMany(whole)) way = Way::formula, stay = 64 * count;
        if (way == Way::formula) whole = convert.template operator()<Way::formula>();
        strip.decide(luma, pixels, whole);
        if (!direct) std::memcpy(d + start, buffer, count);
    }
}

} // namespace
} // namespace kel
