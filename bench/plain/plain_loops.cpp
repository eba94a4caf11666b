// The loops a good engineer would write without thinking of instruction sets: one pass, one pixel or one packed group
// after the other, left to the compiler, which may use all that this machine has.
#include <cstring>
#include <utility>

#include "bench/peers/peers.h"
#include "bench/plain/correction.h"
#include "bench/plain/loops.h"
#include "bench/plain/pixels.h"
#include "catalogue/conversions.h"

namespace bench {
namespace {

// A source has groups of pixels in so many bytes; pixel<k>() is number k of the group at s.
template <int pixels, int bytesOfGroup> struct Groups { static constexpr int group = pixels, bytes = bytesOfGroup; };

struct Mono8 : Groups<1, 1> {
    template <int> static Grey8 pixel(const u8* s) { return {*s}; }
};
template <int bits, bool bigEndian> struct Mono16 : Groups<1, 2> {
    template <int> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((bigEndian ? s[0] << 8 | s[1] : s[1] << 8 | s[0]) << (16 - bits))};
    }
};
inline u8 raised(u8 v, bool up) { return static_cast<u8>(v + (up && v < 255 ? 1 : 0)); }
// Blue and red go up a step by bits of the fraction.
template <int main, int fraction> struct Tinted : Groups<1, 2> {
    template <int> static Rgb8 pixel(const u8* s) {
        const u8 v = s[main], f = s[fraction];
        return {raised(v, f & 0x80), v, raised(v, f & 0x40)};
    }
};
// The top eight bits, and one more by those below.
template <int bits, bool bigEndian> u16 msbAligned(const u8* s) {
    return Mono16<bits, bigEndian>::template pixel<0>(s).v;
}
template <int bits, bool bigEndian> struct Rounded : Groups<1, 2> {
    template <int> static Grey8 pixel(const u8* s) {
        const u16 word = msbAligned<bits, bigEndian>(s);
        return {raised(top(word), word & 0x80)};
    }
};
template <int bits, bool bigEndian> struct TintedWord : Groups<1, 2> {
    template <int> static Rgb8 pixel(const u8* s) {
        const u16 word = msbAligned<bits, bigEndian>(s);
        return {raised(top(word), word & 0x80), top(word), raised(top(word), word & 0x40)};
    }
};
struct Mono12Packed : Groups<2, 3> {
    template <int k> static Grey8 pixel(const u8* s) { return {s[2 * k]}; }
};
struct Mono10p : Groups<4, 5> {
    template <int k> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((s[k] | s[k + 1] << 8) << (6 - 2 * k) & 0xFFC0)};
    }
};
struct Mono12p : Groups<2, 3> {
    template <int k> static Grey16 pixel(const u8* s) {
        return {static_cast<u16>((s[k] | s[k + 1] << 8) << (4 - 4 * k) & 0xFFF0)};
    }
};

struct Rgb : Groups<1, 3> {
    template <int> static Rgb8 pixel(const u8* s) { return {s[0], s[1], s[2]}; }
};
struct Bgr : Groups<1, 3> {
    template <int> static Rgb8 pixel(const u8* s) { return {s[2], s[1], s[0]}; }
};
struct Rgba : Groups<1, 4> {
    template <int> static Rgba8 pixel(const u8* s) { return {s[0], s[1], s[2], s[3]}; }
};
struct Bgra : Groups<1, 4> {
    template <int> static Rgba8 pixel(const u8* s) { return {s[2], s[1], s[0], s[3]}; }
};

template <class Source> struct WithMatrix : Source {
    template <int k> static Rgb8 pixel(const u8* s) {
        return corrected<clamped8>(colour8(Source::template pixel<k>(s)));
    }
};

struct Yuv {
    u8 y, u, v;
};
struct Yuv411 : Groups<4, 6> {
    template <int k> static Yuv yuv(const u8* s) { return {s[1 + k + k / 2], s[0], s[3]}; }
};
struct Yuv422 : Groups<2, 4> {
    template <int k> static Yuv yuv(const u8* s) { return {s[1 + 2 * k], s[0], s[2]}; }
};
struct Yuv444 : Groups<1, 3> {
    template <int> static Yuv yuv(const u8* s) { return {s[1], s[0], s[2]}; }
};
template <class Source> struct Coloured : Source {
    template <int k> static Rgb8 pixel(const u8* s) {
        const Yuv p = Source::template yuv<k>(s);
        return fromYuv(p.y, p.u, p.v);
    }
};

