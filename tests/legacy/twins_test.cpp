// The functions of both faces side by side: the same bytes, and of each refused argument its word.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <tuple>
#include <type_traits>
#include <vector>

#include "orvella/zeb.h"

namespace {

constexpr std::uint32_t success = 0, fault = 0x88000001, notImplemented = 0x88000012;
constexpr std::uint32_t argument(std::uint32_t position) { return 0x88000001 + position; }

// All buffers of a call lie in one piece of memory, so that everything it writes can be seen.
std::vector<std::uint8_t> memory(1 << 16);
void* const to = memory.data();
void* const from = memory.data() + memory.size() / 2;
std::uint8_t* plane(std::size_t k) { return memory.data() + 4096 * k; }

void fillMemory() {
    std::minstd_rand random(7);
    std::ranges::generate(memory, [&] { return static_cast<std::uint8_t>(random() >> 8); });
}

template <class Call> std::vector<std::uint8_t> memoryAfter(const Call& call) {
    fillMemory();
    call();
    return memory;
}

// A valid call: both faces answer `good` and write the same.
template <class... Args>
void expectTwins(const char* name, OrvErrorType (*orv)(Args...), std::uint32_t (*zeb)(Args...), std::uint32_t good,
                 const std::tuple<Args...>& args) {
    SCOPED_TRACE(name);
    const auto untouched = memoryAfter([] {});
    const auto current = memoryAfter([&] { EXPECT_EQ(std::apply(orv, args), static_cast<OrvErrorType>(good)); });
    const auto legacy = memoryAfter([&] { EXPECT_EQ(std::apply(zeb, args), good); });
    EXPECT_TRUE(current == legacy);
    EXPECT_TRUE(current != untouched);
}

// Each pointer set to null in turn is refused by its position, and nothing is written.
template <std::size_t i, class... Args>
void expectNullRefused(std::uint32_t (*zeb)(Args...), std::tuple<Args...> args, std::uint32_t nullable) {
    if constexpr (std::is_pointer_v<std::tuple_element_t<i, std::tuple<Args...>>>) {
        if (i + 1 == nullable) return;
        std::get<i>(args) = nullptr;
        const auto untouched = memoryAfter([] {});
        const auto after =
            memoryAfter([&] { EXPECT_EQ(std::apply(zeb, args), argument(i + 1)) << "argument " << i + 1; });
        EXPECT_TRUE(after == untouched);
    }
}

// nullable: the position of a pointer that may be null, or 0.
template <class... Args>
void checkTwins(const char* name, OrvErrorType (*orv)(Args...), std::uint32_t (*zeb)(Args...), std::uint32_t nullable,
                std::uint32_t good, std::type_identity_t<Args>... args) {
    expectTwins(name, orv, zeb, good, std::tuple<Args...>(args...));
    SCOPED_TRACE(name);
    [&]<std::size_t... i>(std::index_sequence<i...>) {
        (expectNullRefused<i>(zeb, std::tuple<Args...>(args...), nullable), ...);
    }
    (std::index_sequence_for<Args...>());
}

#define TWINS(name, ...) checkTwins(#name, Orv##name, ZEB_##name, 0, success, __VA_ARGS__)
#define TWINS_WITH_NULLABLE(name, position, ...)                                                                       \
    checkTwins(#name, Orv##name, ZEB_##name, position, success, __VA_ARGS__)
#define RESAMPLING_TWINS(name, ...) checkTwins(#name, Orv##name, ZEB_##name, 0, 1, __VA_ARGS__)

TEST(LegacyTwins, Mono) {
    const OrvShiftRecord shift{0, 1, 12, 0, 0};
    TWINS(Y8ImageTransform, to, from, 99, OrvOutputBgr24);
    TWINS(Y16ImageTransform, to, from, 99, OrvOutputBgr24);
    TWINS_WITH_NULLABLE(Y16ImageTransformEx, 5, to, from, 99, OrvOutputBgr48, &shift);
    TWINS(Y12ImageTransform, to, from, 98, OrvOutputBgr24);
    TWINS(Y10pImageTransform, to, from, 99, OrvOutputMono16);
    TWINS(Y12pImageTransform, to, from, 98, OrvOutputMono16);
}

TEST(LegacyTwins, MonoDirect) {
    TWINS(Y16ToY8, to, from, 99);
    TWINS(Y16ToY8_MMX, to, from, 96);
    TWINS(Y16ToY8Ex, to, from, 99, 0, 1, 12);
    TWINS(Y16ToBGR, to, from, 99);
    TWINS(Y16ToBGREx, to, from, 99, 1, 1, 12);
    TWINS(Y8ToBGR, to, from, 99);
    TWINS(Packed12BitTo16Bit, to, from, 98, 3);
    TWINS(Packed12BitTo8Bit, to, from, 98, 3);
}

TEST(LegacyTwins, Colour) {
    TWINS(RGB8ImageTransform, to, from, 99, OrvOutputBgra32);
    TWINS(BGR8ImageTransform, to, from, 99, OrvOutputMono8);
    TWINS(RGBA8ImageTransform, to, from, 99, OrvOutputBgra32);
    TWINS(BGRA8ImageTransform, to, from, 99, OrvOutputRgb24);
    TWINS(RGB8ToY8, to, from, 99);
    TWINS(RGB8ToBGR, to, from, 99);
    TWINS(YUV411ImageTransform, to, from, 100, OrvOutputBgr24);
    TWINS(YUV422ImageTransform, to, from, 98, OrvOutputBgr24);
    TWINS(YUV444ImageTransform, to, from, 99, OrvOutputBgr24);
    TWINS(YUV411ToBGR, to, from, 100);
    TWINS(YUV422ToBGR, to, from, 98);
    TWINS(YUV444ToBGR, to, from, 99);
}

TEST(LegacyTwins, Planes) {
    TWINS_WITH_NULLABLE(RGB8ToRGBYPlanes, 4, plane(0), plane(1), plane(2), plane(3), from, 20, 6);
    TWINS_WITH_NULLABLE(YUV411ToRGBYPlanes, 4, plane(0), plane(1), plane(2), plane(3), from, 20, 6);
    TWINS_WITH_NULLABLE(YUV422ToRGBYPlanes, 4, plane(0), plane(1), plane(2), plane(3), from, 20, 6);
    TWINS_WITH_NULLABLE(YUV444ToRGBYPlanes, 4, plane(0), plane(1), plane(2), plane(3), from, 20, 6);
    TWINS(YUV411ToRGBPlanes, plane(0), plane(1), plane(2), from, 20, 6);
    TWINS(YUV422ToRGBPlanes, plane(0), plane(1), plane(2), from, 20, 6);
    TWINS(YUV444ToRGBPlanes, plane(0), plane(1), plane(2), from, 20, 6);
}

TEST(LegacyTwins, Bayer) {
    const OrvShiftRecord shift{0, 1, 12, 0, 2};
    TWINS(Raw8ImageTransform, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw8ImageTransform_3x3, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw8ImageTransform_IntLCAA, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw8ImageTransform_IntLCAAV, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw8ImageTransform_IntYUV422, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw10pImageTransform, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw12ImageTransform, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw12pImageTransform, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw16ImageTransform, to, from, 70, 6, OrvOutputBgr24, 1);
    TWINS(Raw16ImageTransformEx, to, from, 70, 6, OrvOutputBgr48, &shift);

    TWINS(Raw8ToBGR, to, from, 70, 6, 2);
    TWINS(Raw8ToBGR_3x3, to, from, 70, 6, 2);
    TWINS(Raw8ToBGR_IntLCAA, to, from, 70, 6, 2);
    TWINS(Raw8ToBGR_IntLCAAV, to, from, 70, 6, 2);
    TWINS(Raw8ToBGR_IntYUV422, to, from, 70, 6, 2);
    TWINS(Raw8ToBGR_mono, to, from, 70, 6, 2);
    TWINS(Raw8ToY8, to, from, 70, 6, 2);
    TWINS(Raw12ToBGR, to, from, 70, 6, 2);
    TWINS(Raw12ToBGR16, to, from, 70, 6, 2);
    TWINS(Raw16ToBGR, to, from, 70, 6, 2);
    TWINS(Raw16ToBGR16, to, from, 70, 6, 2);
    TWINS(Raw16ToY16, to, from, 70, 6, 2);
}

TEST(LegacyTwins, Correction) {
    constexpr float matrix[] = {1.5F, -0.5F, 0, 0.25F, 1, 0, 0, -0.25F, 1.25F};
    static ColorCorrectionHandle int8 = nullptr, int16 = nullptr; // the objects live as long as the process
    EXPECT_EQ(ZEB_CreateColorCorrectionMatrix_Int8(matrix, &int8), success);
    EXPECT_EQ(ZEB_CreateColorCorrectionMatrix_Int16(matrix, &int16), success);
    EXPECT_EQ(ZEB_CreateColorCorrectionMatrix_Int8(nullptr, &int8), argument(1));
    EXPECT_EQ(ZEB_CreateColorCorrectionMatrix_Int16(matrix, nullptr), argument(2));
    TWINS_WITH_NULLABLE(Raw8ToBGR_CC, 6, to, from, 70, 6, 2, int8);
    TWINS_WITH_NULLABLE(Raw8ToY8_CC, 6, to, from, 70, 6, 2, int8);
    TWINS_WITH_NULLABLE(Raw12ToBGR_CC, 6, to, from, 70, 6, 2, int8);
    TWINS_WITH_NULLABLE(Raw12ToBGR16_CC, 6, to, from, 70, 6, 2, int16);
    TWINS_WITH_NULLABLE(Raw16ToBGR16_CC, 6, to, from, 70, 6, 2, int16);
    TWINS_WITH_NULLABLE(Raw16ToY16_CC, 6, to, from, 70, 6, 2, int16);
    EXPECT_EQ(ZEB_Raw8ToY8_CC(to, from, 4, 4, 4, int16), argument(5));
    EXPECT_EQ(ZEB_Raw8ToY8_CC(to, from, 4, 4, 3, int16), argument(6));
    EXPECT_EQ(ZEB_Raw16ToY16_CC(to, from, 4, 4, 3, int8), argument(6));
    for (const ColorCorrectionHandle handle : {int8, int8, int16, ColorCorrectionHandle{nullptr}})
        EXPECT_EQ(ZEB_DestroyColorCorrection(handle), argument(1));
}

TEST(LegacyTwins, Cygm) {
    TWINS(IRaw8CYGMImageTransform, to, from, 70, 8, OrvOutputYuv422, 0);
    TWINS(IRaw8CYGMImageTransform_Bin, to, from, 70, 8, OrvOutputBgra32, 0);
    TWINS(IRaw8CYGMImageTransform_3x3, to, from, 70, 8, OrvOutputBgra32, 0);
    TWINS(IRaw8CYGMToBGR, to, from, 70, 8);
    TWINS(IRaw8CYGMToBGR_Bin, to, from, 70, 8);
    TWINS(IRaw8CYGMToBGR_3x3, to, from, 70, 8);
    TWINS(IRaw8CYGMToMono, to, from, 70, 8);
}

TEST(LegacyTwins, Geometry) {
    TWINS(Flip, to, 70, 6, 3, 4);
    TWINS(FlipVertical, to, 70, 6);
    TWINS(InterlacedToProgressive, to, from, 70, 6);
    TWINS(GetSIS, to, from, 70, 6, 0, 1, 2);
    TWINS(GetResampledScanlineLength, reinterpret_cast<std::uint32_t*>(to), 70, 2, 3);
    RESAMPLING_TWINS(ResampleScanlines, to, from, 90, 70, 6, 3, 1, 2, 3);
    RESAMPLING_TWINS(ResampleScanlinesEx, to, from, 90, 95, 70, 72, 6, 3, 0, 2, 3);
}

// A call and the word it answers, with nothing written.
struct Refusal {
    const char* what;
    std::uint32_t (*call)();
    std::uint32_t word;
};

TEST(LegacyRefusals, BySizeOutputAndOption) {
    static constexpr OrvShiftRecord alignment2{0, 2, 12, 0, 0}, bits11{0, 1, 11, 0, 0}, endian2{0, 1, 12, 2, 0};
    static const Refusal refusals[] = {
        {"Y8 output 7", [] { return ZEB_Y8ImageTransform(to, from, 4, 7); }, notImplemented},
        {"Y8 output 7, n 0", [] { return ZEB_Y8ImageTransform(to, from, 0, 7); }, notImplemented},
        {"Y8 n 0", [] { return ZEB_Y8ImageTransform(to, from, 0, 1); }, success},
        {"Y16 n 0", [] { return ZEB_Y16ImageTransform(to, from, 0, 1); }, success},
        {"Y16 output 6", [] { return ZEB_Y16ImageTransform(to, from, 4, 6); }, notImplemented},
        {"Y16 output 7", [] { return ZEB_Y16ImageTransform(to, from, 4, 7); }, notImplemented},
        {"Y16 output 7, no source", [] { return ZEB_Y16ImageTransform(to, nullptr, 4, 7); }, argument(2)},
        {"Y16Ex n 0", [] { return ZEB_Y16ImageTransformEx(to, from, 0, 99, nullptr); }, argument(3)},
        {"Y16Ex output 10", [] { return ZEB_Y16ImageTransformEx(to, from, 4, 10, nullptr); }, notImplemented},
        {"Y16Ex alignment", [] { return ZEB_Y16ImageTransformEx(to, from, 4, 1, &alignment2); }, notImplemented},
        {"Y16Ex bits", [] { return ZEB_Y16ImageTransformEx(to, from, 4, 1, &bits11); }, fault},
        {"Y16Ex byte order", [] { return ZEB_Y16ImageTransformEx(to, from, 4, 1, &endian2); }, fault},
        {"Y12 odd n, output 9", [] { return ZEB_Y12ImageTransform(to, from, 3, 9); }, argument(3)},
        {"Y12 output 7", [] { return ZEB_Y12ImageTransform(to, from, 4, 7); }, notImplemented},
        {"Y12p odd n", [] { return ZEB_Y12pImageTransform(to, from, 3, 1); }, argument(3)},
        {"Y10p output 6", [] { return ZEB_Y10pImageTransform(to, from, 4, 6); }, notImplemented},

        {"RGB8 output 6", [] { return ZEB_RGB8ImageTransform(to, from, 4, 6); }, notImplemented},
        {"4:1:1 n 6", [] { return ZEB_YUV411ImageTransform(to, from, 6, 9); }, argument(3)},
        {"4:2:2 n 0", [] { return ZEB_YUV422ImageTransform(to, from, 0, 1); }, argument(3)},
        {"4:4:4 n 0", [] { return ZEB_YUV444ImageTransform(to, from, 0, 1); }, success},
        {"4:4:4 to BGR n 0", [] { return ZEB_YUV444ToBGR(to, from, 0); }, argument(3)},
        {"planes 4:1:1 width", [] { return ZEB_YUV411ToRGBPlanes(to, to, to, from, 6, 2); }, argument(5)},
        {"planes 4:1:1 with luma width", [] { return ZEB_YUV411ToRGBYPlanes(to, to, to, to, from, 6, 2); },
         argument(6)},
        {"planes 4:2:2 height", [] { return ZEB_YUV422ToRGBPlanes(to, to, to, from, 4, 1); }, argument(6)},
        {"planes 4:4:4 width", [] { return ZEB_YUV444ToRGBPlanes(to, to, to, from, 0, 1); }, argument(5)},
        {"planes 4:4:4 height", [] { return ZEB_YUV444ToRGBPlanes(to, to, to, from, 1, 0); }, argument(6)},

        {"Raw8 width", [] { return ZEB_Raw8ImageTransform(to, from, 3, 3, 99, 9); }, argument(3)},
        {"Raw8 height", [] { return ZEB_Raw8ImageTransform(to, from, 4, 3, 99, 9); }, argument(4)},
        {"Raw8 pattern before output", [] { return ZEB_Raw8ImageTransform(to, from, 4, 4, 99, 9); }, argument(6)},
        {"Raw8 output", [] { return ZEB_Raw8ImageTransform(to, from, 4, 4, 9, 0); }, notImplemented},
        {"3x3 output 6", [] { return ZEB_Raw8ImageTransform_3x3(to, from, 4, 4, 6, 0); }, notImplemented},
        {"LCAA output 6", [] { return ZEB_Raw8ImageTransform_IntLCAA(to, from, 4, 4, 6, 0); }, notImplemented},
        {"Raw16 output 7", [] { return ZEB_Raw16ImageTransform(to, from, 4, 4, 7, 0); }, notImplemented},
        {"Raw16Ex no record", [] { return ZEB_Raw16ImageTransformEx(to, from, 4, 4, 99, nullptr); }, argument(6)},
        {"Raw16Ex alignment", [] { return ZEB_Raw16ImageTransformEx(to, from, 4, 4, 1, &alignment2); }, notImplemented},
        {"Raw16Ex bits", [] { return ZEB_Raw16ImageTransformEx(to, from, 4, 4, 1, &bits11); }, fault},
        {"Raw16Ex byte order", [] { return ZEB_Raw16ImageTransformEx(to, from, 4, 4, 1, &endian2); }, fault},
        {"Raw8ToBGR pattern", [] { return ZEB_Raw8ToBGR(to, from, 4, 4, 4); }, argument(5)},
        {"Raw8ToBGR_IntLCAA pattern", [] { return ZEB_Raw8ToBGR_IntLCAA(to, from, 4, 4, 4); }, argument(5)},
        {"Raw12ToBGR16 height", [] { return ZEB_Raw12ToBGR16(to, from, 4, 0, 0); }, argument(4)},

        {"Y16ToY8 n 0", [] { return ZEB_Y16ToY8(to, from, 0); }, success},
        {"Y16ToY8_MMX n 0", [] { return ZEB_Y16ToY8_MMX(to, from, 0); }, success},
        {"Y16ToY8_MMX n 12", [] { return ZEB_Y16ToY8_MMX(to, from, 12); }, argument(3)},
        {"Y16ToY8_MT", [] { return ZEB_Y16ToY8_MT(to, from, 16); }, 0x88000014},
        {"Y16ToY8_MT null", [] { return ZEB_Y16ToY8_MT(nullptr, nullptr, 0); }, 0x88000014},
        {"Y16ToY8Ex n 0", [] { return ZEB_Y16ToY8Ex(to, from, 0, 2, 2, 17); }, argument(3)},
        {"Y16ToY8Ex swap", [] { return ZEB_Y16ToY8Ex(to, from, 4, 2, 2, 17); }, argument(4)},
        {"Y16ToBGREx alignment", [] { return ZEB_Y16ToBGREx(to, from, 4, 1, 2, 17); }, argument(5)},
        {"Y16ToBGREx bits", [] { return ZEB_Y16ToBGREx(to, from, 4, 1, 0, 17); }, argument(6)},
        {"Y8ToBGR n 0", [] { return ZEB_Y8ToBGR(to, from, 0); }, argument(3)},
        {"12 to 16 odd width", [] { return ZEB_Packed12BitTo16Bit(nullptr, nullptr, 3, 1); }, argument(3)},
        {"12 to 8 odd width", [] { return ZEB_Packed12BitTo8Bit(to, from, -3, 1); }, argument(3)},
        {"12 to 8 null first", [] { return ZEB_Packed12BitTo8Bit(to, nullptr, 3, 1); }, argument(2)},

        {"Flip height", [] { return ZEB_Flip(to, 4, 1, 1, 0); }, argument(3)},
        {"Flip mode", [] { return ZEB_Flip(to, 4, 2, 0, 0); }, argument(4)},
        {"Flip coding", [] { return ZEB_Flip(to, 4, 2, 1, 99); }, argument(5)},
        {"FlipVertical length", [] { return ZEB_FlipVertical(to, 0, 2); }, argument(2)},
        {"Resample pixel", [] { return ZEB_ResampleScanlines(to, from, 4, 4, 1, 7, 0, 1, 1); }, argument(6)},
        {"Resample mode", [] { return ZEB_ResampleScanlines(to, from, 4, 4, 1, 1, 2, 1, 1); }, argument(7)},
        {"Resample ratio", [] { return ZEB_ResampleScanlines(to, from, 4, 4, 1, 1, 0, 1, 0); }, argument(9)},
        {"ResampleEx pixel", [] { return ZEB_ResampleScanlinesEx(to, from, 4, 4, 4, 4, 1, 0, 0, 1, 1); }, argument(8)},
        {"ResampleEx no lines", [] { return ZEB_ResampleScanlinesEx(to, from, 4, 4, 4, 4, 0, 1, 0, 1, 1); }, 1},
        {"Resampled length", [] { return ZEB_GetResampledScanlineLength(nullptr, 4, 1, 0); }, argument(1)},
        {"Resampled length ratio",
         [] { return ZEB_GetResampledScanlineLength(static_cast<std::uint32_t*>(to), 4, 1, 0); }, argument(4)},
        {"Weave lines", [] { return ZEB_InterlacedToProgressive(to, from, 4, 3); }, argument(4)},
        {"SIS index", [] { return ZEB_GetSIS(to, from, 70, 6, 99, 1, 1); }, argument(5)},
        {"SIS within a byte", [] { return ZEB_GetSIS(to, from, 71, 6, 1, 1, 9); }, argument(6)},
        {"SIS kind", [] { return ZEB_GetSIS(to, from, 70, 6, 0, 99, 3); }, argument(7)},
        {"SIS behind the image", [] { return ZEB_GetSIS(to, from, 70, 6, 0, 6, 1); }, fault},
    };
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(refusal.what);
        const auto untouched = memoryAfter([] {});
        const auto after = memoryAfter([&] { EXPECT_EQ(refusal.call(), refusal.word); });
        EXPECT_TRUE(after == untouched);
    }
}

} // namespace
