// Luma by formulas in double precision, each operation rounded in the order written and the sum truncated.
//
// The weights are whole numbers over 100 or 1000. An integer formula gives the same luma, except where the exact one is
// a whole number: binary fractions put 0.21 * 255 + 0.72 * 255 + 0.07 * 255 just below 255. So luma is rounded down in
// integers, a strip of pixels at a time, and whole ones, a pixel in a hundred or a thousand of most pictures, are left to
// the formula. Greys are all whole: where there are many, they look up whether they are one less.
#pragma once
#include "color/rgb_readers.h"

namespace kel {
namespace {

struct DoubleWeights {
    double r, g, b;
    int unit; // the weights are multiples of 1 / unit
};
constexpr DoubleWeights rgb8ToY8Weights{0.21, 0.72, 0.07, 100};
constexpr DoubleWeights planeWeights{0.299, 0.587, 0.114, 1000}; // ITU-R BT.601

template <const DoubleWeights& k> constexpr u8 doubleLuma(u8 r, u8 g, u8 b) {
    return static_cast<u8>(static_cast<int>(k.r * r + k.g * g + k.b * b));
}

// ---- Rounded down, in integers

constexpr int wholeWeight(double weight, int unit) { return static_cast<int>(weight * unit + 0.5); }

// Luma rounded down, and 0 where nothing is left.
struct FlooredLuma {
    Bytes luma, rest;
};

template <const DoubleWeights& k, int by> constexpr Weights wholeWeights() {
    return {wholeWeight(k.r, k.unit) / by, wholeWeight(k.g, k.unit) / by, wholeWeight(k.b, k.unit) / by, 0};
}

struct Quotient {
    Words whole, rest;
};
// In 1/100 the sum fits in 15 bits, for which the multiplier, 2^21 / 100 rounded up, is exact.
INLINE Quotient divideBy100(Words sum) {
    const Words whole = as<Words>(mulHigh(as<Ints>(sum), as<Ints>(fill(20972)))) >> 5;
    return {whole, sum - times(whole, 100)};
}
// In 1/1000 an eighth of it does, to be divided by 125: by the multiplier 2^21 / 125 rounded down, of one more. low: a
// sum of what the weights leave by 8.
INLINE Quotient divideBy1000(Words eighth, Words low) {
    eighth += low >> 3;
    const Words whole = as<Words>(mulHigh(as<Ints>(eighth + 1), as<Ints>(fill(16777)))) >> 5;
    return {whole, (eighth - times(whole, 125)) | (low & 7)};
}

// p: the colours of the N pixels at s.
template <const DoubleWeights& k> INLINE FlooredLuma flooredLuma(const u8* s, const Rgb& p) {
    if constexpr (k.unit == 100) {
        const Halves sums = weigh<3, wholeWeights<k, 1>()>(s);
        const Quotient a = divideBy100(sums.a), b = divideBy100(sums.b);
        return {clampHalves(as<Ints>(a.whole), as<Ints>(b.whole)), clampHalves(as<Ints>(a.rest), as<Ints>(b.rest))};
    } else {
        Quotient some, others;
        constexpr Weights all = wholeWeights<k, 1>();
        const Split eighths = weigh<wholeWeights<k, 8>()>(p);
        const Split low = weigh<Weights{all.r % 8, all.g % 8, all.b % 8, 0}>(p);
        some = divideBy1000(eighths.a, low.a), others = divideBy1000(eighths.b, low.b);
        return {lowBytes(Split{some.whole, others.whole}), lowBytes(Split{some.rest, others.rest})};
    }
}

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

// RGB8 pixels as blocks: use(x, where they are, colours, how many of them are pixels).
template <class Use> INLINE void eachRgbBlock(const u8* s, size_t n, Use use) {
    const auto block = [&](size_t x, const u8* at, size_t pixels) {
        use(x, at, Rgb24Reader<Order::rgb>::get(at), pixels);
    };
    const std::uintptr_t distance = prefetchDistance();
    size_t x = 0;
    for (; x + N <= n; x += N) {
        prefetch<3 * N, false>(s + 3 * x, distance);
        block(x, s + 3 * x, N);
    }
    if (x == n) return;
    alignas(N) u8 last[3 * N] = {};
    std::memcpy(last, s + 3 * x, 3 * (n - x));
    block(x, last, n - x);
}

// ---- Strips of pixels

// How a strip is converted, each way for more pictures than the one before: where few pixels are whole; where the whole
// ones are greys mostly; by the formula.
enum class Way { coloured, greys, formula };

template <const DoubleWeights& k> class LumaStrip {
public:
    static constexpr size_t capacity = 2048;

    // n pixels, and what else sink does with them. Returns how many are left to decide(). A function of its own keeps the
    // constants of each way in registers.
    template <Way way, class Sink>
    __attribute__((noinline)) size_t convert(u8* luma, const u8* s, size_t n, const Sink& sink) {
        size_t listed = 0, before = 0;
        u64 whole = 0; // of the block before: by now they are known, and nothing waits for them
        eachRgbBlock(s, n, [&](size_t x, const u8* at, const Rgb& colours, size_t pixels) {
            const u64 here = put<way>(luma + x, at, colours) & ~u64{} >> (64 - pixels);
            listed = list(before, whole, listed);
            whole = here, before = x;
            sink(x, colours, pixels);
        });
        return list(before, whole, listed);
    }

    // By the formula what is listed. The strip's colours are at `rgb`.
    INLINE void decide(u8* luma, const u8* rgb, size_t listed) const {
        for (size_t i = 0; i < listed; ++i) {
            const size_t x = list_[i];
            luma[x] = doubleLuma<k>(rgb[3 * x], rgb[3 * x + 1], rgb[3 * x + 2]);
        }
    }

private:
    // N pixels, which are at s and have the colours p. Returns which ones are whole, as bits.
    template <Way way> static INLINE u64 put(u8* luma, const u8* s, const Rgb& p) {
        if constexpr (way == Way::formula) return putByFormula(luma, p), 0;
        FlooredLuma floored = flooredLuma<k>(s, p);
        if constexpr (way == Way::greys) {
            const Bytes isGrey = as<Bytes>(((p.r ^ p.g) | (p.g ^ p.b)) == 0);
            floored.luma += isGrey & ~isKept<k>(p.g);
            floored.rest |= isGrey;
        }
        store(luma, floored.luma);
        return zeros(floored.rest);
    }

    // A plain loop is the form in which compilers vectorise conversions to double and back.
    static INLINE void putByFormula(u8* luma, const Rgb& p) {
        alignas(N) u8 r[N], g[N], b[N], y[N];
        store(r, p.r), store(g, p.g), store(b, p.b);
        for (size_t i = 0; i < N; ++i) y[i] = static_cast<u8>(static_cast<int>(k.r * r[i] + k.g * g[i] + k.b * b[i]));
        store(luma, load(y));
    }

    // Adds pixel x + i for each bit i. Most blocks have one or none; which of the two, nobody can predict: one is written
    // in any case.
    INLINE size_t list(size_t x, u64 bits, size_t listed) {
        const auto lowest = [&] {
            return static_cast<u16>(x + static_cast<size_t>(__builtin_ctzll(bits | u64{1} << 63)));
        };
        list_[listed] = lowest();
        listed += bits != 0;
        for (bits &= bits - 1; __builtin_expect(bits != 0, 0); bits &= bits - 1) list_[listed++] = lowest();
        return listed;
    }

    u16 list_[capacity + 1];
};

// n RGB8 pixels to luma. sink: what else is done with their colours: sink(x, colours, how many of them are pixels).
template <const DoubleWeights& k, class Sink> INLINE void lumaRun(u8* d, const u8* s, size_t n, Sink sink) {
    LumaStrip<k> strip;
    alignas(N) u8 buffer[strip.capacity];
    const bool apart = areApart(d, n, s, 3 * n); // else luma is written where a strip's colours are still needed
    Way way = Way::coloured;
    int stay = 0; // strips that are converted the same way again
    for (size_t start = 0, count; start < n; start += count, s += 3 * count) {
        count = n - start < strip.capacity ? n - start : strip.capacity;
        const bool direct = apart && count % N == 0;
        u8* const luma = direct ? d + start : buffer;
        const auto convert = [&]<Way by>() {
            return strip.template convert<by>(
                luma, s, count, [&](size_t x, const Rgb& colours, size_t pixels) { sink(start + x, colours, pixels); });
        };
        const auto areMany = [count](size_t whole) { return whole > count / 8; };
        if (stay > 0)
            --stay;
        else
            way = Way::coloured;
        size_t whole = 0;
        if (way == Way::coloured) whole = convert.template operator()<Way::coloured>();
        if (way == Way::coloured && areMany(whole)) way = Way::greys, stay = 64;
        if (way == Way::greys) whole = convert.template operator()<Way::greys>();
        if (way == Way::greys && areMany(whole)) way = Way::formula, stay = 64;
        if (way == Way::formula) whole = convert.template operator()<Way::formula>();
        strip.decide(luma, s, whole);
        if (!direct) std::memcpy(d + start, buffer, count);
    }
}

} // namespace
} // namespace kel
