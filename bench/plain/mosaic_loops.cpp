// The plain loops for mosaics: row after row, two pixels at a time, since colours repeat every other column.
#include <cstring>

#include "bench/plain/correction.h"
#include "bench/plain/loops.h"
#include "bench/plain/pixels.h"
#include "catalogue/conversions.h"

namespace bench {
namespace {

// ---- Samples. Packed ones are unpacked to a line first.

struct Raw8 {
    using Sample = u8;
    static constexpr size_t bits = 8;
};
template <class T> T sampleOf(u16 v) { return static_cast<T>(sizeof(T) == 1 ? v >> 8 : v); }

template <class T, int bitsUsed, bool bigEndian> struct Raw16 {
    using Sample = T;
    static constexpr size_t bits = 16;
    static void unpack(T* __restrict line, const u8* __restrict s, size_t width) {
        for (size_t x = 0; x < width; ++x, s += 2)
            line[x] =
                sampleOf<T>(static_cast<u16>((bigEndian ? s[0] << 8 | s[1] : s[1] << 8 | s[0]) << (16 - bitsUsed)));
    }
};
struct Top12Packed {
    using Sample = u8;
    static constexpr size_t bits = 12;
    static void unpack(u8* __restrict line, const u8* __restrict s, size_t width) {
        for (size_t x = 0; x < width; x += 2, s += 3) line[x] = s[0], line[x + 1] = s[2];
    }
};
struct Whole12Packed {
    using Sample = u16;
    static constexpr size_t bits = 12;
    static void unpack(u16* __restrict line, const u8* __restrict s, size_t width) {
        for (size_t x = 0; x < width; x += 2, s += 3) {
            line[x] = static_cast<u16>(s[0] << 8 | (s[1] & 15) << 4);
            line[x + 1] = static_cast<u16>(s[2] << 8 | (s[1] & 0xF0));
        }
    }
};
struct Raw10p {
    using Sample = u16;
    static constexpr size_t bits = 10;
    static void unpack(u16* __restrict line, const u8* __restrict s, size_t width) {
        for (size_t x = 0; x < width; x += 4, s += 5)
            for (size_t k = 0; k < 4; ++k)
                line[x + k] = static_cast<u16>((s[k] | s[k + 1] << 8) << (6 - 2 * k) & 0xFFC0);
    }
};
struct Raw12p {
    using Sample = u16;
    static constexpr size_t bits = 12;
    static void unpack(u16* __restrict line, const u8* __restrict s, size_t width) {
        for (size_t x = 0; x < width; x += 2, s += 3) {
            line[x] = static_cast<u16>((s[0] | s[1] << 8) << 4);
            line[x + 1] = static_cast<u16>((s[1] | s[2] << 8) & 0xFFF0);
        }
    }
};

// The rows of a mosaic; of two neighbours at a time if they have to be unpacked.
template <class Source> class Lines {
public:
    using Sample = typename Source::Sample;

    explicit Lines(const Job& job) : job_(job) {
        if constexpr (Source::bits != 8)
            for (std::vector<Sample>& line : lines_) line.resize(job.width + 4);
    }
    const Sample* operator[](size_t y) {
        const u8* s = job_.from + y * (job_.width * Source::bits / 8);
        if constexpr (Source::bits == 8)
            return s;
        else {
            Sample* line = lines_[y % 2].data();
            Source::unpack(line, s, job_.width);
            return line;
        }
    }

private:
    const Job& job_;
    std::vector<Sample> lines_[2];
};

// ---- 2x2: the colours of the block whose top left corner is (x, y)

inline Rgb8 colourOf(u8 r, u8 g, u8 b) { return {r, g, b}; }
inline Rgb16 colourOf(u16 r, u16 g, u16 b) { return {r, g, b}; }

template <bool redOnTop, bool evenColumn, class Sample> auto block(const Sample* top, const Sample* bottom, size_t x) {
    const Sample* red = redOnTop ? top : bottom;
    const Sample* blue = redOnTop ? bottom : top;
    const bool greenCorner = redOnTop != evenColumn;
    const int greens = greenCorner ? top[x] + bottom[x + 1] : top[x + 1] + bottom[x];
    return colourOf(red[evenColumn ? x : x + 1], static_cast<Sample>(greens >> 1), blue[evenColumn ? x + 1 : x]);
}

struct Colour {
    template <OrvOutputCode output, class Pixel> static void putTwo(u8* d, Pixel p, Pixel q) {
        if constexpr (output == OrvOutputYuv422) {
            putPair(d, p, q);
        } else {
            put<output>(d, p);
            put<output>(d + bytesPerPixel(output), q);
        }
    }
};
struct Grey {
    template <OrvOutputCode output, class Pixel> static void putTwo(u8* d, Pixel p, Pixel q) {
        put<output>(d, Grey8{luma8<bt601>(p)});
        put<output>(d + bytesPerPixel(output), Grey8{luma8<bt601>(q)});
    }
};

template <auto rule> struct Corrected {
    template <OrvOutputCode output, class Pixel> static void putTwo(u8* d, Pixel p, Pixel q) {
        put<output>(d, corrected<rule>(p));
        put<output>(d + bytesPerPixel(output), corrected<rule>(q));
    }
};

template <bool redOnTop, class Style, OrvOutputCode output, class Sample>
void row2x2(u8* __restrict d, const Sample* __restrict top, const Sample* __restrict bottom, size_t width) {
    constexpr size_t pitch = bytesPerPixel(output);
    for (size_t x = 0; x + 2 < width; x += 2)
        Style::template putTwo<output>(d + x * pitch, block<redOnTop, true>(top, bottom, x),
                                       block<redOnTop, false>(top, bottom, x + 1));
    const auto last = block<redOnTop, true>(top, bottom, width - 2);
    Style::template putTwo<output>(d + (width - 2) * pitch, last, last);
}

template <class Source, class Style, OrvOutputCode output> void mosaic2x2(const Job& job) {
    const size_t pitch = job.width * bytesPerPixel(output);
    u8* d = job.to;
    Lines<Source> lines(job);
    const auto* top = lines[0];
    for (size_t y = 0; y + 1 < job.height; ++y, d += pitch) {
        const auto* bottom = lines[y + 1];
        if (y % 2 == 0)
            row2x2<true, Style, output>(d, top, bottom, job.width);
        else
            row2x2<false, Style, output>(d, top, bottom, job.width);
        top = bottom;
    }
    std::memcpy(d, d - pitch, pitch);
}

// ---- 3x3: bilinear

template <bool redRow, bool ownSite> Rgb8 neighbourhood(const u8* s, size_t width) {
    const u8 *up = s - width, *down = s + width;
    const auto colour = [](int own, int green, int other) {
        return redRow ? Rgb8{static_cast<u8>(own), static_cast<u8>(green), static_cast<u8>(other)}
                      : Rgb8{static_cast<u8>(other), static_cast<u8>(green), static_cast<u8>(own)};
    };
    if (ownSite) return colour(s[0], (s[-1] + s[1] + up[0] + down[0]) >> 2, (up[-1] + up[1] + down[-1] + down[1]) >> 2);
    return colour((s[-1] + s[1]) >> 1, (2 * s[0] + up[1] + down[-1]) >> 2, (up[0] + down[0]) >> 1);
}

template <bool redRow, OrvOutputCode output> void row3x3(u8* __restrict d, const u8* __restrict s, size_t width) {
    constexpr size_t pitch = bytesPerPixel(output);
    for (size_t x = 1; x + 1 < width; x += 2) { // red sits in even columns, blue in odd ones
        put<output>(d + x * pitch, neighbourhood<redRow, !redRow>(s + x, width));
        put<output>(d + (x + 1) * pitch, neighbourhood<redRow, redRow>(s + x + 1, width));
    }
    std::memcpy(d, d + pitch, pitch);
    std::memcpy(d + (width - 1) * pitch, d + (width - 2) * pitch, pitch);
}

template <OrvOutputCode output> void mosaic3x3(const Job& job) {
    const size_t pitch = job.width * bytesPerPixel(output);
    for (size_t y = 1; y + 1 < job.height; ++y)
        if (y % 2 == 0)
            row3x3<true, output>(job.to + y * pitch, job.from + y * job.width, job.width);
        else
            row3x3<false, output>(job.to + y * pitch, job.from + y * job.width, job.width);
    std::memcpy(job.to, job.to + pitch, pitch);
    std::memcpy(job.to + (job.height - 1) * pitch, job.to + (job.height - 2) * pitch, pitch);
}

// ---- Chroma filters. Rows are filtered one by one: at their ends the nearest pair is repeated.

struct YuvLine {
    std::vector<u8> y, u, v; // two samples in front of u and v, two behind
    explicit YuvLine(size_t width) : y(width), u(width + 4), v(width + 4) {}
};

struct Pair {
    static int of(const u8* s, const u8*) { return (s[0] + s[1]) >> 1; }
};
struct FourOfRow {
    static int of(const u8* s, const u8*) { return (s[-2] + s[-1] + s[0] + s[1]) >> 2; }
};
struct FourOfTwoRows {
    static int of(const u8* s, const u8* b) {
        return (s[-1] + s[0] + s[1] + s[2] + b[-1] + b[0] + b[1] + b[2] + 4) >> 3;
    }
};

template <bool redOnTop> void toYuv(YuvLine& line, const u8* top, const u8* bottom, size_t width) {
    u8* __restrict y = line.y.data(), * __restrict u = line.u.data() + 2, * __restrict v = line.v.data() + 2;
    const auto set = [=](size_t x, Rgb8 p) {
        y[x] = luma8<bt601>(p);
        u[x] = static_cast<u8>(((128 * p.b - 43 * p.r - 85 * p.g) >> 8) + 128);
        v[x] = static_cast<u8>(((128 * p.r - 107 * p.g - 21 * p.b) >> 8) + 128);
    };
    for (size_t x = 0; x + 2 < width; x += 2) {
        set(x, block<redOnTop, true>(top, bottom, x));
        set(x + 1, block<redOnTop, false>(top, bottom, x + 1));
    }
    set(width - 2, block<redOnTop, true>(top, bottom, width - 2));
    set(width - 1, block<redOnTop, true>(top, bottom, width - 2));
    for (u8* plane : {u, v}) {
        plane[-2] = plane[0], plane[-1] = plane[1];
        plane[width] = plane[width - 2], plane[width + 1] = plane[width - 1];
    }
}

template <class Filter, OrvOutputCode output>
void filterRow(u8* __restrict d, const YuvLine& line, const YuvLine& below, size_t width) {
    constexpr size_t pitch = bytesPerPixel(output);
    const u8 *luma = line.y.data(), *u = line.u.data() + 2, *v = line.v.data() + 2;
    const u8 *belowU = below.u.data() + 2, *belowV = below.v.data() + 2;
    for (size_t x = 0; x < width; x += 2) {
        const int chromaU = Filter::of(u + x, belowU + x), chromaV = Filter::of(v + x, belowV + x);
        put<output>(d + x * pitch, fromYuv(luma[x], chromaU, chromaV));
        put<output>(d + (x + 1) * pitch, fromYuv(luma[x + 1], chromaU, chromaV));
    }
}

template <class Filter, OrvOutputCode output> void filtered(const Job& job) {
    const size_t width = job.width, pitch = width * bytesPerPixel(output);
    const auto fill = [&](YuvLine& line, size_t y) {
        const size_t row = y + 1 < job.height ? y : y - 1; // the last one repeats the one above
        const u8* top = job.from + row * width;
        row % 2 == 0 ? toYuv<true>(line, top, top + width, width) : toYuv<false>(line, top, top + width, width);
    };
    YuvLine line(width), below(width);
    fill(line, 0);
    for (size_t y = 0; y < job.height; ++y) {
        fill(below, y + 1 < job.height ? y + 1 : y);
        filterRow<Filter, output>(job.to + y * pitch, line, below, width);
        std::swap(line, below);
    }
}

// ---- The table

class Table {
public:
    explicit Table(std::vector<PeerRow>& rows) : rows_(rows) {}

