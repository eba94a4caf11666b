// The loops that a good engineer would write without thinking of instruction sets, left to the compiler, which may use all
// that this machine has.
#include "bench/peers/peers.h"
#include "catalogue/colour_matrix.h"
#include "definition/definition.h"

namespace bench {

Peer plainLoops() {
    Peer peer{"plain loop", {}};
    for (const definition::Conversion& conversion : definition::conversions())
        peer.rows.push_back(row(conversion.name, [convert = conversion.convert](const Job& job) {
            convert({job.to, job.from, job.width, job.height, 0, catalogue::colourMatrix});
        }));
    return peer;
}

} // namespace bench
