// One conversion, done by everybody who can.
#pragma once
#include <string>
#include <vector>

#include "bench/arguments.h"
#include "bench/buffer.h"
#include "bench/measure.h"
#include "bench/peers/peers.h"
#include "catalogue/conversions.h"
#include "kernels/level.h"

namespace bench {

using Conversions = std::vector<const catalogue::Conversion*>;

// Two buffers that serve all these conversions at all these sizes.
class Memory {
public:
    Memory(const Conversions& conversions, const std::vector<Size>& sizes);

    std::uint8_t* from() const { return from_.data(); }
    std::uint8_t* to() const { return to_.data(); }

private:
    Buffer from_, to_;
};

// The library's conversion at a level, and memcpy moving as many bytes (read and written together).
Contestant ours(const catalogue::Conversion& conversion, Size size, const Memory& memory, kel::Level level);
Contestant copying(const catalogue::Conversion& conversion, Size size, const Memory& memory);

struct Result {
    std::string name; // of a level or a peer
    Likeness likeness;
    double seconds;
};
struct Outcome {
    const catalogue::Conversion* conversion;
    Size size;
    double copySeconds;
    std::vector<Result> results; // the levels' first, from low to high

    const Result* find(const std::string& name) const;
};

class Contest {
public:
    // Throws if a peer's table names a conversion that the catalogue does not have.
    Contest(std::vector<kel::Level> levels, bool withPeers);

    std::vector<std::string> names() const; // of levels and peers
    std::string best() const { return kel::nameOf(levels_.back()); }

    // Throws if the levels' results differ at all, or a peer's result differs too much from them.
    void check(const catalogue::Conversion& conversion) const;

    Outcome run(const catalogue::Conversion& conversion, Size size, const Memory& memory, Effort effort) const;

private:
    std::vector<std::string> levelNames() const;

    std::vector<kel::Level> levels_;
    std::vector<Peer> peers_;
};

} // namespace bench
