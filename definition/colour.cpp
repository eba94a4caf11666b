// RGB-family and YUV sources.
#include <cmath>
#include <limits>

#include "definition/correction.h"
#include "definition/runs.h"
#include "definition/yuv.h"

namespace definition {

i32 fixedPoint(float coefficient) {
    using Limits = std::numeric_limits<i32>;
    const float scaled = coefficient * 1024;
    if (std::isnan(scaled)) return 0;
    if (scaled >= 0x1p31F) return Limits::max();
    return scaled < -0x1p31F ? Limits::min() : static_cast<i32>(scaled);
}

namespace {

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

// ---- By a matrix. Alpha is dropped.

template <class Source, OrvOutputCode output> void corrected(const Job& job) {
    const Matrix matrix(job.matrix);
    u8* __restrict d = job.destination;
    forEachPixel<Source>(job.source, job.pixels(), [=](size_t i, auto pixel) {
        put<output>(d + outputs[output].bytes * i, matrix.correct<byteOfSum>(colour8(pixel)));
    });
}

template <class Source, OrvOutputCode same> void addRgb(Table& table, const std::string& source) {
    const auto add = [&]<OrvOutputCode... output>(std::integer_sequence<OrvOutputCode, output...>) {
        (table.add(source, output, output == same ? copy<Source::bytes> : run<Source, output>), ...);
    };
    add(std::integer_sequence<OrvOutputCode, 0, 1, 2, 3, 4, 5>());
    const auto addCorrected = [&]<OrvOutputCode... output>(std::integer_sequence<OrvOutputCode, output...>) {
        (table.add(source + " matrix", output, corrected<Source, output>), ...);
    };
    addCorrected(std::integer_sequence<OrvOutputCode, 1, 2, 3, 4>());
}

// ---- Luma in double precision, each operation rounded in this order, the sum truncated

inline u8 lumaOfRgb8ToY8(Rgb8 p) { return static_cast<u8>((0.21 * p.r + 0.72 * p.g) + 0.07 * p.b); }
inline u8 lumaOfPlanes(Rgb8 p) { return static_cast<u8>((0.299 * p.r + 0.587 * p.g) + 0.114 * p.b); }

void rgb8ToY8(const Job& job) {
    u8* __restrict d = job.destination;
    forEachPixel<Rgb>(job.source, job.pixels(), [d](size_t i, Rgb8 p) { d[i] = lumaOfRgb8ToY8(p); });
}

// ---- YUV

// The planes of 4:1:1 and 4:4:4 truncate whole sums, and their green offset is a signed byte.
inline Rgb8 bySums(Yuv p) {
    const int y = 10000 * p.y, u = p.u - 128, v = p.v - 128, offset = (-3457 * u - 7144 * v) / 10000;
    return {clamp((y + 14022 * v) / 10000),
            clamp(p.y + (offset < -128  ? -128
                         : offset > 127 ? 127
                                        : offset)),
            clamp((y + 17710 * u) / 10000)};
}

// ---- Planes: one after the other, each of width x height bytes

inline u8 lumaOf(Rgb8 p) { return lumaOfPlanes(p); }
inline u8 lumaOf(Yuv p) { return p.y; }
inline Rgb8 asItIs(Rgb8 p) { return p; }

template <class Source, auto colour, bool withLuma> void split(const Job& job) {
    const size_t n = job.pixels();
    u8* __restrict r = job.destination, * __restrict g = r + n, * __restrict b = g + n, * __restrict y = b + n;
    forEachPixel<Source>(job.source, n, [=](size_t i, auto pixel) {
        const Rgb8 c = colour(pixel);
        r[i] = c.r, g[i] = c.g, b[i] = c.b;
        if constexpr (withLuma) y[i] = lumaOf(pixel);
    });
}
template <class Source, auto colour> void addPlanes(Table& table, const std::string& source) {
    table.add(source + " planes", "R G B", split<Source, colour, false>);
    table.add(source + " planes", "R G B Y", split<Source, colour, true>);
}

} // namespace

void addColour(Table& table) {
    addRgb<Rgb, OrvOutputRgb24>(table, "RGB8");
    addRgb<Bgr, OrvOutputBgr24>(table, "BGR8");
    addRgb<Rgba, OrvOutputRgba32>(table, "RGBA8");
    addRgb<Bgra, OrvOutputBgra32>(table, "BGRA8");
    addRuns<Coloured<Yuv411>, 0, 1, 2, 3, 4, 5>(table, "YUV 4:1:1");
    addRuns<Coloured<Yuv422>, 0, 1, 2, 3, 4, 5>(table, "YUV 4:2:2");
    addRuns<Coloured<Yuv444>, 0, 1, 2, 3, 4, 5>(table, "YUV 4:4:4");

    table.add("RGB8 double precision", "Mono8", rgb8ToY8);
    addPlanes<Rgb, asItIs>(table, "RGB8");
    addPlanes<Yuv411, bySums>(table, "YUV 4:1:1");
    addPlanes<Yuv422, byProducts>(table, "YUV 4:2:2");
    addPlanes<Yuv444, bySums>(table, "YUV 4:4:4");
}

} // namespace definition
