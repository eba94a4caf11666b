// Readers of the RGB family.
#pragma once
#include "kernels/runs.h"

namespace kel {
namespace {

template <Order order> struct Rgb24Reader : Reader<24> {
    static INLINE Rgb get(const u8* s) {
        Rgb p;
        order == Order::rgb ? load3(s, p.r, p.g, p.b) : load3(s, p.b, p.g, p.r);
        return p;
    }
};

// Without alpha.
template <Order order> struct Rgb32Reader : Reader<32> {
    static INLINE Rgb get(const u8* s) {
        Rgb p;
        order == Order::rgb ? load4(s, p.r, p.g, p.b) : load4(s, p.b, p.g, p.r);
        return p;
    }
};

// RGBA <-> BGRA: pixels stay whole, bytes 0 and 2 change places, alpha goes along.
struct Pixels32 {
    Bytes quarters[4];
};
struct Pixels32Reader : Reader<32> {
    static INLINE Pixels32 get(const u8* s) { return {{load(s), load(s + N), load(s + 2 * N), load(s + 3 * N)}}; }
};
struct Swapped32 {
    static constexpr int bytes = 4;
    static constexpr bool keeps = false;
    static INLINE void put(u8* d, const Pixels32& p) {
        store(d, swapped(p.quarters[0]));
        store(d + N, swapped(p.quarters[1]));
        store(d + 2 * N, swapped(p.quarters[2]));
        store(d + 3 * N, swapped(p.quarters[3]));
    }

private:
    static INLINE Bytes swapped(Bytes v) {
        return permute(v, [](int i) { return i % 4 == 0 ? i + 2 : i % 4 == 2 ? i - 2 : i; });
    }
};

} // namespace
} // namespace kel
