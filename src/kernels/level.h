// Instruction-set levels: which one is in use, and the kernel tables of each.
#pragma once

namespace kel {

// Each level includes the ones before it.
enum class Level : int {
    baseline, // SSE2, which every x86-64 has
    sse4,     // SSSE3, SSE4.1
    avx2,
    avx512 // F, BW, VL, VBMI, VNNI: Ice Lake, Zen 4 and later
};
constexpr Level levels[] = {Level::baseline, Level::sse4, Level::avx2, Level::avx512};

const char* nameOf(Level);

Level highestLevel();   // that this machine can run and this build holds
Level level();          // in use: the highest, unless it was limited
void limitLevel(Level); // for tests and benchmarks: use at most this level from now on, in every thread

} // namespace kel

// Declares a family's kernel table, defined once per level in namespace kel::<level>, and the function `name` that
// finds the one to use. KEL_TOP_LEVEL is the highest level in this build.
#define KEL_KERNEL_TABLE(Table, name)                                                                                  \
    namespace baseline {                                                                                               \
    extern const Table name;                                                                                           \
    }                                                                                                                  \
    namespace sse4 {                                                                                                   \
    extern const Table name;                                                                                           \
    }                                                                                                                  \
    namespace avx2 {                                                                                                   \
    extern const Table name;                                                                                           \
    }                                                                                                                  \
    namespace avx512 {                                                                                                 \
    extern const Table name;                                                                                           \
    }                                                                                                                  \
    inline const Table& name() {                                                                                       \
        static constexpr const Table* tables[] = {KEL_UP_TO_TOP_LEVEL(name)};                                          \
        return *tables[static_cast<int>(level())];                                                                     \
    }

#if KEL_TOP_LEVEL >= 3
#define KEL_UP_TO_TOP_LEVEL(name) &baseline::name, &sse4::name, &avx2::name, &avx512::name
#elif KEL_TOP_LEVEL == 2
#define KEL_UP_TO_TOP_LEVEL(name) &baseline::name, &sse4::name, &avx2::name
#elif KEL_TOP_LEVEL == 1
#define KEL_UP_TO_TOP_LEVEL(name) &baseline::name, &sse4::name
#else
#define KEL_UP_TO_TOP_LEVEL(name) &baseline::name
#endif
