// Every function that both faces have: a good call does the same, and refusals come in the same order.
#include "faces/both_faces.h"

namespace {

using namespace faces;
using Rules = std::vector<Rule>;

Rules operator+(Rules rules, const Rules& more) {
    rules.insert(rules.end(), more.begin(), more.end());
    return rules;
}

const Rules buffers{null(1), null(2)};
const Values eightBit{0, 1, 2, 3, 4, 5}, mono16Too{0, 1, 2, 3, 4, 5, 7, 8};

// ---- Runs of pixels: (destination, source, count, output)

const Rule anyCount = refuses(3, {}, {1, 2, 3, 99}, {0});
const Rule evenCount = refuses(3, {1, 3, 97}, {2, 98}, {0});
const Rule pairs = refuses(3, {0, 1, 3, 97}, {2, 98});
const Rule fours = refuses(3, {0, 1, 2, 3, 6, 98}, {4, 100});
const Rule notZero = refuses(3, {0}, {1, 3});
// The legacy face succeeds where the current face refuses no pixels.
const Rule notZeroHere{3, {0}, success, OrvErrorBadParameter, {1, 3}};

Rules run(const Rule& count, const Values& outputs) { return buffers + Rules{count, offers(4, outputs)}; }
Rules run(const Rule& count) { return buffers + Rules{count}; }

TEST(Faces, Mono) {
    FACES(Y8ImageTransform, {to, from, 100, 1}, run(notZeroHere, {0, 1, 2, 3, 4, 5, 6}));
    FACES(Y12ImageTransform, {to, from, 100, 1}, run(evenCount, eightBit));
    FACES(Y10pImageTransform, {to, from, 100, 1}, run(anyCount, mono16Too));
    FACES(Y12pImageTransform, {to, from, 100, 1}, run(evenCount, mono16Too));

    // No Mono16 from the legacy face.
    const Rule onlyHere{4, {7, 8}, notOffered, OrvErrorSuccess}, nowhere{4, {6, 9, 10, 11, -1}, notOffered};
    FACES(Y16ImageTransform, {to, from, 100, 1}, buffers + Rules{notZeroHere, onlyHere, nowhere});
}

// Of a record: which shifts there are kernels for.
constexpr OrvShiftRecord shift(unsigned alignment, unsigned bits, unsigned endianness, unsigned pattern = 0) {
    return {77, alignment, bits, endianness, pattern};
}
constexpr OrvShiftRecord goodShifts[] = {shift(1, 10, 0), shift(1, 12, 1),    shift(1, 13, 0),     shift(1, 14, 1),
                                         shift(1, 15, 0), shift(1, 16, 1),    shift(0, 11, 0),     shift(0, 0, 1),
                                         shift(0, 99, 1), shift(1, 12, 0, 3), shift(1, 12, 0, 255)};
constexpr OrvShiftRecord unknownAlignments[] = {shift(2, 12, 0), shift(0xFFFFFFFF, 11, 2)};
constexpr OrvShiftRecord withoutKernel[] = {shift(1, 11, 0),          shift(1, 9, 0),  shift(1, 8, 0),
                                            shift(1, 0, 0),           shift(1, 17, 0), shift(1, 12, 2),
                                            shift(0, 16, 0xFFFFFFFF), shift(1, ~0U, 0)};
template <class Records> Values addresses(const Records& records) {
    Values values;
    for (const OrvShiftRecord& record : records) values.push_back(at(record));
    return values;
}
Rules shifts(unsigned output, unsigned record) {
    return {offers(output, {0, 1, 2, 3, 4, 5, 7, 8, 9}),
            {record, addresses(unknownAlignments), notOffered, OrvErrorNotImplemented, addresses(goodShifts)},
            {record, addresses(withoutKernel), fault}};
}

TEST(Faces, MonoWithARecord) {
    const Rule mayBeNull{5, {}, success, OrvErrorSuccess, {0}};
    FACES(Y16ImageTransformEx, {to, from, 100, 1, &goodShifts[1]},
          buffers + Rules{notZero} + shifts(4, 5) + Rules{mayBeNull});
}

TEST(Faces, MonoConverters) {
    FACES(Y16ToY8, {to, from, 100}, run(anyCount));
    FACES(Y16ToY8_MMX, {to, from, 96},
          buffers + Rules{{3, {0}, success, OrvErrorBadParameter}, refuses(3, {1, 2, 4, 7, 12, 100}, {8})});
    const Rules layout{notZero, refuses(4, {2, -1}, {0, 1}), refuses(5, {2, -1}, {0, 1}),
                       refuses(6, {17, -1}, {0, 9, 16})};
    FACES(Y16ToY8Ex, {to, from, 100, 1, 1, 12}, buffers + layout);
    FACES(Y16ToBGREx, {to, from, 100, 1, 1, 12}, buffers + layout);
    FACES(Y16ToBGR, {to, from, 100}, run(notZero));
    FACES(Y8ToBGR, {to, from, 100}, run(notZero));
    // The one answer of the current face in the legacy face's words.
    const Rule oddWidth{3, {1, 3, -3}, argument(3), static_cast<OrvErrorType>(argument(3)), {2}, {0, -2}};
    FACES(Packed12BitTo16Bit, {to, from, 98, 3}, Rules{oddWidth} + buffers + Rules{refuses(4, {}, {1}, {0})});
    FACES(Packed12BitTo8Bit, {to, from, 98, 3},
          buffers + Rules{refuses(3, {1, 3, -3}, {2}, {0, -2}), refuses(4, {}, {1}, {0, -1})});
    EXPECT_EQ(ZEB_Y16ToY8_MT(to, from, 16), 0x88000014);
    EXPECT_EQ(ZEB_Y16ToY8_MT(nullptr, nullptr, 0), 0x88000014);
}

TEST(Faces, Colour) {
    FACES(RGB8ImageTransform, {to, from, 100, 1}, run(anyCount, eightBit));
    FACES(BGR8ImageTransform, {to, from, 100, 0}, run(anyCount, eightBit));
    FACES(RGBA8ImageTransform, {to, from, 100, 1}, run(anyCount, eightBit));
    FACES(BGRA8ImageTransform, {to, from, 100, 1}, run(anyCount, eightBit));
    FACES(YUV411ImageTransform, {to, from, 100, 1}, run(fours, eightBit));
    FACES(YUV422ImageTransform, {to, from, 100, 1}, run(pairs, eightBit));
    FACES(YUV444ImageTransform, {to, from, 100, 1}, run(anyCount, eightBit));
    FACES(RGB8ToY8, {to, from, 100}, run(anyCount));
    FACES(RGB8ToBGR, {to, from, 100}, run(anyCount));
    FACES(YUV411ToBGR, {to, from, 100}, run(fours));
    FACES(YUV422ToBGR, {to, from, 100}, run(pairs));
    FACES(YUV444ToBGR, {to, from, 100}, run(notZero));
}

TEST(Faces, Planes) {
    const Rules planes{null(1), null(2), null(3)}, withLuma = planes + Rules{null(5), refuses(4, {}, {0})};
    const Rule any = refuses(6, {}, {1, 3}, {0}), lines = refuses(7, {}, {1, 3}, {0});
    const Rule pairsOfColumns = refuses(6, {1, 3}, {2}, {0}), foursOfColumns = refuses(6, {1, 2, 3, 6}, {4}, {0});
    const auto luma = plane(3);
    FACES(RGB8ToRGBYPlanes, {plane(0), plane(1), plane(2), luma, from, 20, 6}, withLuma + Rules{any, lines});
    FACES(YUV411ToRGBYPlanes, {plane(0), plane(1), plane(2), luma, from, 20, 6},
          withLuma + Rules{foursOfColumns, lines});
    FACES(YUV422ToRGBYPlanes, {plane(0), plane(1), plane(2), luma, from, 20, 6},
          withLuma + Rules{pairsOfColumns, lines});
    FACES(YUV444ToRGBYPlanes, {plane(0), plane(1), plane(2), luma, from, 20, 6}, withLuma + Rules{any, lines});
    FACES(YUV411ToRGBPlanes, {plane(0), plane(1), plane(2), from, 20, 6},
          planes + Rules{null(4), refuses(5, {1, 2, 3, 6}, {4}, {0}), refuses(6, {}, {1, 3}, {0})});
    FACES(YUV422ToRGBPlanes, {plane(0), plane(1), plane(2), from, 20, 6},
          planes + Rules{null(4), refuses(5, {0, 1, 3}, {2}), refuses(6, {0, 1}, {2, 3})});
    FACES(YUV444ToRGBPlanes, {plane(0), plane(1), plane(2), from, 20, 6},
          planes + Rules{null(4), refuses(5, {0}, {1, 3}), refuses(6, {0}, {1, 3})});
}

// ---- Mosaics: (destination, source, width, height, output, pattern), converters without the output

const Values uneven{0, 1, 3, 69};
const Rules mosaic = buffers + Rules{refuses(3, uneven, {2, 4}), refuses(4, uneven, {2, 4})};

Rule patternAt(unsigned position) { return refuses(position, {-2, 4, 255}, {-1, 0, 1, 2, 3}); }
Rules family(const Values& outputs) { return mosaic + Rules{patternAt(6), offers(5, outputs)}; }

TEST(Faces, Mosaics) {
    FACES(Raw8ImageTransform, {to, from, 70, 6, 1, 1}, family({0, 1, 2, 3, 4, 5, 6, 7, 8}));
    FACES(Raw8ImageTransform_3x3, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw8ImageTransform_IntLCAA, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw8ImageTransform_IntLCAAV, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw8ImageTransform_IntYUV422, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw10pImageTransform, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw12ImageTransform, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw12pImageTransform, {to, from, 70, 6, 1, 1}, family(mono16Too));
    FACES(Raw16ImageTransform, {to, from, 70, 6, 1, 1}, family(eightBit));
    FACES(Raw16ImageTransformEx, {to, from, 70, 6, 1, &goodShifts[1]}, mosaic + Rules{null(6)} + shifts(5, 6));
}

TEST(Faces, MosaicConverters) {
    const Rules converter = mosaic + Rules{patternAt(5)};
    FACES(Raw8ToBGR, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToBGR_3x3, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToBGR_IntLCAA, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToBGR_IntLCAAV, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToBGR_IntYUV422, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToBGR_mono, {to, from, 70, 6, 2}, converter);
    FACES(Raw8ToY8, {to, from, 70, 6, 2}, converter);
    FACES(Raw12ToBGR, {to, from, 70, 6, 2}, converter);
    FACES(Raw12ToBGR16, {to, from, 70, 6, 2}, converter);
    FACES(Raw16ToBGR, {to, from, 70, 6, 2}, converter);
    FACES(Raw16ToBGR16, {to, from, 70, 6, 2}, converter);
    FACES(Raw16ToY16, {to, from, 70, 6, 2}, converter);
}

struct Object {
    std::uint32_t kind;
    std::int32_t matrix[9] = {1024, 0, 0, 0, 1024, 0, 0, 0, 1024};
};
constexpr Object int8{2}, int16{3}, others[] = {{0}, {1}, {7}, {10}, {0xFFFFFFFF}};

TEST(Faces, MosaicConvertersWithAnObject) {
    const auto with = [](const Object& good, const Object& bad) {
        Rule object = refuses(6, {at(bad)}, {at(good), 0});
        for (const Object& other : others) object.refused.push_back(at(other));
        return mosaic + Rules{patternAt(5), object};
    };
    const ColorCorrectionHandle handle8 = const_cast<Object*>(&int8), handle16 = const_cast<Object*>(&int16);
    FACES(Raw8ToBGR_CC, {to, from, 70, 6, 2, handle8}, with(int8, int16));
    FACES(Raw8ToY8_CC, {to, from, 70, 6, 2, handle8}, with(int8, int16));
    FACES(Raw12ToBGR_CC, {to, from, 70, 6, 2, handle8}, with(int8, int16));
    FACES(Raw12ToBGR16_CC, {to, from, 70, 6, 2, handle16}, with(int16, int8));
    FACES(Raw16ToBGR16_CC, {to, from, 70, 6, 2, handle16}, with(int16, int8));
    FACES(Raw16ToY16_CC, {to, from, 70, 6, 2, handle16}, with(int16, int8));
}

TEST(Faces, ObjectsOfColourCorrection) {
    const auto* matrix = reinterpret_cast<const float*>(int8.matrix);
    auto* handle = static_cast<ColorCorrectionHandle*>(to);
    static ColorCorrectionHandle made[2]; // in reach as long as the process lives
    for (const auto create : {ZEB_CreateColorCorrectionMatrix_Int8, ZEB_CreateColorCorrectionMatrix_Int16}) {
        ColorCorrectionHandle& object = made[create == ZEB_CreateColorCorrectionMatrix_Int16];
        EXPECT_EQ(create(nullptr, nullptr), argument(1));
        EXPECT_EQ(create(matrix, nullptr), argument(2));
        EXPECT_EQ(create(matrix, &object), success);
        EXPECT_EQ(ZEB_DestroyColorCorrection(object), argument(1));
    }
    EXPECT_EQ(OrvCreateColorCorrectionMatrix_Int8(nullptr, handle), OrvErrorBadParameter);
    EXPECT_EQ(OrvCreateColorCorrectionMatrix_Int16(matrix, nullptr), OrvErrorBadParameter);
    EXPECT_EQ(ZEB_DestroyColorCorrection(nullptr), argument(1));
}

TEST(Faces, Cygm) {
    const Values sevenOutputs{0, 1, 2, 3, 4, 5, 6};
    const Rule width = refuses(3, {0, 1, 3, 71}, {2, 4}), height = refuses(4, {0, 1, 2, 6}, {4});
    const Rule inner = refuses(3, {0, 1, 2, 3, 71}, {4});
    FACES(IRaw8CYGMImageTransform, {to, from, 72, 8, 1, 77}, buffers + Rules{width, height, offers(5, sevenOutputs)});
    FACES(IRaw8CYGMImageTransform_Bin, {to, from, 72, 8, 1, 77},
          buffers + Rules{width, height, offers(5, sevenOutputs)});
    FACES(IRaw8CYGMImageTransform_3x3, {to, from, 72, 8, 1, 77},
          buffers + Rules{inner, height, offers(5, sevenOutputs)});
    // Pairs of pixels, two columns each.
    FACES(IRaw8CYGMImageTransform_Bin, {to, from, 72, 8, OrvOutputYuv422, 0},
          buffers + Rules{refuses(3, {0, 1, 3, 71}, {4}), height, refuses(3, {2, 6, 70})});
    FACES(IRaw8CYGMToBGR, {to, from, 72, 8}, buffers + Rules{width, height});
    FACES(IRaw8CYGMToBGR_Bin, {to, from, 72, 8}, buffers + Rules{width, height});
    FACES(IRaw8CYGMToBGR_3x3, {to, from, 72, 8}, buffers + Rules{inner, height});
    FACES(IRaw8CYGMToMono, {to, from, 72, 8}, buffers + Rules{width, height});
}

// ---- Geometry

TEST(Faces, Flips) {
    constexpr std::intptr_t longest = 0xFFFFFFFF;
    const Rules image{null(1), refuses(2, {0}, {2}), refuses(3, {0, 1}, {2, 3})};
    const Rule mode = refuses(4, {0, 4, -1}, {1, 2, 3});
    FACES(Flip, {to, 70, 6, 1, 4}, image + Rules{mode, refuses(5, {11, 127, 131, 200})});
    FACES(Flip, {to, 70, 6, 3, 6}, image + Rules{mode, refuses(5, {11, 127, 131, 200}), refuses(2, {longest / 6 + 1})});
    FACES(Flip, {to, 70, 6, 2, 5}, image + Rules{mode, refuses(2, {longest / 2 + 1}), refuses(5, {}, {11, 200})});
    FACES(FlipVertical, {to, 70, 6}, Rules{null(1), refuses(2, {0}, {1}), refuses(3, {0, 1}, {2, 3})});
}

TEST(Faces, Lines) {
    FACES(InterlacedToProgressive, {to, from, 70, 6},
          buffers + Rules{refuses(3, {}, {1}, {0}), refuses(4, {1, 3}, {2}, {0})});

    const Rule bytes = refuses(6, {0, 7, -1}, {1, 6}), mode = refuses(7, {2, -1}, {0, 1}), ratio = refuses(9, {0});
    const Rule noLines = refuses(5, {}, {1}, {0, -1}), noLength = refuses(3, {}, {1}, {0, -1});
    FACES(ResampleScanlines, {to, from, 90, 70, 6, 3, 1, 2, 3}, buffers + Rules{bytes, mode, ratio, noLines, noLength},
          1);
    FACES(ResampleScanlinesEx, {to, from, 90, 95, 70, 72, 6, 3, 0, 2, 3},
          buffers + Rules{refuses(8, {0, 7, -1}, {1, 6}), refuses(9, {2, -1}, {0, 1}), refuses(11, {0}),
                          refuses(3, {}, {1}, {0, -1}), refuses(5, {}, {1}, {0, -1}), refuses(7, {}, {1}, {0, -1})},
          1);
    FACES(GetResampledScanlineLength, {to, 70, 2, 3}, {null(1), refuses(4, {0})});
}

// ---- Blocks and queries

TEST(Faces, Sis) {
    // Index 0 has 8 bits per pixel, 1 has 12.
    const Rules image = buffers + Rules{refuses(3, {0}), refuses(4, {0}), refuses(5, {11, 99, -1}, {0, 9, 128})};
    FACES(GetSIS, {to, from, 70, 6, 0, 1, 2},
          image + Rules{refuses(7, {0, 3, -1}, {1}),
                        {6, {6, 100, -421, INT32_MIN}, fault, OrvErrorInternalFault, {0, -53}}});
    FACES(GetSIS, {to, from, 15, 64, 1, 0, 1},
          buffers + Rules{refuses(3, {0}), refuses(4, {0}), refuses(6, {1, -9}, {2, -10}), refuses(7, {0, 3})});
}

TEST(Faces, BitsOfAnIndex) { FACES(GetBitsPerPixel, {0, to}, {refuses(1, {11, 131, -1}, {5, 128, 149}), null(2)}); }

} // namespace
