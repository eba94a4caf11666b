// Calls that must write the same bytes as another call.
#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <sys/mman.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "orvella/orv.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/guarded_buffer.h"
#include "support/levels.h"

namespace {

using support::Bytes;
using u32 = std::uint32_t;
using i32 = std::int32_t;

// A call on a destination and a source of fixed sizes.
using Call = std::function<OrvErrorType(void* destination, void* source)>;

constexpr u32 width = 260, height = 6, n = width * height;

class Identities : public ::testing::Test {
protected:
    // `second` gets the source that `prepare` makes of the first one's.
    void expectSame(
        const std::string& what, const Call& first, const Call& second,
        const std::function<void(Bytes&)>& prepare = [](Bytes&) {}) {
        const Bytes source = support::filled(std::size_t{3} * n, support::Contents::noise, random_);
        const Bytes prefill = support::filled(std::size_t{6} * n, support::Contents::noise, random_);
        Bytes sourceOfFirst = source, sourceOfSecond = source, expected = prefill, actual = prefill;
        prepare(sourceOfSecond);
        EXPECT_EQ(second(expected.data(), sourceOfSecond.data()), OrvErrorSuccess) << what;
        EXPECT_EQ(first(actual.data(), sourceOfFirst.data()), OrvErrorSuccess) << what;
        EXPECT_TRUE(support::same(expected, actual)) << what;
        EXPECT_TRUE(expected != prefill) << what << " wrote nothing";
    }

private:
    support::Random random_{support::seed()};
};

// ---- Bayer patterns

template <auto function, u32... output> OrvErrorType mosaic(void* d, void* s, i32 pattern) {
    return function(d, s, width, height, output..., pattern);
}
using MosaicCall = OrvErrorType (*)(void* destination, void* source, i32 pattern);

// A family and its one-call converter, or twice what there is. The pattern -1 means 3.
TEST_F(Identities, MosaicsAndTheirConverters) {
    struct {
        const char* name;
        MosaicCall family, converter;
    } const mosaics[] = {
        {"2x2", mosaic<OrvRaw8ImageTransform, OrvOutputBgr24>, mosaic<OrvRaw8ToBGR>},
        {"3x3", mosaic<OrvRaw8ImageTransform_3x3, OrvOutputBgr24>, mosaic<OrvRaw8ToBGR_3x3>},
        {"LCAA", mosaic<OrvRaw8ImageTransform_IntLCAA, OrvOutputBgr24>, mosaic<OrvRaw8ToBGR_IntLCAA>},
        {"LCAAV", mosaic<OrvRaw8ImageTransform_IntLCAAV, OrvOutputBgr24>, mosaic<OrvRaw8ToBGR_IntLCAAV>},
        {"YUV422", mosaic<OrvRaw8ImageTransform_IntYUV422, OrvOutputBgr24>, mosaic<OrvRaw8ToBGR_IntYUV422>},
        {"Y8", mosaic<OrvRaw8ImageTransform, OrvOutputMono8>, mosaic<OrvRaw8ToY8>},
        {"12Packed", mosaic<OrvRaw12ImageTransform, OrvOutputBgr24>, mosaic<OrvRaw12ToBGR>},
        {"16", mosaic<OrvRaw16ImageTransform, OrvOutputBgr24>, mosaic<OrvRaw16ToBGR>},
        {"10p", mosaic<OrvRaw10pImageTransform, OrvOutputBgr24>, mosaic<OrvRaw10pImageTransform, OrvOutputBgr24>},
        {"12p", mosaic<OrvRaw12pImageTransform, OrvOutputBgr24>, mosaic<OrvRaw12pImageTransform, OrvOutputBgr24>},
        {"grey", mosaic<OrvRaw8ToBGR_mono>, mosaic<OrvRaw8ToBGR_mono>},
        {"12Packed whole", mosaic<OrvRaw12ToBGR16>, mosaic<OrvRaw12ToBGR16>},
        {"16 whole", mosaic<OrvRaw16ToBGR16>, mosaic<OrvRaw16ToBGR16>},
        {"16 whole, grey", mosaic<OrvRaw16ToY16>, mosaic<OrvRaw16ToY16>},
    };
    for (const auto& row : mosaics)
        for (const i32 pattern : {-1, 0, 1, 2, 3}) {
            const i32 known = pattern < 0 ? 3 : pattern;
            const MosaicCall family = row.family, converter = row.converter;
            const auto of = [](MosaicCall call, i32 p) -> Call {
                return [=](void* d, void* s) { return call(d, s, p); };
            };
            expectSame(row.name, of(converter, pattern), of(family, known));
            expectSame(row.name, of(family, pattern), of(family, known));
        }
}

Call shiftedMosaic(const OrvShiftRecord& record, u32 output) {
    return [=](void* d, void* s) { return OrvRaw16ImageTransformEx(d, s, width, height, output, &record); };
}
Call shiftedMono(const OrvShiftRecord& record, u32 output) {
    return [=](void* d, void* s) { return OrvY16ImageTransformEx(d, s, n, output, &record); };
}

// The function with a record does not check the pattern: of an unknown one the two low bits are the phase, in which
// GBRG and GRBG are exchanged.
TEST_F(Identities, PatternsOfShiftRecords) {
    constexpr std::pair<u32, u32> patterns[] = {{4, 0}, {5, 2}, {6, 1}, {7, 3}, {255, 3}, {0xFFFFFFFF, 3}};
    for (const auto& [unknown, known] : patterns)
        expectSame("pattern " + std::to_string(unknown), shiftedMosaic({0, 0, 16, 0, unknown}, OrvOutputBgr24),
                   shiftedMosaic({0, 0, 16, 0, known}, OrvOutputBgr24));
}

// ---- Shift records

void changeWords(Bytes& bytes, u32 shift, bool swap) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const u32 word = bytes[i] | static_cast<u32>(bytes[i + 1]) << 8;
        const u32 shifted = word << shift;
        bytes[i] = static_cast<std::uint8_t>(swap ? shifted >> 8 : shifted);
        bytes[i + 1] = static_cast<std::uint8_t>(swap ? shifted : shifted >> 8);
    }
}

