// libdc1394: demosaics to R G B order, so for B G R it is told that the mosaic begins with blue. Its SIMPLE method is
// our 2x2; its 16-bit samples are big-endian in dc1394_convert_to_..., native in the demosaics.
#include <dc1394/dc1394.h>

#include "bench/peers/peers.h"

namespace bench {

namespace {

constexpr auto near = Likeness::near;

enum class Order { rgb, bgr };
constexpr dc1394color_filter_t filterFor(Order order) {
    return order == Order::rgb ? DC1394_COLOR_FILTER_RGGB : DC1394_COLOR_FILTER_BGGR;
}

PeerRow demosaic(const std::string& conversion, dc1394bayer_method_t method, Order order, Likeness likeness) {
    return row(
        conversion,
        [=](const Job& job) {
            dc1394_bayer_decoding_8bit(job.from, job.to, static_cast<std::uint32_t>(job.width),
                                       static_cast<std::uint32_t>(job.height), filterFor(order), method);
        },
        likeness);
}
PeerRow demosaic16(const std::string& conversion, dc1394bayer_method_t method, Order order, Likeness likeness) {
    return row(
        conversion,
        [=](const Job& job) {
            dc1394_bayer_decoding_16bit(reinterpret_cast<const std::uint16_t*>(job.from),
                                        reinterpret_cast<std::uint16_t*>(job.to), static_cast<std::uint32_t>(job.width),
                                        static_cast<std::uint32_t>(job.height), filterFor(order), method, 16);
        },
        likeness);
}

using Convert = dc1394error_t (*)(std::uint8_t*, std::uint8_t*, std::uint32_t, std::uint32_t, std::uint32_t,
                                  dc1394color_coding_t, std::uint32_t);
PeerRow coded(const std::string& conversion, Convert convert, dc1394color_coding_t coding, std::uint32_t bits = 8,
              Likeness likeness = Likeness::same) {
    return row(
        conversion,
        [=](const Job& job) {
            convert(job.from, job.to, static_cast<std::uint32_t>(job.width), static_cast<std::uint32_t>(job.height),
                    DC1394_BYTE_ORDER_UYVY, coding, bits);
        },
        likeness);
}

} // namespace

Peer libdc1394() {
    const Convert toMono8 = dc1394_convert_to_MONO8, toRgb8 = dc1394_convert_to_RGB8;
    return {"libdc1394",
            "",
            {coded("Mono8 -> RGB24", toRgb8, DC1394_COLOR_CODING_MONO8),
             coded("Mono12 big-endian -> Mono8", toMono8, DC1394_COLOR_CODING_MONO16, 12),
             coded("Mono16 big-endian -> Mono8", toMono8, DC1394_COLOR_CODING_MONO16, 16),
             coded("Mono12 big-endian -> RGB24", toRgb8, DC1394_COLOR_CODING_MONO16, 12),
             coded("Mono16 big-endian -> RGB24", toRgb8, DC1394_COLOR_CODING_MONO16, 16, near),
             coded("YUV 4:1:1 -> RGB24", toRgb8, DC1394_COLOR_CODING_YUV411),
             coded("YUV 4:2:2 -> RGB24", toRgb8, DC1394_COLOR_CODING_YUV422),
             coded("YUV 4:4:4 -> RGB24", toRgb8, DC1394_COLOR_CODING_YUV444),

             demosaic("Bayer8 2x2 -> RGB24", DC1394_BAYER_METHOD_SIMPLE, Order::rgb, Likeness::same),
             demosaic("Bayer8 2x2 -> BGR24", DC1394_BAYER_METHOD_SIMPLE, Order::bgr, Likeness::same),
             demosaic("Bayer8 3x3 -> RGB24", DC1394_BAYER_METHOD_BILINEAR, Order::rgb, near),
             demosaic("Bayer8 3x3 -> BGR24", DC1394_BAYER_METHOD_BILINEAR, Order::bgr, near),
             demosaic("Bayer8 LCAA -> RGB24", DC1394_BAYER_METHOD_EDGESENSE, Order::rgb, near),
             demosaic("Bayer8 LCAA -> BGR24", DC1394_BAYER_METHOD_EDGESENSE, Order::bgr, near),
             demosaic("Bayer8 LCAAV -> RGB24", DC1394_BAYER_METHOD_EDGESENSE, Order::rgb, near),
             demosaic("Bayer8 LCAAV -> BGR24", DC1394_BAYER_METHOD_EDGESENSE, Order::bgr, near),
             demosaic16("Bayer16 2x2 -> BGR48", DC1394_BAYER_METHOD_SIMPLE, Order::bgr, Likeness::same)},
            nullptr};
}

} // namespace bench
