// The loops that a good engineer would write without thinking of instruction sets, left to the compiler, which may use all
// that a level has.
#include "bench/peers/peers.h"
#include "catalogue/colour_matrix.h"
#include "definition/definition.h"

namespace definition { // compiled once a level, under other names

std::vector<bench::PeerRow> plainLoops(); // as peers.cpp declares it

std::vector<bench::PeerRow> plainLoops() {
    std::vector<bench::PeerRow> rows;
    for (const Conversion& conversion : conversions())
        rows.push_back(bench::row(conversion.name, [convert = conversion.convert](const bench::Job& job) {
            convert({job.to, job.from, job.width, job.height, 0, catalogue::colourMatrix});
        }));
    return rows;
}

} // namespace definition
