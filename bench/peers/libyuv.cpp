// libyuv. Its names read from the high byte of a little-endian word down: ARGB is our BGRA, ABGR our RGBA, RGB24 our
// BGR24, RAW our RGB24. Its UYVYToARGB is of studio range; by way of planes it has the full range as well.
#include <libyuv.h>

#include <vector>

#include "bench/peers/peers.h"

namespace bench {

namespace {

constexpr auto near = Likeness::near;

// Functions of one packed source and one packed destination, with line lengths of so many bytes a pixel.
using Packed = int (*)(const std::uint8_t*, int, std::uint8_t*, int, int, int);
template <int fromBytes, int toBytes>
PeerRow packed(const std::string& conversion, Packed function, Likeness likeness = Likeness::same) {
    return row(
        conversion,
        [function](const Job& job) {
            const int width = job.columns();
            function(job.from, fromBytes * width, job.to, toBytes * width, width, job.rows());
        },
        likeness);
}

const std::uint16_t* words(const std::uint8_t* bytes) { return reinterpret_cast<const std::uint16_t*>(bytes); }

template <int bits> void topBytes(const Job& job) {
    const int width = job.columns();
    libyuv::Convert16To8Plane(words(job.from), width, job.to, width, 1 << (24 - bits), width, job.rows());
}
template <int bits> void toTop(const Job& job) {
    const int width = job.columns();
    libyuv::ConvertToMSBPlane_16(words(job.from), width, reinterpret_cast<std::uint16_t*>(job.to), width, width,
                                 job.rows(), bits);
}

void greyTo24(const Job& job) {
    const int width = job.columns();
    libyuv::MergeRGBPlane(job.from, width, job.from, width, job.from, width, job.to, 3 * width, width, job.rows());
}
Call greyToUyvy(const Job& job) { // with zero chroma
    return [job, zeros = std::vector<std::uint8_t>(job.width)] {
        libyuv::MergeUVPlane(zeros.data(), 0, job.from, job.columns(), job.to, 2 * job.columns(), job.columns(),
                             job.rows());
    };
}

// Mirrors into another buffer only.
template <int bytes, class Function> PeerRow mirrored(const std::string& conversion, Function function) {
    return row(
        conversion,
        [function](const Job& job) {
            const int width = job.columns();
            function(job.from, bytes * width, job.to, bytes * width, width, job.rows());
        },
        Likeness::same, true);
}

// Lines of one and a half times the length.
template <libyuv::FilterMode mode> void stretch(const Job& job) {
    const int width = job.columns(), wide = width / 2 * 3;
    libyuv::ScalePlane(job.from, width, width, job.rows(), job.to, wide, wide, job.rows(), mode);
}
template <libyuv::FilterMode mode> void stretch16(const Job& job) {
    const int width = job.columns(), wide = width / 2 * 3;
    libyuv::ScalePlane_16(words(job.from), width, width, job.rows(), reinterpret_cast<std::uint16_t*>(job.to), wide,
                          wide, job.rows(), mode);
}

void splitRgb(const Job& job) {
    const int width = job.columns();
    std::uint8_t *r = job.to, *g = r + job.pixels(), *b = g + job.pixels();
    libyuv::SplitRGBPlane(job.from, 3 * width, r, width, g, width, b, width, width, job.rows());
}

// Row by row through planes, in full range. With U and V exchanged in the samples and in the constants, red and blue
// change places.
template <bool bgr> Call uyvyTo24(const Job& job) {
    using Line = std::vector<std::uint8_t>;
    return [job, y = Line(job.width), u = Line(job.width), v = Line(job.width)]() mutable {
        const int width = job.columns(), half = width / 2;
        for (std::size_t k = 0; k < job.height; ++k) {
            libyuv::UYVYToI422(job.from + k * 2 * job.width, 2 * width, y.data(), width, u.data(), half, v.data(), half,
                               width, 1);
            libyuv::I422ToRGB24Matrix(y.data(), width, (bgr ? u : v).data(), half, (bgr ? v : u).data(), half,
                                      job.to + k * 3 * job.width, 3 * width,
                                      bgr ? &libyuv::kYuvJPEGConstants : &libyuv::kYvuJPEGConstants, width, 1);
        }
    };
}

// What libyuv knows of the machine, less what a level of ours does not have.
int flagsFor(const std::string& level) {
    using namespace libyuv;
    const int avx512 = kCpuHasAVX512BW | kCpuHasAVX512VL | kCpuHasAVX512VNNI | kCpuHasAVX512VBMI | kCpuHasAVX512VBMI2 |
                       kCpuHasAVX512VBITALG | kCpuHasAVX512VPOPCNTDQ;
    const int avx2 = kCpuHasAVX | kCpuHasAVX2 | kCpuHasERMS | kCpuHasFMA3 | kCpuHasF16C;
    const int sse4 = kCpuHasSSSE3 | kCpuHasSSE41 | kCpuHasSSE42;
    static const int all = InitCpuFlags();
    if (level == "plain") return all & ~(avx512 | avx2 | sse4);
    if (level == "sse4") return all & ~(avx512 | avx2);
    if (level == "avx2") return all & ~avx512;
    return all;
}

} // namespace

Peer libyuv(const std::string& level) {
    using namespace libyuv;
    return {"libyuv",
            level,
            {row("Mono8 -> BGR24", greyTo24),
             row("Mono8 -> RGB24", greyTo24),
             packed<1, 4>("Mono8 -> BGRA32", J400ToARGB),
             packed<1, 4>("Mono8 -> RGBA32", J400ToARGB),
             {"Mono8 -> UYVY", greyToUyvy},
             row("Mono10 -> Mono8", topBytes<10>),
             row("Mono12 -> Mono8", topBytes<12>),
             row("Mono14 -> Mono8", topBytes<14>),
             row("Mono16 -> Mono8", topBytes<16>),
             row("Mono10 -> Mono16", toTop<10>),
             row("Mono12 -> Mono16", toTop<12>),
             row("Mono14 -> Mono16", toTop<14>),

             packed<3, 1>("RGB8 -> Mono8", RAWToJ400),
             packed<3, 3>("RGB8 -> BGR24", RAWToRGB24),
             packed<3, 4>("RGB8 -> BGRA32", RAWToARGB),
             packed<3, 4>("RGB8 -> RGBA32", RGB24ToARGB),
             packed<3, 1>("BGR8 -> Mono8", RGB24ToJ400),
             packed<3, 4>("BGR8 -> BGRA32", RGB24ToARGB),
             packed<3, 3>("BGR8 -> RGB24", RAWToRGB24),
             packed<3, 4>("BGR8 -> RGBA32", RAWToARGB),
             packed<4, 1>("RGBA8 -> Mono8", ABGRToJ400),
             packed<4, 3>("RGBA8 -> BGR24", ARGBToRAW),
             packed<4, 4>("RGBA8 -> BGRA32", ABGRToARGB),
             packed<4, 3>("RGBA8 -> RGB24", ARGBToRGB24),
             packed<4, 1>("BGRA8 -> Mono8", ARGBToJ400),
             packed<4, 3>("BGRA8 -> BGR24", ARGBToRGB24),
             packed<4, 3>("BGRA8 -> RGB24", ARGBToRAW),
             packed<4, 4>("BGRA8 -> RGBA32", ARGBToABGR),
             row("RGB8 planes -> R G B", splitRgb),

             packed<2, 1>("YUV 4:2:2 -> Mono8", UYVYToY, near),
             packed<2, 4>("YUV 4:2:2 -> BGRA32", UYVYToARGB, near),
             mirrored<1>("Mono8 flip horizontal -> Mono8", MirrorPlane),
             mirrored<1>("Mono8 turn -> Mono8", RotatePlane180),
             mirrored<3>("RGB8 flip horizontal -> RGB24", RGB24Mirror),
             row("Mono8 nearest -> Mono8", stretch<kFilterNone>, near),
             row("Mono8 linear -> Mono8", stretch<kFilterLinear>, near),
             row("Mono16 nearest -> Mono16", stretch16<kFilterNone>, near),

             {"YUV 4:2:2 -> BGR24", uyvyTo24<true>},
             {"YUV 4:2:2 -> RGB24", uyvyTo24<false>}},
            [flags = flagsFor(level)] { SetCpuFlags(flags); }};
}

} // namespace bench
