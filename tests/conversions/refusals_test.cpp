// What the entry points refuse, in which order, over all combinations of good and bad arguments; and that a call that
// is refused, or that has no pixels, touches neither buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "orvella/orv.h"
#include "support/fill.h"

namespace {

using u32 = std::uint32_t;
using i32 = std::int32_t;

constexpr u32 huge = 0xFFFFFFFF;
constexpr u32 outputs[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 256, huge};

// Which outputs a family offers, as bits.
constexpr u32 offered(std::initializer_list<u32> codes) {
    u32 bits = 0;
    for (const u32 code : codes) bits |= 1U << code;
    return bits;
}
constexpr u32 eightBit = offered({0, 1, 2, 3, 4, 5}), mono16Too = eightBit | offered({7, 8});
constexpr bool isOffered(u32 bits, u32 output) { return output < 32 && (bits >> output & 1) != 0; }

// One call's buffers, large enough for every size tried.
class Buffers {
public:
    struct Pointers {
        void *destination, *source;
        bool complete() const { return destination && source; }
    };

    // None, one, or both given.
    template <class Test> void forEachChoice(const Test& test) {
        for (const bool d : {false, true})
            for (const bool s : {false, true})
                test(Pointers{d ? destination_.data() : nullptr, s ? source_.data() : nullptr});
    }

