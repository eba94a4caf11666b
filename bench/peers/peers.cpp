#include "bench/peers/peers.h"

namespace bench {

std::vector<Peer> peers() {
    return {
        plainLoops(),
#ifdef ORVELLA_BENCH_OPENCV
        openCv(),
#endif
#ifdef ORVELLA_BENCH_LIBYUV
        libyuv(),
#endif
#ifdef ORVELLA_BENCH_LIBDC1394
        libdc1394(),
#endif
#ifdef ORVELLA_BENCH_SWSCALE
        swscale(),
#endif
    };
}

} // namespace bench