    template <class Source, OrvOutputCode... outputs> void by2x2(const std::string& source) {
        (add(source + " 2x2", outputs, mosaic2x2<Source, Colour, outputs>), ...);
    }
    template <class Source, OrvOutputCode... outputs> void whole(const std::string& source) {
        (add(source + " 2x2 whole", outputs, mosaic2x2<Source, Colour, outputs>), ...);
    }
    template <OrvOutputCode... outputs> void bayer8() {
        (add("Bayer8 3x3", outputs, mosaic3x3<outputs>), ...);
        (add("Bayer8 YUV422", outputs, filtered<Pair, outputs>), ...);
        (add("Bayer8 LCAA", outputs, filtered<FourOfRow, outputs>), ...);
        (add("Bayer8 LCAAV", outputs, filtered<FourOfTwoRows, outputs>), ...);
    }
    // loopOutput: both lumas of OrvImageTransform with a matrix are BT.601.
    template <class Source, auto rule, OrvOutputCode output, OrvOutputCode loopOutput = output>
    void withMatrix(const std::string& source) {
        add(source, output, mosaic2x2<Source, Corrected<rule>, loopOutput>);
    }
    void add(const std::string& source, OrvOutputCode output, void (*loop)(const Job&)) {
        rows_.push_back(row(source + " -> " + catalogue::nameOf(output), loop));
    }

private:
    std::vector<PeerRow>& rows_;
};

template <class Source> void addWordsWithMatrix(Table& table, const std::string& source) {
    table.withMatrix<Source, clamped16, OrvOutputMono16>(source);
    table.withMatrix<Source, clamped16, OrvOutputMono16Rec709, OrvOutputMono16>(source);
    table.withMatrix<Source, clamped16, OrvOutputBgr48>(source);
}

} // namespace

void addMosaicLoops(std::vector<PeerRow>& rows) {
    Table table(rows);
    table.by2x2<Raw8, 0, 1, 2, 3, 4, 5, 6, 7, 8>("Bayer8");
    table.bayer8<0, 1, 2, 3, 4, 5, 7, 8>();
    table.by2x2<Raw16<u8, 10, false>, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer10");
    table.by2x2<Raw16<u16, 10, false>, 9>("Bayer10");
    table.by2x2<Raw16<u8, 12, false>, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer12");
    table.by2x2<Raw16<u16, 12, false>, 9>("Bayer12");
    table.by2x2<Raw16<u8, 12, true>, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer12 big-endian");
    table.by2x2<Raw16<u16, 12, true>, 9>("Bayer12 big-endian");
    table.by2x2<Raw16<u8, 16, false>, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer16");
    table.by2x2<Raw16<u16, 16, false>, 9>("Bayer16");
    table.by2x2<Raw16<u8, 16, true>, 0, 1, 2, 3, 4, 5>("Bayer16 big-endian");
    table.by2x2<Top12Packed, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer12Packed");
    table.by2x2<Raw10p, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer10p");
    table.by2x2<Raw12p, 0, 1, 2, 3, 4, 5, 7, 8>("Bayer12p");

    table.add("Bayer8 2x2 grey", OrvOutputBgr24, mosaic2x2<Raw8, Grey, OrvOutputBgr24>);
    table.whole<Whole12Packed, OrvOutputBgr48>("Bayer12Packed");
    table.whole<Raw16<u16, 16, true>, OrvOutputBgr48, OrvOutputMono16>("Bayer16 big-endian");

    table.withMatrix<Raw8, clamped8, OrvOutputMono8>("Bayer8 matrix");
    table.withMatrix<Raw8, clamped8, OrvOutputMono8Rec709, OrvOutputMono8>("Bayer8 matrix");
    table.withMatrix<Raw8, clamped8, OrvOutputBgr24>("Bayer8 matrix");
    table.withMatrix<Raw8, clamped8, OrvOutputRgb24>("Bayer8 matrix");
    addWordsWithMatrix<Raw16<u16, 12, false>>(table, "Bayer12 matrix");
    addWordsWithMatrix<Raw16<u16, 16, false>>(table, "Bayer16 matrix");
    addWordsWithMatrix<Raw16<u16, 16, true>>(table, "Bayer16 big-endian matrix");
    table.withMatrix<Top12Packed, wrapped8, OrvOutputBgr24>("Bayer12Packed matrix");
    table.withMatrix<Whole12Packed, clamped16, OrvOutputBgr48>("Bayer12Packed matrix");

    table.withMatrix<Raw8, clamped8, OrvOutputMono8>("Bayer8 2x2 matrix");
    table.withMatrix<Raw8, clamped8, OrvOutputBgr24>("Bayer8 2x2 matrix");
    table.withMatrix<Top12Packed, clamped8, OrvOutputBgr24>("Bayer12Packed 2x2 matrix");
    table.withMatrix<Whole12Packed, clamped16, OrvOutputBgr48>("Bayer12Packed 2x2 matrix");
    table.withMatrix<Raw16<u16, 16, true>, clamped16, OrvOutputMono16>("Bayer16 big-endian 2x2 matrix");
    table.withMatrix<Raw16<u16, 16, true>, clamped16, OrvOutputBgr48>("Bayer16 big-endian 2x2 matrix");
}

} // namespace bench
