#include "bench/peers/peers.h"

#include <algorithm>

#include "plain_loops.h"

#define BENCH_DECLARE(level)                                                                                           \
    namespace definition_##level {                                                                                     \
        std::vector<bench::PeerRow> plainLoops();                                                                      \
    }
BENCH_PLAIN_LOOPS(BENCH_DECLARE)

namespace bench {

std::vector<Peer> peers(const std::vector<std::string>& levels) {
    std::vector<Peer> peers;
#define BENCH_ADD(name)                                                                                                \
    if (std::ranges::count(levels, #name))                                                                             \
        peers.push_back({"plain loop", #name, definition_##name::plainLoops(), nullptr});
    BENCH_PLAIN_LOOPS(BENCH_ADD)
#ifdef ORVELLA_BENCH_LIBYUV
    for (const std::string& level : levels) peers.push_back(libyuv(level));
#endif
#ifdef ORVELLA_BENCH_OPENCV
    peers.push_back(openCv());
#endif
#ifdef ORVELLA_BENCH_LIBDC1394
    peers.push_back(libdc1394());
#endif
#ifdef ORVELLA_BENCH_SWSCALE
    peers.push_back(swscale());
#endif
    return peers;
}

} // namespace bench
