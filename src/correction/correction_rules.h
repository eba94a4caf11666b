// The 3x3 matrix on blocks of pixels. For each channel, with its row m of the matrix:
//
//     sum = m0 R + m1 G + m2 B     in 32 bits: what is larger wraps around
//
//     rule       samples  result
//     ByteRule   8 bits   bits 10 to 25 of the sum, as a signed word, clamped to 0..255
//     WordRule   16 bits  sum >> 10, clamped to 0..65535
//     WrapRule   8 bits   sum >> 10: 0 if it is negative, 255 if it is above 65535, else its low byte
//
// Each rule is written twice: channel() defines it, for one sum; channels() is its vector form, for the matrices that are
// moderate, as all real ones are. (Their sums do not wrap.)
#pragma once
#include "correction/matrix.h"
#include "kernels/pixels.h"
#include "kernels/wide.h"

namespace kel {
namespace {

// ---- Moderate matrices: in each row the magnitudes add up to less than 32. The coefficients and their sum are words
// then, and sums with 16-bit samples fit in 32 bits.

constexpr i64 magnitude(i64 v) { return v < 0 ? -v : v; }
constexpr bool isModerate(const i32 (&row)[3]) {
    return magnitude(row[0]) + magnitude(row[1]) + magnitude(row[2]) < 1 << 15;
}
constexpr bool isModerate(const Matrix& m) { return isModerate(m.r) && isModerate(m.g) && isModerate(m.b); }

// N / 2 pixels: red and green side by side, blue as it is, which meets a coefficient in every other word.
struct PixelWords {
    WordPairs rg;
    Words b;
};
struct RowFactors {
    Words rg, evenB, oddB;
    i32 total; // of the coefficients

    INLINE explicit RowFactors(const i32 (&row)[3])
        : rg(fillPairs(row[0], row[1])), evenB(fillPairs(row[2], 0)), oddB(fillPairs(0, row[2])),
          total(static_cast<i32>(i64{row[0]} + row[1] + row[2])) {}
};
struct MatrixFactors {
    RowFactors r, g, b;

    INLINE explicit MatrixFactors(const Matrix& m) : r(m.r), g(m.g), b(m.b) {}
};

INLINE Sums weigh(const PixelWords& p, const RowFactors& row) {
    return {pairSums(p.rg.even, row.rg) + pairSums(p.b, row.evenB),
            pairSums(p.rg.odd, row.rg) + pairSums(p.b, row.oddB)};
}

// ---- The rules

// 8-bit pixels as words, times 64: bits 10 to 25 of a sum become its upper word then.
struct SplitPixels {
    PixelWords even, odd;
};
INLINE SplitPixels split(const Rgb& p) {
    const auto even = [](Bytes v) { return pairSums(v, fill(64)); };
    const auto odd = [](Bytes v) { return pairSums(v, fill(64 << 8)); };
    return {{pairUp(even(p.r), even(p.g)), even(p.b)}, {pairUp(odd(p.r), odd(p.g)), odd(p.b)}};
}

// Each channel from bits 10 to 25 of its sums, which come as the words of the even and of the odd pixels.
template <class Finish> INLINE Rgb weighBytes(const Rgb& p, const MatrixFactors& m, const Finish& finish) {
    const SplitPixels pixels = split(p);
    const auto channel = [&](const RowFactors& row) {
        return finish(wordsOf<16>(weigh(pixels.even, row)), wordsOf<16>(weigh(pixels.odd, row)));
    };
    return {channel(m.r), channel(m.g), channel(m.b)};
}

struct ByteRule {
    using Sample = u8;
    using Block = Rgb;

    static u8 channel(i32 sum) {
        const auto value = static_cast<i16>(sum >> 10);
        return static_cast<u8>(value < 0 ? 0 : value > 255 ? 255 : value);
    }
    static INLINE Rgb channels(const Rgb& p, const MatrixFactors& m) {
        return weighBytes(p, m, [](Words even, Words odd) { return clamp(as<Ints>(even), as<Ints>(odd)); });
    }
};

struct WrapRule {
    using Sample = u8;
    using Block = Rgb;