    // The buffers are compared with their first contents unless the call was to convert something.
    void expect(OrvErrorType expected, OrvErrorType actual, bool converts, const ::testing::Message& what) {
        EXPECT_EQ(actual, expected) << what;
        const bool touched = destination_ != contents_ || source_ != contents_;
        EXPECT_TRUE(!touched || (converts && expected == OrvErrorSuccess)) << what;
        destination_ = source_ = contents_;
    }

private:
    support::Random random_{support::seed()};
    const support::Bytes contents_ = support::filled(256, support::Contents::noise, random_);
    support::Bytes destination_ = contents_, source_ = contents_;
};

// ---- Runs of pixels

constexpr bool anyCount(u32) { return true; }
constexpr bool notZero(u32 n) { return n > 0; }
constexpr bool even(u32 n) { return n % 2 == 0; }
constexpr bool pairs(u32 n) { return n >= 2 && n % 2 == 0; }
constexpr bool fours(u32 n) { return n >= 4 && n % 4 == 0; }

struct RunFamily {
    const char* name;
    OrvErrorType (*call)(void* destination, const void* source, u32 n, u32 output);
    bool (*takes)(u32 n);
    u32 outputs;
};

// A one-call converter, which offers one output and takes no code.
template <auto function> OrvErrorType withoutOutput(void* d, const void* s, u32 n, u32) { return function(d, s, n); }

constexpr RunFamily runFamilies[] = {
    {"Y8", OrvY8ImageTransform, notZero, eightBit | offered({6})},
    {"Y16", OrvY16ImageTransform, notZero, mono16Too},
    {"Y12", OrvY12ImageTransform, even, eightBit},
    {"Y10p", OrvY10pImageTransform, anyCount, mono16Too},
    {"Y12p", OrvY12pImageTransform, even, mono16Too},
    {"RGB8", OrvRGB8ImageTransform, anyCount, eightBit},
    {"BGR8", OrvBGR8ImageTransform, anyCount, eightBit},
    {"RGBA8", OrvRGBA8ImageTransform, anyCount, eightBit},
    {"BGRA8", OrvBGRA8ImageTransform, anyCount, eightBit},
    {"YUV411", OrvYUV411ImageTransform, fours, eightBit},
    {"YUV422", OrvYUV422ImageTransform, pairs, eightBit},
    {"YUV444", OrvYUV444ImageTransform, anyCount, eightBit},
    {"RGB8ToY8", withoutOutput<OrvRGB8ToY8>, anyCount, offered({0})},
    {"RGB8ToBGR", withoutOutput<OrvRGB8ToBGR>, anyCount, offered({0})},
    {"YUV411ToBGR", withoutOutput<OrvYUV411ToBGR>, fours, offered({0})},
    {"YUV422ToBGR", withoutOutput<OrvYUV422ToBGR>, pairs, offered({0})},
    {"YUV444ToBGR", withoutOutput<OrvYUV444ToBGR>, notZero, offered({0})},
};

TEST(Refusals, OfRuns) {
    Buffers buffers;
    for (const RunFamily& family : runFamilies)
        for (const u32 output : outputs)
            for (const u32 n : {0U, 1U, 2U, 3U, 4U, 6U, 8U})
                buffers.forEachChoice([&](const Buffers::Pointers& p) {
                    if (family.outputs == offered({0}) && output > 0) return;
                    const OrvErrorType expected = !p.complete() || !family.takes(n)    ? OrvErrorBadParameter
                                                  : !isOffered(family.outputs, output) ? OrvErrorNotImplemented
                                                                                       : OrvErrorSuccess;
                    buffers.expect(expected, family.call(p.destination, p.source, n, output), n > 0,
                                   ::testing::Message() << family.name << " n " << n << " output " << output);
                });
}

// ---- Mosaics

struct MosaicFamily {
    const char* name;
    OrvErrorType (*call)(void* destination, void* source, u32 width, u32 height, u32 output, i32 pattern);
    u32 outputs;
};

template <auto function> OrvErrorType mosaic(void* d, void* s, u32 width, u32 height, u32 output, i32 pattern) {
    return function(d, s, width, height, output, pattern);
}
template <auto function> OrvErrorType oneOutput(void* d, void* s, u32 width, u32 height, u32, i32 pattern) {
    return function(d, s, width, height, pattern);
}

constexpr MosaicFamily mosaicFamilies[] = {
    {"Raw8", mosaic<OrvRaw8ImageTransform>, mono16Too | offered({6})},
    {"Raw8 3x3", mosaic<OrvRaw8ImageTransform_3x3>, mono16Too},
    {"Raw8 LCAA", mosaic<OrvRaw8ImageTransform_IntLCAA>, mono16Too},
    {"Raw8 LCAAV", mosaic<OrvRaw8ImageTransform_IntLCAAV>, mono16Too},
    {"Raw8 YUV422", mosaic<OrvRaw8ImageTransform_IntYUV422>, mono16Too},
    {"Raw10p", mosaic<OrvRaw10pImageTransform>, mono16Too},
    {"Raw12", mosaic<OrvRaw12ImageTransform>, mono16Too},
    {"Raw12p", mosaic<OrvRaw12pImageTransform>, mono16Too},
    {"Raw16", mosaic<OrvRaw16ImageTransform>, eightBit},
    {"Raw8ToBGR", oneOutput<OrvRaw8ToBGR>, offered({0})},
    {"Raw8ToBGR_3x3", oneOutput<OrvRaw8ToBGR_3x3>, offered({0})},
    {"Raw8ToBGR_IntLCAA", oneOutput<OrvRaw8ToBGR_IntLCAA>, offered({0})},
    {"Raw8ToBGR_IntLCAAV", oneOutput<OrvRaw8ToBGR_IntLCAAV>, offered({0})},
    {"Raw8ToBGR_IntYUV422", oneOutput<OrvRaw8ToBGR_IntYUV422>, offered({0})},
    {"Raw8ToBGR_mono", oneOutput<OrvRaw8ToBGR_mono>, offered({0})},
    {"Raw8ToY8", oneOutput<OrvRaw8ToY8>, offered({0})},
    {"Raw12ToBGR", oneOutput<OrvRaw12ToBGR>, offered({0})},
    {"Raw12ToBGR16", oneOutput<OrvRaw12ToBGR16>, offered({0})},
    {"Raw16ToBGR", oneOutput<OrvRaw16ToBGR>, offered({0})},
    {"Raw16ToBGR16", oneOutput<OrvRaw16ToBGR16>, offered({0})},
    {"Raw16ToY16", oneOutput<OrvRaw16ToY16>, offered({0})},
};

constexpr u32 sizes[] = {0, 1, 2, 3, 4};

TEST(Refusals, OfMosaics) {
    Buffers buffers;
    for (const MosaicFamily& family : mosaicFamilies)
        for (const u32 output : outputs)
            for (const u32 width : sizes)
                for (const u32 height : sizes)
                    for (const i32 pattern : {-2, -1, 0, 1, 2, 3, 4, 255})
                        buffers.forEachChoice([&](const Buffers::Pointers& p) {
                            if (family.outputs == offered({0}) && output > 0) return;
                            const bool good =
                                p.complete() && pairs(width) && pairs(height) && pattern >= -1 && pattern <= 3;
                            const OrvErrorType expected = !good                                ? OrvErrorBadParameter
                                                          : !isOffered(family.outputs, output) ? OrvErrorNotImplemented
                                                                                               : OrvErrorSuccess;
                            buffers.expect(expected,
                                           family.call(p.destination, p.source, width, height, output, pattern), true,
                                           ::testing::Message() << family.name << ' ' << width << 'x' << height
                                                                << " output " << output << " pattern " << pattern);
                        });
}

// ---- Sources with a shift record

// Every record worth trying. The shifts of 5 and of more than 6 have no kernels.
template <class Test> void forEachRecord(const Test& test) {
    for (const u32 alignment : {0U, 1U, 2U, huge})
        for (const u32 bits : {0U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 15U, 16U, 17U, huge})
            for (const u32 endianness : {0U, 1U, 2U, huge})
                for (const u32 pattern : {0U, 3U, 255U}) test(OrvShiftRecord{77, alignment, bits, endianness, pattern});
}

OrvErrorType expectedFor(const OrvShiftRecord& record, u32 output) {
    if (record.Alignment > 1 || !isOffered(mono16Too | offered({9}), output)) return OrvErrorNotImplemented;
    const bool shifts =
        record.Alignment == 0 || record.BitsUsed == 10 || (record.BitsUsed >= 12 && record.BitsUsed <= 16);
    return shifts && record.Endianness <= 1 ? OrvErrorSuccess : OrvErrorInternalFault;
}

::testing::Message describe(const char* name, const OrvShiftRecord& record, u32 output) {
    return ::testing::Message() << name << " output " << output << " alignment " << record.Alignment << " bits "
                                << record.BitsUsed << " endianness " << record.Endianness;
}

TEST(Refusals, OfShiftedMono) {
    Buffers buffers;
    for (const u32 output : outputs) {
        forEachRecord([&](const OrvShiftRecord& record) {
            for (const u32 n : {0U, 1U, 3U})
                buffers.forEachChoice([&](const Buffers::Pointers& p) {
                    const OrvErrorType expected =
                        p.complete() && n > 0 ? expectedFor(record, output) : OrvErrorType{OrvErrorBadParameter};
                    buffers.expect(expected, OrvY16ImageTransformEx(p.destination, p.source, n, output, &record), true,
                                   describe("Y16Ex", record, output) << " n " << n);
                });
        });
        buffers.forEachChoice([&](const Buffers::Pointers& p) { // without a record: no shift, big-endian
            const OrvErrorType expected =
                p.complete() ? expectedFor({0, 0, 16, 1, 0}, output) : OrvErrorType{OrvErrorBadParameter};
            buffers.expect(expected, OrvY16ImageTransformEx(p.destination, p.source, 2, output, nullptr), true,
                           ::testing::Message() << "Y16Ex without a record, output " << output);
        });
    }
}

TEST(Refusals, OfShiftedMosaics) {
    Buffers buffers;
    for (const u32 output : outputs) {
        forEachRecord([&](const OrvShiftRecord& record) {
            for (const u32 width : {0U, 2U, 3U})
                for (const u32 height : {0U, 2U, 3U})
                    buffers.forEachChoice([&](const Buffers::Pointers& p) {
                        const OrvErrorType expected = p.complete() && pairs(width) && pairs(height)
                                                          ? expectedFor(record, output)
                                                          : OrvErrorType{OrvErrorBadParameter};
                        buffers.expect(
                            expected, OrvRaw16ImageTransformEx(p.destination, p.source, width, height, output, &record),
                            true, describe("Raw16Ex", record, output) << ' ' << width << 'x' << height);
                    });
        });
        buffers.forEachChoice([&](const Buffers::Pointers& p) {
            buffers.expect(OrvErrorBadParameter,
                           OrvRaw16ImageTransformEx(p.destination, p.source, 2, 2, output, nullptr), true,
                           ::testing::Message() << "Raw16Ex without a record, output " << output);
        });
    }
}

// ---- Planes

struct PlaneFamily {
    const char* name;
    OrvErrorType (*call)(void* r, void* g, void* b, void* y, const void* source, u32 width, u32 height);
    bool (*takes)(u32 width, u32 height);
};

template <auto function>
OrvErrorType withoutLuma(void* r, void* g, void* b, void*, const void* s, u32 width, u32 height) {
    return function(r, g, b, s, width, height);
}

constexpr PlaneFamily planeFamilies[] = {
    {"RGB8 RGBY", OrvRGB8ToRGBYPlanes, [](u32, u32) { return true; }},
    {"4:1:1 RGBY", OrvYUV411ToRGBYPlanes, [](u32 w, u32) { return w % 4 == 0; }},
    {"4:2:2 RGBY", OrvYUV422ToRGBYPlanes, [](u32 w, u32) { return w % 2 == 0; }},
    {"4:4:4 RGBY", OrvYUV444ToRGBYPlanes, [](u32, u32) { return true; }},
    {"4:1:1 RGB", withoutLuma<OrvYUV411ToRGBPlanes>, [](u32 w, u32) { return w % 4 == 0; }},
    {"4:2:2 RGB", withoutLuma<OrvYUV422ToRGBPlanes>, [](u32 w, u32 h) { return w >= 2 && h >= 2 && w % 2 == 0; }},
    {"4:4:4 RGB", withoutLuma<OrvYUV444ToRGBPlanes>, [](u32 w, u32 h) { return w > 0 && h > 0; }},
};

TEST(Refusals, OfPlanes) {
    Buffers buffers;
    for (const PlaneFamily& family : planeFamilies)
        for (const u32 width : sizes)
            for (const u32 height : sizes)
                for (int missing = 0; missing <= 4; ++missing) // the plane that is null: R, G, B, Y; 4: none
                    buffers.forEachChoice([&](const Buffers::Pointers& p) {
                        const auto plane = [&](int k) -> void* {
                            return k == missing || !p.destination ? nullptr
                                                                  : static_cast<std::uint8_t*>(p.destination) + 32 * k;
                        };
                        const bool good = p.complete() && missing > 2 && family.takes(width, height);
                        buffers.expect(good ? OrvErrorSuccess : OrvErrorBadParameter,
                                       family.call(plane(0), plane(1), plane(2), plane(3), p.source, width, height),
                                       width > 0 && height > 0,
                                       ::testing::Message() << family.name << ' ' << width << 'x' << height
                                                            << ", plane " << missing << " missing");
                    });
}

// ---- Pixel counts

// 2^32 pixels are not none: the output is what is refused. In 32 bits the count would be.
TEST(Refusals, CountsOf64Bits) {
    for (const OrvPixelFormatType format : {OrvPixelFormatMono8, OrvPixelFormatYuv422, OrvPixelFormatYuv411}) {
        std::uint8_t byte = 0;
        OrvImage source{sizeof source, &byte, {}}, destination{sizeof destination, &byte, {}};
        ASSERT_EQ(OrvSetImageInfoFromPixelFormat(format, 65536, 65536, &source), OrvErrorSuccess);
        ASSERT_EQ(OrvSetImageInfoOutput(OrvOutputMono16, 65536, 65536, &destination), OrvErrorSuccess);
        EXPECT_EQ(OrvImageTransform(&source, &destination, nullptr, 0), OrvErrorNotImplemented) << std::hex << format;
    }
}

} // namespace
