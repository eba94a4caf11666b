// Demosaicing by blocks of 2x2 and by neighbourhoods of 3x3.
#include "definition/mosaics.h"

#include <functional>
#include <type_traits>

#include "definition/correction.h"

namespace definition {
namespace {

// ---- 2x2

// The rows of a mosaic, unpacked to samples; of two neighbours at a time.
template <class Source> class Rows {
public:
    using Sample = std::remove_cvref_t<decltype(Source::template pixel<0>(nullptr).v)>;

    explicit Rows(const Job& job) : source_(job.source), width_(job.width) {
        for (std::vector<Sample>& row : rows_) row.resize(width_);
    }
    const Sample* operator[](size_t y) {
        const u8* s = source_ + y * (width_ * Source::bytes / Source::group);
        if constexpr (Source::bytes == 1) return s;
        Sample* __restrict row = rows_[y % 2].data();
        forEachPixel<Source>(s, width_, [row](size_t x, auto sample) { row[x] = sample.v; });
        return row;
    }

private:
    const u8* source_;
    size_t width_;
    std::vector<Sample> rows_[2];
};

// The last row repeats the one above, with all its bytes.
template <class Source, OrvOutputCode output, class Finish>
void mosaic2x2(const Job& job, const Layout& layout, Finish finish) {
    const size_t pitch = job.width * outputs[output].bytes;
    u8* __restrict d = job.destination;
    Rows<Source> rows(job);
    const auto* top = rows[0];
    for (size_t y = 0; y + 1 < job.height; ++y, d += pitch) {
        const auto* bottom = rows[y + 1];
        row2x2(d, layout, y, top, bottom, job.width, finish, Packed<output>());
        top = bottom;
    }
    std::memcpy(d, d - pitch, pitch);
}

template <class Source, OrvOutputCode output> void by2x2(const Job& job) {
    mosaic2x2<Source, output>(job, Layout(job.pattern), std::identity());
}
void grey2x2(const Job& job) {
    mosaic2x2<Byte8, OrvOutputBgr24>(job, Layout(job.pattern), [](Rgb8 p) { return Grey8{luma8<bt601>(p)}; });
}

// With a matrix OrvImageTransform exchanges GBRG and GRBG, the one-call converters do not.
template <class Source, auto rule, OrvOutputCode output> void corrected(const Job& job) {
    constexpr unsigned exchanged[] = {0, 2, 1, 3};
    mosaic2x2<Source, output>(job, Layout(exchanged[job.pattern]),
                              [m = Matrix(job.matrix)](auto pixel) { return m.correct<rule>(pixel); });
}
template <class Source, auto rule, OrvOutputCode output> void correctedByObject(const Job& job) {
    mosaic2x2<Source, output>(job, Layout(job.pattern),
                              [m = Matrix(job.matrix)](auto pixel) { return m.correct<rule>(pixel); });
}

// ---- 3x3, all means truncated:
//
//     a u b      at a site of red or blue                 at a green site
//     l c r      itself: c                                the colour left and right: (l + r) >> 1
//     e d f      the other: (a + b + e + f) >> 2          the colour above and below: (u + d) >> 1
//                green: (l + r + u + d) >> 2              green: (2 c + b + e) >> 2, one diagonal only

// At s: a pixel of a row whose own colour besides green is red, or else blue.
template <bool redRow, bool greenSite> Rgb8 neighbourhood(const u8* s, size_t width) {
    const u8 *up = s - width, *down = s + width;
    const auto colour = [](int own, int green, int other) {
        return redRow ? colourOf(static_cast<u8>(own), green, static_cast<u8>(other))
                      : colourOf(static_cast<u8>(other), green, static_cast<u8>(own));
    };
    if (greenSite) return colour((s[-1] + s[1]) >> 1, (2 * s[0] + up[1] + down[-1]) >> 2, (up[0] + down[0]) >> 1);
    return colour(s[0], (s[-1] + s[1] + up[0] + down[0]) >> 2, (up[-1] + up[1] + down[-1] + down[1]) >> 2);
}

// The inner pixels, and then the outer columns as copies of their neighbours, with all their bytes. (Of two columns
// none is inner: both become what the destination's first pixel was.)
template <OrvOutputCode output, bool redRow, bool greenInOddColumns>
ROW row3x3(u8* __restrict d, const u8* __restrict s, size_t width) {
    constexpr size_t bytes = outputs[output].bytes;
    for (size_t x = 1; x + 1 < width; x += 2) {
        put<output>(d + x * bytes, neighbourhood<redRow, greenInOddColumns>(s + x, width));
        put<output>(d + (x + 1) * bytes, neighbourhood<redRow, !greenInOddColumns>(s + x + 1, width));
    }
    std::memcpy(d + (width - 1) * bytes, d + (width - 2) * bytes, bytes);
    std::memcpy(d, d + bytes, bytes);
}

// The outer rows are copies of their neighbours, too. (Of two rows none is inner: both are zero.)
template <OrvOutputCode output> void by3x3(const Job& job) {
    const size_t pitch = job.width * outputs[output].bytes;
    const Layout layout(job.pattern);
    u8* const d = job.destination;
    std::memset(d, 0, pitch);
    for (size_t y = 1; y + 1 < job.height; ++y) {
        const bool redRow = layout.isRedRow(y), greenInOddColumns = redRow == (layout.redColumn == 0);
        u8* const to = d + y * pitch;
        const u8* const from = job.source + y * job.width;
        if (redRow)
            greenInOddColumns ? row3x3<output, true, true>(to, from, job.width)
                              : row3x3<output, true, false>(to, from, job.width);
        else
            greenInOddColumns ? row3x3<output, false, true>(to, from, job.width)
                              : row3x3<output, false, false>(to, from, job.width);
    }
    std::memcpy(d + (job.height - 1) * pitch, d + (job.height - 2) * pitch, pitch);
    std::memcpy(d, d + pitch, pitch);
}

// ---- The tables

template <class Source, OrvOutputCode... output>
void add2x2(Table& table, const std::string& source, const char* method = " 2x2") {
    (table.add(source + method, output, by2x2<Source, output>), ...);
}
// Words give colours and luma of their top eight bits; only BGR48 takes them whole.
template <int bitsUsed, bool bigEndian> void addWords(Table& table, const std::string& source) {
    add2x2<TopOfWord<bitsUsed, bigEndian>, 0, 1, 2, 3, 4, 5, 7, 8>(table, source);
    add2x2<Word<bitsUsed, bigEndian>, 9>(table, source);
}
// Both lumas of corrected pixels are BT.601.
template <class Source> void addCorrectedWords(Table& table, const std::string& source) {
    table.add(source + " matrix", OrvOutputMono16, corrected<Source, wordOfSum, OrvOutputMono16>);
    table.add(source + " matrix", OrvOutputMono16Rec709, corrected<Source, wordOfSum, OrvOutputMono16>);
    table.add(source + " matrix", OrvOutputBgr48, corrected<Source, wordOfSum, OrvOutputBgr48>);
}
template <OrvOutputCode... output> void add3x3(Table& table) { (table.add("Bayer8 3x3", output, by3x3<output>), ...); }

} // namespace

void addMosaics(Table& table) {
    using Words16 = Word<16, true>;
    add2x2<Byte8, 0, 1, 2, 3, 4, 5, 6, 7, 8>(table, "Bayer8");
    add3x3<0, 1, 2, 3, 4, 5, 7, 8>(table);
    addWords<10, false>(table, "Bayer10");
    addWords<12, false>(table, "Bayer12");
    addWords<12, true>(table, "Bayer12 big-endian");
    addWords<16, false>(table, "Bayer16");
    add2x2<TopOfWord<16, true>, 0, 1, 2, 3, 4, 5>(table, "Bayer16 big-endian");
    add2x2<Top12Packed, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer12Packed");
    add2x2<Bits10p, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer10p");
    add2x2<Bits12p, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Bayer12p");

    table.add("Bayer8 2x2 grey", OrvOutputBgr24, grey2x2);
    add2x2<Whole12Packed, 9>(table, "Bayer12Packed", " 2x2 whole");
    add2x2<Words16, 7, 9>(table, "Bayer16 big-endian", " 2x2 whole");

    table.add("Bayer8 matrix", OrvOutputMono8, corrected<Byte8, byteOfSum, OrvOutputMono8>);
    table.add("Bayer8 matrix", OrvOutputMono8Rec709, corrected<Byte8, byteOfSum, OrvOutputMono8>);
    table.add("Bayer8 matrix", OrvOutputBgr24, corrected<Byte8, byteOfSum, OrvOutputBgr24>);
    table.add("Bayer8 matrix", OrvOutputRgb24, corrected<Byte8, byteOfSum, OrvOutputRgb24>);
    addCorrectedWords<Word<10, false>>(table, "Bayer10");
    addCorrectedWords<Word<12, false>>(table, "Bayer12");
    addCorrectedWords<Word<16, false>>(table, "Bayer16");
    addCorrectedWords<Words16>(table, "Bayer16 big-endian");
    table.add("Bayer12Packed matrix", OrvOutputBgr24, corrected<Top12Packed, lowByteOfSum, OrvOutputBgr24>);
    table.add("Bayer12Packed matrix", OrvOutputBgr48, corrected<Whole12Packed, wordOfSum, OrvOutputBgr48>);

    table.add("Bayer8 2x2 matrix", OrvOutputMono8, correctedByObject<Byte8, byteOfSum, OrvOutputMono8>);
    table.add("Bayer8 2x2 matrix", OrvOutputBgr24, correctedByObject<Byte8, byteOfSum, OrvOutputBgr24>);
    table.add("Bayer12Packed 2x2 matrix", OrvOutputBgr24, correctedByObject<Top12Packed, byteOfSum, OrvOutputBgr24>);
    table.add("Bayer12Packed 2x2 matrix", OrvOutputBgr48, correctedByObject<Whole12Packed, wordOfSum, OrvOutputBgr48>);
    table.add("Bayer16 big-endian 2x2 matrix", OrvOutputMono16, correctedByObject<Words16, wordOfSum, OrvOutputMono16>);
    table.add("Bayer16 big-endian 2x2 matrix", OrvOutputBgr48, correctedByObject<Words16, wordOfSum, OrvOutputBgr48>);
}

} // namespace definition
