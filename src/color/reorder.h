// RGB formats among themselves: pixels stay interleaved, and their bytes change places.
#pragma once
#include "color/rgb_readers.h"

namespace kel {
namespace {

// Whether the first and the third byte of each pixel change places.
enum class Swap { no, yes };
constexpr int channel(Swap swap, int i) { return swap == Swap::yes && i < 3 ? 2 - i : i; }

// L / 4 pixels a lane: quarter q of a lane's pixels.
struct Quads {
    Bytes quarters[4];
};

// ---- 32 bits to 32 bits; alpha goes along

struct Quads32Reader : Reader<32> {
    static constexpr bool separates = true; // as far as addresses go
    static INLINE Quads get(const u8* s) {
        Quads p;
        loadRow(s, p.quarters);
        return p;
    }
};
struct Swapped32Writer {
    static constexpr int bytes = 4;
    static constexpr bool keeps = false, weaves = true;
    static INLINE void put(u8* d, Quads p) {
        for (Bytes& quarter : p.quarters)
            quarter = permute(quarter, [](int i) { return i / 4 * 4 + channel(Swap::yes, i % 4); });
        storeRow(d, p.quarters);
    }
};

// ---- 24 bits to 32 bits, whose fourth bytes stay as they were

template <Swap swap> struct Quads24Reader : Reader<24> {
    static INLINE Quads get(const u8* s) { return {{quarter<0>(s), quarter<1>(s), quarter<2>(s), quarter<3>(s)}}; }

private:
    template <int q> static INLINE Bytes quarter(const u8* s) {
        constexpr int before = q == 3 ? L / 4 : 0; // so that nothing behind is read
        return place(loadLanes(s + q * (3 * N / 4) - before, 3 * L / 4),
                     [](int i) { return i % 4 == 3 ? -1 : before + i % L / 4 * 3 + channel(swap, i % 4); });
    }
};
struct QuadsWriter {
    static constexpr int bytes = 4;
    static constexpr bool keeps = true, weaves = false;
    static INLINE void put(u8* d, const Quads& p) {
        for (int q = 0; q < 4; ++q) storeQuads(d + q * N, p.quarters[q]);
    }
};

// ---- 32 bits to 24 bits

struct Quads32LanesReader : Reader<32> {
    static INLINE Quads get(const u8* s) {
        return {
            {loadLanes(s, 4 * L), loadLanes(s + L, 4 * L), loadLanes(s + 2 * L, 4 * L), loadLanes(s + 3 * L, 4 * L)}};
    }
};
template <Swap swap> struct ColoursWriter {
    static constexpr int bytes = 3;
    static constexpr bool keeps = false, weaves = false;
    // 3 L / 4 bytes of each quarter, turned to where the three vectors of the result have them.
    static INLINE void put(u8* d, const Quads& p) {
        const Bytes q0 = colours<0>(p), q1 = colours<1>(p), q2 = colours<2>(p), q3 = colours<3>(p);
        storeLanes(d, 3 * L, firstQuarters<3>(q0, q1));
        storeLanes(d + L, 3 * L, firstQuarters<2>(q1, q2));
        storeLanes(d + 2 * L, 3 * L, firstQuarters<1>(q2, q3));
    }

private:
    template <int q> static INLINE Bytes colours(const Quads& p) {
        return permute(p.quarters[q], [](int i) {
            const int byte = (i + q * (L / 4)) % L;
            return byte < 3 * L / 4 ? byte / 3 * 4 + channel(swap, byte % 3) : 3;
        });
    }
};

// ---- 24 bits to 24 bits. A vector has a byte more than whole pixels: it keeps its value where the
// conversion is in place, and is written again otherwise.

constexpr auto swappedTriples = [](int i) { return i < L - 1 ? i / 3 * 3 + 2 - i % 3 : i; };

// All is read before it is written, lest a load wait for the store before it, which has one of its bytes: in place, and
// also where destination and source lie a multiple of 4 KiB apart.
template <int vectors> INLINE void swapTriples(u8* d, const u8* s) {
    constexpr int step = N / L * (L - 1);
    Bytes swapped[vectors];
    for (int v = 0; v < vectors; ++v) swapped[v] = permute(loadLanes(s + v * step, L - 1), swappedTriples);
    for (int v = 0; v < vectors; ++v) storeLanes(d + v * step, L - 1, swapped[v]);
}
inline void swap24Kernel(u8* d, const u8* s, size_t n) {
    constexpr size_t step = N / L * (L - 1), steps = 4;
    const bool apart = areApart(d, 3 * n, s, 3 * n);
    const std::uintptr_t distance = prefetchDistance();
    const auto turn = [&]() __attribute__((always_inline)) {
        prefetch<steps * step, false>(s, distance);
        prefetch<steps * step, true>(d, distance);
        swapTriples<steps>(d, s);
        s += steps * step, d += steps * step;
    };
    const size_t turns = n > 0 ? (3 * n - 1) / (steps * step) : 0; // the last byte of a vector is another's
    takeTurns<steps * step, steps * step>(turns, turn, s, d);
    size_t left = 3 * n - turns * steps * step;
    for (; left > step; left -= step, s += step, d += step) swapTriples<1>(d, s);
    if (left > 3 && 3 * n >= step + 3 && apart) { // all but the last pixel, stepped back
        s += left - 3, d += left - 3, left = 3;
        swapTriples<1>(d - step, s - step);
    }
    for (; left > 0; left -= 3, s += 3, d += 3) {
        const u8 first = s[0], second = s[1];
        d[0] = s[2], d[1] = second, d[2] = first;
    }
}

// Where lanes are long, whole pixels at once: hardly a vector would lie in one cache line otherwise.
struct Triples {
    Bytes parts[3];
};
struct TriplesReader : Reader<24> {
    static INLINE Triples get(const u8* s) { return {{load(s), load(s + N), load(s + 2 * N)}}; }
};
struct SwappedTriplesWriter {
    static constexpr int bytes = 3;
    static constexpr bool keeps = false, weaves = false;
    template <class Vectors> static INLINE void put(u8* d, const Vectors& p) { // not for the other levels
        constexpr auto from = [](int i) { return i / 3 * 3 + 2 - i % 3; };     // of all bytes
        const Bytes middle =
            shuffle(p.parts[0], p.parts[1], [=](int i) { return from(N + i) < 2 * N ? from(N + i) : 0; });
        store(d, shuffle(p.parts[0], p.parts[1], from));
        store(d + N, shuffle(middle, p.parts[2], [=](int i) { return from(N + i) < 2 * N ? i : from(N + i) - N; }));
        store(d + 2 * N, shuffle(p.parts[1], p.parts[2], [=](int i) { return from(2 * N + i) - N; }));
    }
};

// ---- By output

template <class Set> constexpr ByOutput<Run> swaps24(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() -> Run {
        if constexpr (L > 16)
            return runKernel<TriplesReader, SwappedTriplesWriter>;
        else
            return swap24Kernel;
    });
}
template <Swap swap, class Set> constexpr ByOutput<Run> from24To32(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return runKernel<Quads24Reader<swap>, QuadsWriter>; });
}
template <Swap swap, class Set> constexpr ByOutput<Run> from32To24(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return runKernel<Quads32LanesReader, ColoursWriter<swap>>; });
}
template <class Set> constexpr ByOutput<Run> swaps32(Set outputs) {
    return tableOf<Run>(outputs, []<u32>() { return runKernel<Quads32Reader, Swapped32Writer>; });
}

// The colour outputs of a format whose own are same24 and same32, and the other order's swapped24 and swapped32.
template <Order order, class Same24, class Same32, class Swapped24, class Swapped32>
constexpr ByOutput<Run> reordered24(Same24 same24, Same32 same32, Swapped24 swapped24, Swapped32 swapped32) {
    if constexpr (separatesAsItLoads)
        return copies<3>(same24) | runs<Rgb24Reader<order>>(swapped24 + same32 + swapped32);
    else
        return copies<3>(same24) | swaps24(swapped24) | from24To32<Swap::no>(same32) | from24To32<Swap::yes>(swapped32);
}
template <Order order, class Same24, class Same32, class Swapped24, class Swapped32>
constexpr ByOutput<Run> reordered32(Same24 same24, Same32 same32, Swapped24 swapped24, Swapped32 swapped32) {
    if constexpr (separatesAsItLoads)
        return copies<4>(same32) | runs<Rgb32Reader<order>>(same24 + swapped24) | swaps32(swapped32);
    else
        return copies<4>(same32) | from32To24<Swap::no>(same24) | from32To24<Swap::yes>(swapped24) | swaps32(swapped32);
}

} // namespace
} // namespace kel
