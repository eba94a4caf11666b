// Constants of the size of a vector. Belongs to kernels/vector.h.
#pragma once

namespace kel {
namespace {

#if defined(__wasm__)

// Engines make a constant anew, of two halves, wherever it is used, and that of a shuffle, too. What the compiler cannot
// see to be one stays in a register. (Nor does clang take products with 1, 2, 4 ... for shifts then, which WebAssembly has
// none of for each word by itself.)
template <class V> INLINE V kept(V v) {
    asm("" : "+r"(v));
    return v;
}
template <int... at> INLINE Bytes arrange(Bytes v) {
    using Signed = VectorOf<signed char, N>::type;
    return as<Bytes>(__builtin_wasm_swizzle_i8x16(as<Signed>(v), as<Signed>(kept(Bytes{static_cast<u8>(at)...}))));
}

#else

template <class V> INLINE V kept(V v) { return v; }
template <int... at> INLINE Bytes arrange(Bytes v) { return __builtin_shufflevector(v, v, at...); }

#endif

} // namespace
} // namespace kel
