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

namespace kel {
namespace {

// ---- Moderate matrices: in each row the magnitudes add up to less than 32. The coefficients and their sum are words
// then, and sums with 16-bit samples fit in 32 bits.

constexpr i64 magnitude(i64 v) { return v < 0 ? -v : v; }
constexpr bool isModerate(const i32 (&row)[3]) {
    return magnitude(row[0]) + magnitude(row[1]) + magnitude(row[2]) < 1 << 15;
}
constexpr bool isModerate(const Matrix& m) { return isModerate(m.r) && isModerate(m.g) && isModerate(m.b); }

struct RowFactors {
    TripleFactors factors;
    i32 total; // of the coefficients

    INLINE explicit RowFactors(const i32 (&row)[3])
        : factors(TripleFactors{row[0], row[1], row[2]}), total(static_cast<i32>(i64{row[0]} + row[1] + row[2])) {}
};
struct MatrixFactors {
    RowFactors r, g, b;

    INLINE explicit MatrixFactors(const Matrix& m) : r(m.r), g(m.g), b(m.b) {}
};

// ---- The rules

// Each channel from bits 10 to 25 of its sums. The samples are taken times 64: the bits become the upper word then.
template <class Finish> INLINE Rgb weighBytes(const Rgb& p, const MatrixFactors& m, const Finish& finish) {
    const Split r = widen<6>(p.r), g = widen<6>(p.g), b = widen<6>(p.b);
    const WordTriples some = tripleUp(r.a, g.a, b.a), others = tripleUp(r.b, g.b, b.b);
    const auto channel = [&](const RowFactors& row) {
        return finish(Split{wordsOf<16>(weigh(some, row.factors)), wordsOf<16>(weigh(others, row.factors))});
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
        return weighBytes(p, m, [](Split s) { return clamp(s); });
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
        return weighBytes(p, m, [=](Split s) { return lowBytes(Split{atLeast0(s.a), atLeast0(s.b)}); });
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
            return tripleUp(less(r), less(g), less(b));
        };
        const WordTriples a = words(p.r.a, p.g.a, p.b.a), b = words(p.r.b, p.g.b, p.b.b);
        return {channel(a, b, m.r), channel(a, b, m.g), channel(a, b, m.b)};
    }

private:
    static INLINE Halves channel(const WordTriples& a, const WordTriples& b, const RowFactors& row) {
        const i32 taken = row.total * (1 << 15);
        return {clampedWords<10>(weigh(a, row.factors) + taken), clampedWords<10>(weigh(b, row.factors) + taken)};
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
    static constexpr bool keeps = W::keeps, weaves = W::weaves;

    INLINE explicit Corrected(const Matrix& m) : matrix_(m), factors_(m), moderate_(isModerate(m)) {}

    INLINE void put(u8* d, const typename Rule::Block& block) const { W::put(d, corrected(block)); }
    INLINE void put(u8* d, const Apart<Rgb>& p) const { W::put(d, Apart{corrected(p.even), corrected(p.odd)}); }
    INLINE void put(u8* d, const Apart<RgbWords>& p) const {
        const Rgb16 v = corrected({{p.even.r, p.odd.r}, {p.even.g, p.odd.g}, {p.even.b, p.odd.b}});
        W::put(d, Apart{RgbWords{v.r.a, v.g.a, v.b.a}, RgbWords{v.r.b, v.g.b, v.b.b}});
    }

private:
    INLINE typename Rule::Block corrected(typename Rule::Block block) const {
        if (moderate_) return Rule::channels(block, factors_);
        correctEach<Rule>(block, matrix_);
        return block;
    }

    const Matrix& matrix_; // the caller's: what nobody else knows of stays in registers
    MatrixFactors factors_;
    bool moderate_;
};

} // namespace
} // namespace kel