// Words with fewer bits used, in either byte order, are like the words shifted to the top.
TEST_F(Identities, ShiftRecords) {
    support::atEveryLevel([this] {
        for (const u32 bits : {10U, 12U, 13U, 14U, 15U, 16U})
            for (const u32 endianness : {0U, 1U})
                for (const u32 output : {0U, 1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U}) {
                    // The source of the record under test is little-endian noise read as `endianness` says.
                    const OrvShiftRecord record{0, 1, bits, endianness, 1}, plain{0, 0, 16, 0, 1};
                    const auto normalise = [=](Bytes& bytes) {
                        if (endianness == 1) changeWords(bytes, 0, true);
                        changeWords(bytes, 16 - bits, false);
                    };
                    const std::string what = std::to_string(bits) + " bits, endianness " + std::to_string(endianness) +
                                             ", output " + std::to_string(output);
                    expectSame("mono " + what, shiftedMono(record, output), shiftedMono(plain, output), normalise);
                    expectSame("mosaic " + what, shiftedMosaic(record, output), shiftedMosaic(plain, output),
                               normalise);
                }
    });
}

TEST_F(Identities, ShiftRecordsThatDoNotShift) {
    for (const u32 output : {0U, 1U, 7U, 9U}) {
        expectSame(
            "no record", [=](void* d, void* s) { return OrvY16ImageTransformEx(d, s, n, output, nullptr); },
            shiftedMono({0, 0, 16, 1, 0}, output));
        for (const u32 bits : {0U, 11U, 99U})
            expectSame("MSB-aligned, " + std::to_string(bits) + " bits", shiftedMono({1, 0, bits, 0, 0}, output),
                       shiftedMono({0, 1, 16, 0, 0}, output));
    }
}

