// What a dump without a header may hold: formats and sizes, from the bytes alone.
//
// Each guess is a model of the dump: samples that lie in a certain way, rows of a certain length. The better a model
// predicts samples from their neighbours of the same colour, the shorter the dump could be coded by it; the shortest code
// wins. That finds the depth and packing (wrong ones make noise of the low bits), the width (other rows do not match) and
// mosaics (neighbours of another colour do not match), all in one scale.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace picture {

enum class Storage { bytes, littleEndian, bigEndian, packed12, stream10, stream12 };
enum class Kind { grey, mosaic, rgb, rgba, yuv411, yuv422, yuv444 };

struct Guess {
    Storage storage = Storage::bytes;
    Kind kind = Kind::grey;
    unsigned bits = 8;       // that samples use
    bool highBits = false;   // words hold their samples there
    bool greenFirst = false; // mosaics: the first sample is green
    bool redFirst = true;    // colours and mosaics: before blue, which is a guess between equals
    std::uint32_t width = 0, height = 0;
    std::uint32_t frames = 1;  // of this size, one after the other
    std::uint32_t padding = 0; // columns at the right that are all the same, at most 64
    double cost = 0;           // bits for each byte of the dump
};

// The best first; at most `count`. A size in `usual` counts a little more than another.
struct UsualSize {
    std::uint32_t width, height;
};
std::vector<Guess> guess(std::span<const std::uint8_t> dump, std::span<const UsualSize> usual, std::size_t count);

} // namespace picture
