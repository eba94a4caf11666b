// De-interlacing and block extraction.
#include <gtest/gtest.h>

#include <numeric>

#include "orvella/orv.h"
#include "support/fill.h"
#include "support/guarded_buffer.h"

namespace {

using support::Bytes;

Bytes counted(std::size_t size) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

struct Frame {
    std::uint32_t lineLength, lines;
    Bytes woven, wovenInPlace; // of bytes 0, 1, 2, ...
};
const Frame frames[] = {
    {2, 2, {2, 3, 0, 1}, {2, 3, 0, 1}},
    {2, 4, {4, 5, 0, 1, 6, 7, 2, 3}, {4, 5, 0, 1, 6, 7, 2, 3}},
    // Lines of an odd length: the second field begins at lines * (3 / 2), or at half the frame.
    {3, 4, {4, 5, 6, 0, 1, 2, 7, 8, 9, 3, 4, 5}, {6, 7, 8, 0, 1, 2, 9, 10, 11, 3, 4, 5}},
    {1, 4, {0, 0, 1, 1}, {2, 0, 3, 1}},
    {5, 0, {}, {}},
    {0, 4, {}, {}},
};

TEST(InterlacedToProgressive, Weaves) {
    for (const auto& [lineLength, lines, woven, wovenInPlace] : frames) {
        SCOPED_TRACE(::testing::Message() << lineLength << 'x' << lines);
        Bytes source = counted(std::size_t{lineLength} * lines);
        source.reserve(1); // not null
        Bytes destination(source.size() + 1, 0xEE);
        EXPECT_EQ(OrvInterlacedToProgressive(destination.data(), source.data(), lineLength, lines), OrvErrorSuccess);
        EXPECT_EQ(destination.back(), 0xEE);
        destination.pop_back();
        EXPECT_EQ(destination, woven);
        EXPECT_EQ(OrvInterlacedToProgressive(source.data(), source.data(), lineLength, lines), OrvErrorSuccess);
        EXPECT_EQ(source, wovenInPlace);
    }
}

// ---- OrvGetSIS. Index 0 has 8 bits per pixel, 1 has 12, 6 has 48.

struct Block {
    const char* what;
    std::uint32_t width, height, index;
    std::int32_t line, kind;
    OrvErrorType result;
    std::size_t start;
};
constexpr Block blocks[] = {
    {"at the first line", 16, 4, 0, 0, 1, OrvErrorSuccess, 0},
    {"at the last line", 16, 4, 0, 3, 1, OrvErrorSuccess, 48},
    {"52 bytes", 64, 4, 0, 1, 2, OrvErrorSuccess, 64},
    {"12 bits", 16, 4, 1, 2, 1, OrvErrorSuccess, 48},
    {"48 bits", 16, 4, 6, 1, 1, OrvErrorSuccess, 96},
    {"back from the end", 16, 4, 0, -13, 1, OrvErrorSuccess, 51},
    {"12 bits, back from the end", 16, 4, 1, -10, 1, OrvErrorSuccess, 81},
    {"the whole image back", 16, 4, 0, -64, 1, OrvErrorSuccess, 0},
    {"ending with the image", 16, 4, 0, -12, 1, OrvErrorInternalFault, 0},
    {"behind the image", 16, 4, 0, 4, 1, OrvErrorInternalFault, 0},
    {"before the image", 16, 4, 0, -65, 1, OrvErrorInternalFault, 0},
    {"far before the image", 16, 4, 0, INT32_MIN, 1, OrvErrorInternalFault, 0},
    {"larger than the image", 16, 3, 0, 0, 2, OrvErrorInternalFault, 0},
    {"line and image beyond 64 bits", 0xFFFFFFFF, 1, 6, INT32_MAX, 1, OrvErrorInternalFault, 0},
    {"an image beyond 64 bits", 0xFFFFFFFF, 0xFFFFFFFF, 6, 0, 1, OrvErrorSuccess, 0},
};

TEST(GetSis, CopiesABlockWithinTheImage) {
    const support::GuardedBuffer image(384);
    for (std::size_t i = 0; i < image.bytes().size(); ++i) image.data()[i] = static_cast<std::uint8_t>(i);
    for (const Block& b : blocks) {
        SCOPED_TRACE(b.what);
        Bytes block(53, 0xEE), expected = block;
        if (b.result == OrvErrorSuccess) std::copy_n(image.data() + b.start, b.kind == 1 ? 12 : 52, expected.begin());
        EXPECT_EQ(OrvGetSIS(block.data(), image.data(), b.width, b.height, b.index, b.line, b.kind), b.result);
        EXPECT_EQ(block, expected);
    }
}

} // namespace