// ---- One-call converters

TEST_F(Identities, OneCallConverters) {
    struct {
        const char* name;
        Call converter, transform;
    } const identities[] = {
        {"Y16ToY8_MMX", [](void* d, void* s) { return OrvY16ToY8_MMX(d, s, n); },
         [](void* d, void* s) { return OrvY16ToY8(d, s, n); }},
        {"RGB8ToBGR", [](void* d, void* s) { return OrvRGB8ToBGR(d, s, n); },
         [](void* d, void* s) { return OrvRGB8ImageTransform(d, s, n, OrvOutputBgr24); }},
        {"YUV411ToBGR", [](void* d, void* s) { return OrvYUV411ToBGR(d, s, n); },
         [](void* d, void* s) { return OrvYUV411ImageTransform(d, s, n, OrvOutputBgr24); }},
        {"YUV422ToBGR", [](void* d, void* s) { return OrvYUV422ToBGR(d, s, n); },
         [](void* d, void* s) { return OrvYUV422ImageTransform(d, s, n, OrvOutputBgr24); }},
        {"YUV444ToBGR", [](void* d, void* s) { return OrvYUV444ToBGR(d, s, n); },
         [](void* d, void* s) { return OrvYUV444ImageTransform(d, s, n, OrvOutputBgr24); }},
    };
    for (const auto& [name, converter, transform] : identities) expectSame(name, converter, transform);
}

// ---- Complementary colours

template <auto function> OrvErrorType cygm(void* d, void* s) { return function(d, s, width, height / 4 * 4); }

TEST_F(Identities, OneCallConvertersOfCygm) {
    const auto with = [](auto transform, u32 output) -> Call {
        return [=](void* d, void* s) { return transform(d, s, width, height / 4 * 4, output, 0); };
    };
    expectSame("BGR", cygm<OrvIRaw8CYGMToBGR>, with(OrvIRaw8CYGMImageTransform, OrvOutputBgr24));
    expectSame("Mono", cygm<OrvIRaw8CYGMToMono>, with(OrvIRaw8CYGMImageTransform, OrvOutputMono8));
    expectSame("BGR binned", cygm<OrvIRaw8CYGMToBGR_Bin>, with(OrvIRaw8CYGMImageTransform_Bin, OrvOutputBgr24));
    expectSame("BGR 3x3", cygm<OrvIRaw8CYGMToBGR_3x3>, with(OrvIRaw8CYGMImageTransform_3x3, OrvOutputBgr24));
}

// ---- Planes

template <auto withLuma, auto withoutLuma> void expectSamePlanes(Bytes& a, Bytes& b, Bytes& source) {
    const auto plane = [](Bytes& planes, std::size_t k) { return planes.data() + k * n; };
    EXPECT_EQ(withLuma(plane(a, 0), plane(a, 1), plane(a, 2), nullptr, source.data(), width, height), OrvErrorSuccess);
    EXPECT_EQ(withoutLuma(plane(b, 0), plane(b, 1), plane(b, 2), source.data(), width, height), OrvErrorSuccess);
    EXPECT_TRUE(support::same(a, b));
}

TEST_F(Identities, PlanesWithoutLuma) {
    support::Random random{support::seed()};
    Bytes source = support::filled(std::size_t{3} * n, support::Contents::noise, random);
    Bytes a(std::size_t{3} * n), b(std::size_t{3} * n, 1);
    expectSamePlanes<OrvYUV411ToRGBYPlanes, OrvYUV411ToRGBPlanes>(a, b, source);
    expectSamePlanes<OrvYUV422ToRGBYPlanes, OrvYUV422ToRGBPlanes>(a, b, source);
    expectSamePlanes<OrvYUV444ToRGBYPlanes, OrvYUV444ToRGBPlanes>(a, b, source);
}

// ---- Overlap