// ---- Packed outputs

template <class Source, OrvOutputCode output, int... k>
void convertGroups(const Job& job, std::integer_sequence<int, k...>) {
    constexpr size_t pitch = bytesPerPixel(output);
    const size_t groups = job.pixels() / Source::group;
    u8* __restrict d = job.to;
    const u8* __restrict s = job.from;
    for (size_t i = 0; i < groups; ++i)
        (put<output>(d + pitch * (Source::group * i + k), Source::template pixel<k>(s + Source::bytes * i)), ...);
}
template <class Source, OrvOutputCode output> void convert(const Job& job) {
    convertGroups<Source, output>(job, std::make_integer_sequence<int, Source::group>());
}

template <int bytes> void copy(const Job& job) { std::memmove(job.to, job.from, job.pixels() * bytes); }

void unpackBigEndian(const Job& job) {
    u8* __restrict d = job.to;
    const u8* __restrict s = job.from;
    for (size_t i = 0; i < job.pixels(); i += 2, d += 4, s += 3) {
        d[0] = s[0], d[1] = static_cast<u8>(s[1] << 4);
        d[2] = s[2], d[3] = s[1] & 0xF0;
    }
}

void rgbToMono8InDoublePrecision(const Job& job) {
    const size_t n = job.pixels();
    u8* __restrict d = job.to;
    const u8* __restrict s = job.from;
    for (size_t i = 0; i < n; ++i)
        d[i] = static_cast<u8>((0.21 * s[3 * i] + 0.72 * s[3 * i + 1]) + 0.07 * s[3 * i + 2]);
}

// ---- Planes

struct WithLuma {
    Rgb8 colour;
    u8 luma;
};
struct RgbPlanes : Groups<1, 3> {
    template <int> static WithLuma pixel(const u8* s) {
        return {{s[0], s[1], s[2]}, static_cast<u8>((0.299 * s[0] + 0.587 * s[1]) + 0.114 * s[2])};
    }
};
template <class Source> struct YuvPlanes : Source {
    template <int k> static WithLuma pixel(const u8* s) {
        const Yuv p = Source::template yuv<k>(s);
        return {fromYuv(p.y, p.u, p.v), p.y};
    }
};

template <class Source, bool luma, int... k> void splitGroups(const Job& job, std::integer_sequence<int, k...>) {
    const size_t n = job.pixels(), groups = n / Source::group;
    u8* __restrict r = job.to, * __restrict g = r + n, * __restrict b = g + n, * __restrict y = b + n;
    const u8* __restrict s = job.from;
    const auto put = [=](size_t i, WithLuma p) {
        r[i] = p.colour.r, g[i] = p.colour.g, b[i] = p.colour.b;
        if constexpr (luma) y[i] = p.luma;
    };
    for (size_t i = 0; i < groups; ++i)
        (put(Source::group * i + k, Source::template pixel<k>(s + Source::bytes * i)), ...);
}
template <class Source, bool luma> void split(const Job& job) {
    splitGroups<Source, luma>(job, std::make_integer_sequence<int, Source::group>());
}

// ---- The table

template <class Source, OrvOutputCode... outputs> void add(std::vector<PeerRow>& rows, const std::string& source) {
    (rows.push_back(row(source + " -> " + catalogue::nameOf(outputs), convert<Source, outputs>)), ...);
}

} // namespace

