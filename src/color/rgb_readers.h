// Readers of the RGB family.
#pragma once
#include "kernels/runs.h"

namespace kel {
namespace {

template <Order order> struct Rgb24Reader : Reader<24> {
    static constexpr bool separates = true;
    static INLINE Rgb get(const u8* s) {
        Rgb p;
        order == Order::rgb ? load3(s, p.r, p.g, p.b) : load3(s, p.b, p.g, p.r);
        return p;
    }
};

// Without alpha.
template <Order order> struct Rgb32Reader : Reader<32> {
    static constexpr bool separates = true;
    static INLINE Rgb get(const u8* s) {
        Rgb p;
        order == Order::rgb ? load4(s, p.r, p.g, p.b) : load4(s, p.b, p.g, p.r);
        return p;
    }
};

} // namespace
} // namespace kel
