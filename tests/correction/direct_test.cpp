// The one-call converters with colour-correction objects: what they refuse, and what they share with other calls.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "correction/transform.h"
#include "support/compare.h"
#include "support/fill.h"
#include "support/levels.h"

namespace {

using support::Bytes;
using u32 = std::uint32_t;
using i32 = std::int32_t;

ColorCorrectionHandle int8Object(const float* matrix) {
    ColorCorrectionHandle handle = nullptr;
    EXPECT_EQ(OrvCreateColorCorrectionMatrix_Int8(matrix, &handle), OrvErrorSuccess);
    return handle;
}
ColorCorrectionHandle int16Object(const float* matrix) {
    ColorCorrectionHandle handle = nullptr;
    EXPECT_EQ(OrvCreateColorCorrectionMatrix_Int16(matrix, &handle), OrvErrorSuccess);
    return handle;
}

struct Converter {
    const char* name;
    OrvErrorType (*corrected)(void*, const void*, u32, u32, i32, ColorCorrectionHandle);
    OrvErrorType (*plain)(void*, const void*, u32, u32, i32);
    u32 kind;
};
constexpr Converter converters[] = {
    {"Raw8ToBGR", OrvRaw8ToBGR_CC, OrvRaw8ToBGR, 2},          {"Raw8ToY8", OrvRaw8ToY8_CC, OrvRaw8ToY8, 2},
    {"Raw12ToBGR", OrvRaw12ToBGR_CC, OrvRaw12ToBGR, 2},       {"Raw12ToBGR16", OrvRaw12ToBGR16_CC, OrvRaw12ToBGR16, 3},
    {"Raw16ToBGR16", OrvRaw16ToBGR16_CC, OrvRaw16ToBGR16, 3}, {"Raw16ToY16", OrvRaw16ToY16_CC, OrvRaw16ToY16, 3},
};

constexpr u32 width = 70, height = 6;

TEST(CorrectedConverters, WithoutCorrectionAreThePlainOnes) {
    // Static: objects live as long as the process.
    static const ColorCorrectionHandle objects[] = {int8Object(correction::identity.data()),
                                                    int16Object(correction::identity.data())};
    support::Random random{support::seed()};
    const Bytes source = support::filled(width * height * 2, support::Contents::noise, random);
    support::atEveryLevel([&] {
        for (const Converter& converter : converters)
            for (i32 pattern = -1; pattern < 4; ++pattern) {
                SCOPED_TRACE(converter.name + std::string(", pattern ") + std::to_string(pattern));
                Bytes expected(width * height * 6, 1), withNull = expected, withIdentity = expected;
                EXPECT_EQ(converter.plain(expected.data(), source.data(), width, height, pattern), 0);
                EXPECT_EQ(converter.corrected(withNull.data(), source.data(), width, height, pattern, nullptr), 0);
                EXPECT_EQ(converter.corrected(withIdentity.data(), source.data(), width, height, pattern,
                                              objects[converter.kind - 2]),
                          0);
                EXPECT_TRUE(support::same(expected, withNull));
                EXPECT_TRUE(support::same(expected, withIdentity));
            }
    });
}

TEST(CorrectedConverters, RefuseAndWriteNothing) {
    constexpr OrvErrorType bad = OrvErrorBadParameter;
    Bytes to(256, 0x7F), from(256);
    for (const Converter& converter : converters) {
        SCOPED_TRACE(converter.name);
        for (const u32 kind : {0U, 1U, 2U, 3U, 7U, 10U, 0xFFFFFFFFU}) {
            i32 object[10] = {static_cast<i32>(kind), 1024, 0, 0, 0, 1024, 0, 0, 0, 1024};
            const auto call = [&, handle = static_cast<void*>(object)](void* d, void* s, u32 w, u32 h, i32 pattern) {
                return converter.corrected(d, s, w, h, pattern, handle);
            };
            if (kind != converter.kind) {
                EXPECT_EQ(call(to.data(), from.data(), 4, 4, 0), bad) << kind;
            }
            EXPECT_EQ(call(nullptr, from.data(), 4, 4, 0), bad);
            EXPECT_EQ(call(to.data(), nullptr, 4, 4, 0), bad);
            EXPECT_EQ(call(to.data(), from.data(), 0, 4, 0), bad);
            EXPECT_EQ(call(to.data(), from.data(), 5, 4, 0), bad);
            EXPECT_EQ(call(to.data(), from.data(), 4, 0, 0), bad);
            EXPECT_EQ(call(to.data(), from.data(), 4, 3, 0), bad);
            EXPECT_EQ(call(to.data(), from.data(), 4, 4, 4), bad);
            EXPECT_EQ(call(to.data(), from.data(), 4, 4, -2), bad);
        }
    }
    EXPECT_EQ(to, Bytes(256, 0x7F));
}

// A sum of 256 becomes 255, not its low byte as in OrvImageTransform.
TEST(CorrectedConverters, Saturate12Packed) {
    constexpr float twice[] = {2, 0, 0, 0, -1, 0, 0, 0, 300};
    static const ColorCorrectionHandle object = int8Object(twice);
    Bytes bgr(24);
    EXPECT_EQ(OrvRaw12ToBGR_CC(bgr.data(), Bytes(12, 0x80).data(), 4, 2, 0, object), 0);
    EXPECT_EQ(Bytes(bgr.begin(), bgr.begin() + 3), (Bytes{0, 0, 255})); // 38400 has bit 15
}

// The sums are 32 bits wide: that of white by 33 comes out negative.
TEST(CorrectedConverters, WrapAround16Bits) {
    constexpr float k = 33, diagonal[] = {k, 0, 0, 0, k, 0, 0, 0, k};
    static const ColorCorrectionHandle object = int16Object(diagonal);
    for (const auto convert : {OrvRaw12ToBGR16_CC, OrvRaw16ToBGR16_CC, OrvRaw16ToY16_CC}) {
        Bytes result(24, 1);
        EXPECT_EQ(convert(result.data(), Bytes(8, 0xFF).data(), 2, 2, 0, object), 0);
        EXPECT_EQ(Bytes(result.begin(), result.begin() + 8), Bytes(8, 0));
    }
}

} // namespace