void addPixelLoops(std::vector<PeerRow>& rows) {
    add<Mono8, 1, 2, 3, 4, 6>(rows, "Mono8");
    add<Mono16<10, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(rows, "Mono10");
    add<Mono16<12, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(rows, "Mono12");
    add<Mono16<12, true>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(rows, "Mono12 big-endian");
    add<Mono16<14, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(rows, "Mono14");
    add<Tinted<1, 2>, 1, 2, 3, 4>(rows, "Mono16");
    add<Mono16<16, false>, 0, 5>(rows, "Mono16");
    add<Tinted<0, 1>, 1, 2, 3, 4>(rows, "Mono16 big-endian");
    add<Mono16<16, true>, 0, 5>(rows, "Mono16 big-endian");
    add<Mono12Packed, 0, 1, 2, 3, 4, 5>(rows, "Mono12Packed");
    add<Mono10p, 0, 1, 2, 3, 4, 5, 7, 8>(rows, "Mono10p");
    add<Mono12p, 0, 1, 2, 3, 4, 5, 7, 8>(rows, "Mono12p");
    add<Rgb, 0, 1, 2, 4, 5>(rows, "RGB8");
    add<Bgr, 0, 2, 3, 4, 5>(rows, "BGR8");
    add<Rgba, 0, 1, 2, 3, 5>(rows, "RGBA8");
    add<Bgra, 0, 1, 3, 4, 5>(rows, "BGRA8");
    add<Coloured<Yuv411>, 0, 1, 2, 3, 4, 5>(rows, "YUV 4:1:1");
    add<Coloured<Yuv422>, 0, 1, 2, 3, 4, 5>(rows, "YUV 4:2:2");
    add<Coloured<Yuv444>, 0, 1, 2, 3, 4, 5>(rows, "YUV 4:4:4");

    // Nothing to convert.
    for (const char* name : {"Mono8 -> Mono8", "Mono8 -> Mono8 BT.709"}) rows.push_back(row(name, copy<1>));
    for (const char* name : {"Mono16 -> Mono16", "Mono16 -> Mono16 BT.709", "Mono16 big-endian -> Mono16",
                             "Mono16 big-endian -> Mono16 BT.709"})
        rows.push_back(row(name, copy<2>));
    for (const char* name : {"RGB8 -> RGB24", "BGR8 -> BGR24"}) rows.push_back(row(name, copy<3>));
    for (const char* name : {"RGBA8 -> RGBA32", "BGRA8 -> BGRA32"}) rows.push_back(row(name, copy<4>));

    rows.push_back(row("RGB8 double precision -> Mono8", rgbToMono8InDoublePrecision));
    rows.push_back(row("RGB8 planes -> R G B", split<RgbPlanes, false>));
    rows.push_back(row("RGB8 planes -> R G B Y", split<RgbPlanes, true>));
    rows.push_back(row("YUV 4:1:1 planes -> R G B", split<YuvPlanes<Yuv411>, false>));
    rows.push_back(row("YUV 4:1:1 planes -> R G B Y", split<YuvPlanes<Yuv411>, true>));
    rows.push_back(row("YUV 4:2:2 planes -> R G B", split<YuvPlanes<Yuv422>, false>));
    rows.push_back(row("YUV 4:2:2 planes -> R G B Y", split<YuvPlanes<Yuv422>, true>));
    rows.push_back(row("YUV 4:4:4 planes -> R G B", split<YuvPlanes<Yuv444>, false>));
    rows.push_back(row("YUV 4:4:4 planes -> R G B Y", split<YuvPlanes<Yuv444>, true>));

    add<Rounded<16, true>, 0>(rows, "Mono16 big-endian rounded");
    add<Rounded<16, false>, 0>(rows, "Mono16 rounded");
    add<Rounded<12, false>, 0>(rows, "Mono12 rounded");
    add<Rounded<9, true>, 0>(rows, "Mono9 big-endian rounded");
    add<Tinted<0, 1>, 1>(rows, "Mono16 big-endian tinted");
    add<Tinted<1, 0>, 1>(rows, "Mono16 tinted");
    add<TintedWord<12, false>, 1>(rows, "Mono12 tinted");
    add<TintedWord<10, true>, 1>(rows, "Mono10 big-endian tinted");
    add<Mono8, 1>(rows, "Mono8 one call");
    add<Mono12Packed, 0>(rows, "Mono12Packed one call");
    rows.push_back(row("Mono12Packed whole -> Mono16 big-endian", unpackBigEndian));
    add<WithMatrix<Rgb>, 1, 2, 3, 4>(rows, "RGB8 matrix");
    add<WithMatrix<Bgr>, 1, 2, 3, 4>(rows, "BGR8 matrix");
    add<WithMatrix<Rgba>, 1, 2, 3, 4>(rows, "RGBA8 matrix");
    add<WithMatrix<Bgra>, 1, 2, 3, 4>(rows, "BGRA8 matrix");
}

Peer plainLoops() {
    Peer peer{"plain loop", {}};
    for (const auto add : {addPixelLoops, addMosaicLoops, addCygmLoops, addGeometryLoops}) add(peer.rows);
    return peer;
}

} // namespace bench
