// Monochrome sources.
#include "definition/runs.h"

namespace definition {
namespace {

// A display shows more than 256 grey levels if blue and red go up one step by the two bits below the top eight. White
// stays white.
inline u8 raised(u8 v, bool up) { return static_cast<u8>(v + (up && v < 255 ? 1 : 0)); }
inline Rgb8 tinted(u8 main, u8 fraction) {
    return {raised(main, fraction & 0x80), main, raised(main, fraction & 0x40)};
}

// All 16 bits used: the byte with the top bits, and the one that tints. In little-endian data that is the byte behind,
// which belongs to the next sample; behind the last sample one more byte is read.
template <int main, int fraction> struct FullDepth : Groups<1, 2> {
    template <int> static Rgb8 pixel(const u8* s) { return tinted(s[main], s[fraction]); }
};

// The same by the sample's own fraction, and rounded by its first bit, of words with so many bits used.
template <int bitsUsed, bool bigEndian> struct Tinted : Groups<1, 2> {
    template <int> static Rgb8 pixel(const u8* s) {
        const u16 word = Word<bitsUsed, bigEndian>::template pixel<0>(s).v;
        return tinted(top(word), static_cast<u8>(word));
    }
};
template <int bitsUsed, bool bigEndian> struct Rounded : Groups<1, 2> {
    template <int> static Grey8 pixel(const u8* s) {
        const u16 word = Word<bitsUsed, bigEndian>::template pixel<0>(s).v;
        return {raised(top(word), word & 0x80)};
    }
};

// In luma the steps vanish, 77 + 29 and 54 + 18 + 128 being less than 256. Mono16 is a copy in either byte order.
template <bool bigEndian> void addFullDepth(Table& table, const std::string& source) {
    addRuns<Word<16, bigEndian>, 0, 5>(table, source);
    addRuns<FullDepth<bigEndian ? 0 : 1, bigEndian ? 1 : 2>, 1, 2, 3, 4>(table, source);
    table.add(source, 7, copy<2>);
    table.add(source, 8, copy<2>);
}

// Whole 12Packed samples as big-endian words.
void unpackBigEndian(const Job& job) {
    u8* const d = job.destination;
    forEachPixel<Whole12Packed>(job.source, job.pixels(), [d](size_t i, Grey16 p) {
        d[2 * i] = top(p.v);
        d[2 * i + 1] = static_cast<u8>(p.v);
    });
}

} // namespace

void addMono(Table& table) {
    addRuns<Byte8, 0, 1, 2, 3, 4, 5, 6>(table, "Mono8");
    addRuns<Word<10, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(table, "Mono10");
    addRuns<Word<12, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(table, "Mono12");
    addRuns<Word<12, true>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(table, "Mono12 big-endian");
    addRuns<Word<14, false>, 0, 1, 2, 3, 4, 5, 7, 8, 9>(table, "Mono14");
    addFullDepth<false>(table, "Mono16");
    addFullDepth<true>(table, "Mono16 big-endian");
    addRuns<Top12Packed, 0, 1, 2, 3, 4, 5>(table, "Mono12Packed");
    addRuns<Bits10p, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Mono10p");
    addRuns<Bits12p, 0, 1, 2, 3, 4, 5, 7, 8>(table, "Mono12p");

    addRuns<Rounded<16, true>, 0>(table, "Mono16 big-endian rounded");
    addRuns<Rounded<16, false>, 0>(table, "Mono16 rounded");
    addRuns<Rounded<12, false>, 0>(table, "Mono12 rounded");
    addRuns<Rounded<9, true>, 0>(table, "Mono9 big-endian rounded");
    addRuns<Tinted<16, true>, 1>(table, "Mono16 big-endian tinted");
    addRuns<Tinted<16, false>, 1>(table, "Mono16 tinted");
    addRuns<Tinted<12, false>, 1>(table, "Mono12 tinted");
    addRuns<Tinted<10, true>, 1>(table, "Mono10 big-endian tinted");
    addRuns<Byte8, 1>(table, "Mono8 one call");
    addRuns<Top12Packed, 0>(table, "Mono12Packed one call");
    table.add("Mono12Packed whole", "Mono16 big-endian", unpackBigEndian);
}

} // namespace definition
