// Instruction-set levels: which one is in use, and the kernel tables of each.
#pragma once
#include <cstdint>

#include "kernels/levels.h"

namespace kel {

#define KEL_ENUMERATOR(level, condition) level,
#define KEL_VALUE(level, condition) Level::level,

// Each level includes the ones before it.
enum class Level : int { KEL_LEVELS(KEL_ENUMERATOR) };
constexpr Level levels[] = {KEL_LEVELS(KEL_VALUE)}; // of this build

const char* nameOf(Level);

Level highestLevel();   // that this machine can run
Level level();          // in use: the highest, unless it was limited
void limitLevel(Level); // for tests and benchmarks: use at most this level from now on, in every thread

// Found with the level
extern std::uintptr_t prefetchAhead; // by how many bytes this machine wants loops to prefetch
extern std::uintptr_t pacedFrom;     // loops that write so many bytes and more go at a pace (kernels/pace.h)

void paceLoopsFrom(std::uintptr_t bytes); // for tests: until a level is chosen again

// Declares a family's kernel table, which is defined once per level, in namespace kel::<level>.
#define KEL_DECLARE_TABLE(level, condition, Table, name)                                                               \
    namespace level {                                                                                                  \
    extern const Table name;                                                                                           \
    }
#define KEL_KERNEL_TABLES(Table, name) KEL_LEVELS(KEL_DECLARE_TABLE, Table, name)

// The body of a function that returns the table to use.
#define KEL_ADDRESS(level, condition, name) &level::name,
#define KEL_RETURN_TABLE_IN_USE(Table, name)                                                                           \
    static constexpr const Table* tables[] = {KEL_LEVELS(KEL_ADDRESS, name)};                                          \
    return *tables[static_cast<int>(level())];

} // namespace kel