    static u8 channel(i32 sum) {
        const i32 value = sum >> 10;
        return static_cast<u8>(value < 0 ? 0 : value > 0xFFFF ? 255 : value);
    }
    // A moderate matrix makes no more than 32 * 255 of 8-bit samples.
    static INLINE Rgb channels(const Rgb& p, const MatrixFactors& m) {
        const auto atLeast0 = [](Words v) { return v & ~as<Words>(as<Ints>(v) >> 15); };
        return weighBytes(p, m, [=](Words even, Words odd) { return lowBytes(Split{atLeast0(even), atLeast0(odd)}); });
    }
};

struct WordRule {
    using Sample = u16;
    using Block = Rgb16;

    static u16 channel(i32 sum) {
        const i32 value = sum >> 10;
        return static_cast<u16>(value < 0 ? 0 : value > 0xFFFF ? 0xFFFF : value);
    }
    // The samples are taken as signed words, less 2^15; the sums get back what that takes from them.
    static INLINE Rgb16 channels(const Rgb16& p, const MatrixFactors& m) {
        const auto words = [](Words r, Words g, Words b) {
            const auto less = [](Words v) { return v ^ (1 << 15); };
            return PixelWords{pairUp(less(r), less(g)), less(b)};
        };
        const PixelWords a = words(p.r.a, p.g.a, p.b.a), b = words(p.r.b, p.g.b, p.b.b);
        const auto shifted = [](Sums s) {
            constexpr i32 most = (1 << 26) - 1;
            return wordsOf<10>({clamp(s.even, 0, most), clamp(s.odd, 0, most)});
        };
        const auto channel = [&](const RowFactors& row) {
            const i32 taken = row.total * (1 << 15);
            return Halves{shifted(weigh(a, row) + taken), shifted(weigh(b, row) + taken)};
        };
        return {channel(m.r), channel(m.g), channel(m.b)};
    }
};

// ---- On blocks

INLINE void toArray(u8 (&samples)[N], Bytes v) { store(samples, v); }
INLINE void toArray(u16 (&samples)[N], Halves v) { storeHalves(reinterpret_cast<u8*>(samples), v); }
INLINE void fromArray(Bytes& v, const u8 (&samples)[N]) { v = load(samples); }
INLINE void fromArray(Halves& v, const u16 (&samples)[N]) { v = loadHalves(reinterpret_cast<const u8*>(samples)); }

template <class Rule> __attribute__((noinline, cold)) void correctEach(typename Rule::Block& block, const Matrix& m) {
    typename Rule::Sample r[N], g[N], b[N];
    toArray(r, block.r), toArray(g, block.g), toArray(b, block.b);
    for (int i = 0; i < N; ++i) {
        const u32 colours[] = {r[i], g[i], b[i]};
        const auto channel = [&](const i32(&row)[3]) {
            u32 sum = 0;
            for (int k = 0; k < 3; ++k) sum += static_cast<u32>(row[k]) * colours[k];
            return Rule::channel(static_cast<i32>(sum));
        };
        r[i] = channel(m.r), g[i] = channel(m.g), b[i] = channel(m.b);
    }
    fromArray(block.r, r), fromArray(block.g, g), fromArray(block.b, b);
}

// A writer that corrects first.
template <class Rule, class W> class Corrected {
public:
    static constexpr int bytes = W::bytes;
    static constexpr bool keeps = W::keeps;

    INLINE explicit Corrected(const Matrix& m) : matrix_(m), factors_(m), moderate_(isModerate(m)) {}

    INLINE void put(u8* d, typename Rule::Block block) const {
        if (moderate_)
            block = Rule::channels(block, factors_);
        else
            correctEach<Rule>(block, matrix_);
        W::put(d, block);
    }

private:
    Matrix matrix_;
    MatrixFactors factors_;
    bool moderate_;
};

} // namespace
} // namespace kel
