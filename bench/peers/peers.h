// Those whom the library is measured against. Each has a table: which conversion of the catalogue it can do, and how.
//
// To add one conversion: a line in its table. To add a library: a file with a table, its name here and in peers.cpp,
// and in CMakeLists.txt how to find it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Job {
    std::uint8_t *to, *from;   // what is only done in place is done in `from`
    std::size_t width, height; // mosaics begin with red: R G / G B

    std::size_t pixels() const { return width * height; }
    int columns() const { return static_cast<int>(width); }
    int rows() const { return static_cast<int>(height); }
};
using Call = std::function<void()>;

enum class Likeness {
    same, // the same formula, perhaps with other rounding
    near  // the same kinds of image by a similar method: other weights, bilinear for 2x2, ...
};

struct PeerRow {
    std::string conversion;                  // its name in the catalogue
    std::function<Call(const Job&)> prepare; // the call that is timed
    Likeness likeness = Likeness::same;
    bool outOfPlace = false; // where ours works in place
};

struct Peer {
    std::string library;
    std::string level; // of the instructions that it may use; empty: it decides for itself
    std::vector<PeerRow> rows;
    Call enter; // called before a turn, which does not count it; may be empty

    std::string name() const { return level.empty() ? library : library + " " + level; }
};

// A row that needs no preparation.
template <class Function>
PeerRow row(const std::string& conversion, Function function, Likeness likeness = Likeness::same,
            bool outOfPlace = false) {
    return {conversion, [function](const Job& job) { return [function, job] { function(job); }; }, likeness,
            outOfPlace};
}

Peer openCv();
Peer libyuv(const std::string& level);
Peer libdc1394();
Peer swscale();

// Those that were found when this program was built. The plain loops and those that can be limited are there once for each
// level.
std::vector<Peer> peers(const std::vector<std::string>& levels);

} // namespace bench
