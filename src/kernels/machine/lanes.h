// Vectors read and written lane by lane: lane k comes from p + k * step, and goes there. Belongs to kernels/vector.h.
#pragma once

namespace kel {
namespace {

#if defined(KEL_AVX2)

// As shuffles, which the general form below is, g++ joins and parts the lanes with the port that permutes bytes.
static_assert(N == 2 * L);
INLINE Bytes loadLanes(const u8* p, size_t step) {
    const __m256i low = _mm256_castsi128_si256(load<__m128i>(p));
    return as<Bytes>(_mm256_inserti128_si256(low, load<__m128i>(p + step), 1));
}
INLINE void storeLanes(u8* p, size_t step, Bytes v) {
    store(p, _mm256_castsi256_si128(as<__m256i>(v)));
    store(p + step, _mm256_extracti128_si256(as<__m256i>(v), 1));
}

#else

static_assert(N == L);
INLINE Bytes loadLanes(const u8* p, size_t) { return load(p); }
INLINE void storeLanes(u8* p, size_t, Bytes v) { store(p, v); }

#endif

} // namespace
} // namespace kel
