// Tests at every instruction-set level.
#pragma once
#include <gtest/gtest.h>

#include "kernels/level.h"

namespace support {

// Limits the library to a level for as long as the object lives, and small frames go at the pace of large ones.
class LevelLimit {
public:
    explicit LevelLimit(kel::Level level) {
        kel::limitLevel(level);
        kel::paceLoopsFrom(0);
    }
    ~LevelLimit() { kel::limitLevel(kel::highestLevel()); }
    LevelLimit(const LevelLimit&) = delete;
    LevelLimit& operator=(const LevelLimit&) = delete;
};

// Runs `test` at each level that the machine has.
template <class Test> void atEveryLevel(const Test& test) {
    for (const kel::Level level : kel::levels) {
        if (level > kel::highestLevel()) break;
        SCOPED_TRACE(kel::nameOf(level));
        const LevelLimit limit(level);
        test();
    }
}

} // namespace support