// A copy into the same format may overlap its source in any way.
TEST_F(Identities, OverlappingCopies) {
    struct {
        OrvErrorType (*copy)(void* destination, const void* source, u32 n, u32 output);
        u32 output;
        std::size_t pixelBytes;
    } const copies[] = {{OrvRGB8ImageTransform, OrvOutputRgb24, 3},
                        {OrvBGR8ImageTransform, OrvOutputBgr24, 3},
                        {OrvRGBA8ImageTransform, OrvOutputRgba32, 4},
                        {OrvBGRA8ImageTransform, OrvOutputBgra32, 4}};
    constexpr std::pair<std::ptrdiff_t, std::ptrdiff_t> moves[] = {{0, 3}, {3, 0}, {0, 70}, {70, 0}, {5, 5}};
    support::Random random{support::seed()};
    for (const auto& [copy, output, pixelBytes] : copies)
        for (const auto& [from, to] : moves) {
            Bytes buffer = support::filled(1024, support::Contents::noise, random), expected = buffer;
            const std::size_t size = 101 * pixelBytes;
            std::copy_n(buffer.begin() + from, size, expected.begin() + to);
            EXPECT_EQ(copy(buffer.data() + to, buffer.data() + from, 101, output), OrvErrorSuccess);
            EXPECT_TRUE(support::same(expected, buffer)) << "from " << from << " to " << to;
        }
}

// A UYVY image of an odd number of grey pixels ends within a pair: each pixel writes its own two bytes.
TEST_F(Identities, OddRunsOfUyvy) {
    support::Random random{support::seed()};
    support::atEveryLevel([&] {
        for (u32 count = 1; count < 200; count += 2) {
            const Bytes source = support::filled(count, support::Contents::noise, random);
            Bytes expected = support::filled(2 * count + 4, support::Contents::noise, random), actual = expected;
            for (std::size_t i = 0; i < count; ++i) expected[2 * i] = 0, expected[2 * i + 1] = source[i];
            EXPECT_EQ(OrvY8ImageTransform(actual.data(), source.data(), count, OrvOutputYuv422), OrvErrorSuccess);
            ASSERT_TRUE(support::same(expected, actual)) << count << " pixels";
        }
    });
}

// OrvRGB8ToBGR copies 3 n bytes, counted in 32 bits, and then exchanges red and blue of n pixels where they are. Of
// 2^32 / 3 pixels two bytes are copied. The destination is one stretch of memory over and over again, so that its
// pixels are exchanged once for each time that they are reached.
TEST_F(Identities, CopiesOf2To32BytesWrapAround) {
#if defined(_WIN32)
    GTEST_SKIP() << "not on Windows: needs mmap";
#else
    constexpr std::size_t stretch = 6 << 20, count = 0x55555556, pixels = stretch / 3, turns = count / pixels;
    const int file = memfd_create("frame", 0);
    ASSERT_EQ(ftruncate(file, stretch), 0);
    void* const frame =
        mmap(nullptr, (turns + 1) * stretch, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(frame, MAP_FAILED);
    auto* const bytes = static_cast<std::uint8_t*>(frame);
    for (std::size_t turn = 0; turn <= turns; ++turn)
        ASSERT_NE(mmap(bytes + turn * stretch, stretch, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0),
                  MAP_FAILED);
    support::Random random{support::seed()};
    Bytes expected = support::filled(stretch, support::Contents::noise, random);
    std::ranges::copy(expected, bytes);
    const support::GuardedBuffer source(2);
    source.data()[0] = expected[0] = 12, source.data()[1] = expected[1] = 34;
    static_assert(turns % 2 == 0);
    for (std::size_t i = 0; i < count % pixels; ++i) std::swap(expected[3 * i], expected[3 * i + 2]);

    EXPECT_EQ(OrvRGB8ToBGR(bytes, source.data(), count), OrvErrorSuccess);
    EXPECT_TRUE(support::same(expected, {bytes, stretch}, {stretch, 3}));
    munmap(frame, (turns + 1) * stretch);
    close(file);
#endif
}

} // namespace
