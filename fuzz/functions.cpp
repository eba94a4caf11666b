// The functions of both faces that take buffers, but OrvImageTransform.
#include "fuzz/functions.h"

#include <bit>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "definition/outputs.h"
#include "fuzz/calls.h"
#include "orvella/zeb.h"
#include "proof/random.h"
#include "tests/support/call.h"

namespace fuzz {

namespace {

using support::Call, support::callOf, support::Values;

// What the arguments of a call are, as letters: buffers
//     d s     destination and source              1 2 3 4   planes
// and values
//     n w h   pixels, width, height               l L       lengths: positive, any
//     o p     output, pattern                     r c       shift record, colour correction object (or null)
//     k b i   a small number, bytes per pixel, a format index
//     g m     colour coding and mode of a flip    F f       a PFNC code, a float
struct Function {
    const char* name;
    Call current, legacy;
    std::string_view arguments;
    unsigned sourceBits = 0, destinationBytes = 0; // per pixel; 0 bytes: by the output
    unsigned binned = 1;                           // source pixels that become one
    bool inPlace = false;                          // where the destination is no larger
    bool changesSource = false;
    // Of the destination and the source, by the arguments; otherwise as said above.
    std::vector<std::size_t> (*sizes)(const Values&) = nullptr;
};
#define FACES(name) #name, callOf(Orv##name), callOf(ZEB_##name)
#define FACE(function)                                                                                                 \
#function, callOf(function), {}

std::uint64_t product(std::intptr_t a, std::intptr_t b) {
    return static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b); // of 32-bit numbers
}

std::size_t bytesPerPixelOfCoding(std::intptr_t coding) {
    switch (coding) {
    case 1:
    case 2:
    case 3:
    case 5:
    case 7:
    case 10: return 2;
    case 4: return 3;
    case 6:
    case 8: return 6;
    default: return 1;
    }
}
std::vector<std::size_t> sizesOfFlip(const Values& v) { return {product(v[1], v[2]) * bytesPerPixelOfCoding(v[4])}; }
std::vector<std::size_t> sizesOfLines(const Values& v) { return {product(v[1], v[2])}; }
std::vector<std::size_t> sizesOfFields(const Values& v) { return {product(v[2], v[3]), product(v[2], v[3])}; }
std::vector<std::size_t> sizesOfBlock(const Values& v) {
    std::uint32_t bits = 0;
    OrvGetBitsPerPixel(static_cast<std::uint32_t>(v[4]), &bits);
    return {v[6] == 1 ? 12U : 52U, product(v[2], v[3]) * bits / 8};
}

// Of signed sides: none below zero.
std::vector<std::size_t> sizesOfUnpacking(const Values& v, std::size_t bytes) {
    const auto width = static_cast<std::int32_t>(v[2]);
    const std::size_t pixels = width < 0 ? 0 : product(width, v[3]);
    return {pixels * bytes, pixels / 2 * 3};
}
std::vector<std::size_t> sizesTo16(const Values& v) { return sizesOfUnpacking(v, 2); }
std::vector<std::size_t> sizesTo8(const Values& v) { return sizesOfUnpacking(v, 1); }

// Lines at the pitches of the calls. Pitches are at least 0, so that line 0 is the first in memory.
std::vector<std::size_t> sizesOfResampling(std::intptr_t destination, std::intptr_t destinationPitch,
                                           std::intptr_t source, std::intptr_t sourcePitch, std::intptr_t lines,
                                           std::intptr_t bytes, std::intptr_t mode, float ratio) {
    if (destination <= 0 || source <= 0 || lines <= 0) return {0, 0};
    if (destination > 4096 || lines > 4096) return {2 * longest, 2 * longest}; // which takes too long
    const double rounded = static_cast<double>(destination - 1) * static_cast<double>(ratio) + 0.5;
    const std::intptr_t most = mode == 1 ? destination - 1 : source - 1;
    const std::intptr_t last = !(rounded >= 1)                        ? 0
                               : rounded >= static_cast<double>(most) ? most
                                                                      : static_cast<std::intptr_t>(rounded);
    const auto extent = [&](std::intptr_t pitch, std::intptr_t line) {
        return static_cast<std::size_t>(((lines - 1) * pitch + line) * (bytes >= 1 && bytes <= 6 ? bytes : 0));
    };
    return {extent(destinationPitch, destination), extent(sourcePitch, last + 1)};
}
float floatOf(std::intptr_t value) { return std::bit_cast<float>(static_cast<std::uint32_t>(value)); }
std::vector<std::size_t> sizesOfScanlines(const Values& v) {
    return sizesOfResampling(v[2], v[2], v[3], v[3], v[4], v[5], v[6], floatOf(v[7]) / floatOf(v[8]));
}
std::vector<std::size_t> sizesOfScanlinesEx(const Values& v) {
    return sizesOfResampling(v[2], v[3], v[4], v[5], v[6], v[7], v[8], floatOf(v[9]) / floatOf(v[10]));
}

std::vector<std::size_t> sizesOfOld(const Values& v) {
    std::uint32_t bits = 0;
    OrvBitsPerPixel(&bits, static_cast<OrvPixelFormatType>(v[6]));
    const std::uint64_t pixels = product(v[3], v[4]);
    return {pixels * (v[1] <= 10 ? definition::outputs[v[1]].bytes : 0), (pixels * bits + 7) / 8};
}

const std::vector<Function>& functions() {
    static const std::vector<Function> list = {
        {FACES(Y8ImageTransform), "dsno", 8, 0, 1, true},
        {FACES(Y16ImageTransform), "dsno", 16, 0, 1, true},
        {FACES(Y16ImageTransformEx), "dsnor", 16, 0, 1, true},
        {FACES(Y12ImageTransform), "dsno", 12, 0, 1, true},
        {FACES(Y10pImageTransform), "dsno", 10, 0, 1, true},
        {FACES(Y12pImageTransform), "dsno", 12, 0, 1, true},
        {FACES(Y16ToY8), "dsn", 16, 1, 1, true},
        {FACES(Y16ToY8_MMX), "dsn", 16, 1, 1, true},
        {"Y16ToY8_MT", {}, callOf(ZEB_Y16ToY8_MT), "dsn", 16, 1, 1, true},
        {FACES(Y16ToY8Ex), "dsnkkk", 16, 1, 1, true},
        {FACES(Y16ToBGR), "dsn", 16, 3},
        {FACES(Y16ToBGREx), "dsnkkk", 16, 3},
        {FACES(Y8ToBGR), "dsn", 8, 3},
        {FACES(Packed12BitTo16Bit), "dsLl", 0, 0, 1, false, false, sizesTo16},
        {FACES(Packed12BitTo8Bit), "dsLl", 0, 0, 1, true, false, sizesTo8},

        {FACES(RGB8ImageTransform), "dsno", 24, 0, 1, true},
        {FACES(BGR8ImageTransform), "dsno", 24, 0, 1, true},
        {FACES(RGBA8ImageTransform), "dsno", 32, 0, 1, true},
        {FACES(BGRA8ImageTransform), "dsno", 32, 0, 1, true},
        {FACES(RGB8ToY8), "dsn", 24, 1},
        {FACES(RGB8ToBGR), "dsn", 24, 3, 1, true},
        {FACES(YUV411ImageTransform), "dsno", 12},
        {FACES(YUV422ImageTransform), "dsno", 16},
        {FACES(YUV444ImageTransform), "dsno", 24},
        {FACES(YUV411ToBGR), "dsn", 12, 3},
        {FACES(YUV422ToBGR), "dsn", 16, 3},
        {FACES(YUV444ToBGR), "dsn", 24, 3},

        {FACES(RGB8ToRGBYPlanes), "1234swh", 24, 1},
        {FACES(YUV411ToRGBYPlanes), "1234swh", 12, 1},
        {FACES(YUV422ToRGBYPlanes), "1234swh", 16, 1},
        {FACES(YUV444ToRGBYPlanes), "1234swh", 24, 1},
        {FACES(YUV411ToRGBPlanes), "123swh", 12, 1},
        {FACES(YUV422ToRGBPlanes), "123swh", 16, 1},
        {FACES(YUV444ToRGBPlanes), "123swh", 24, 1},

        {FACES(Raw8ImageTransform), "dswhop", 8},
        {FACES(Raw8ImageTransform_3x3), "dswhop", 8},
        {FACES(Raw8ImageTransform_IntLCAA), "dswhop", 8, 0, 1, false, true},
        {FACES(Raw8ImageTransform_IntLCAAV), "dswhop", 8, 0, 1, false, true},
        {FACES(Raw8ImageTransform_IntYUV422), "dswhop", 8, 0, 1, false, true},
        {FACES(Raw10pImageTransform), "dswhop", 10},
        {FACES(Raw12pImageTransform), "dswhop", 12},
        {FACES(Raw12ImageTransform), "dswhop", 12},
        {FACES(Raw16ImageTransform), "dswhop", 16},
        {FACES(Raw16ImageTransformEx), "dswhor", 16},
        {FACES(Raw8ToBGR), "dswhp", 8, 3},
        {FACES(Raw8ToBGR_3x3), "dswhp", 8, 3},
        {FACES(Raw8ToBGR_IntLCAA), "dswhp", 8, 3, 1, false, true},
        {FACES(Raw8ToBGR_IntLCAAV), "dswhp", 8, 3, 1, false, true},
        {FACES(Raw8ToBGR_IntYUV422), "dswhp", 8, 3, 1, false, true},
        {FACES(Raw8ToBGR_mono), "dswhp", 8, 3},
        {FACES(Raw8ToY8), "dswhp", 8, 1},
        {FACES(Raw12ToBGR), "dswhp", 12, 3},
        {FACES(Raw12ToBGR16), "dswhp", 12, 6},
        {FACES(Raw16ToBGR), "dswhp", 16, 3},
        {FACES(Raw16ToBGR16), "dswhp", 16, 6},
        {FACES(Raw16ToY16), "dswhp", 16, 2},
        {FACES(Raw8ToBGR_CC), "dswhpc", 8, 3},
        {FACES(Raw8ToY8_CC), "dswhpc", 8, 1},
        {FACES(Raw12ToBGR_CC), "dswhpc", 12, 3},
        {FACES(Raw12ToBGR16_CC), "dswhpc", 12, 6},
        {FACES(Raw16ToBGR16_CC), "dswhpc", 16, 6},
        {FACES(Raw16ToY16_CC), "dswhpc", 16, 2},

        {FACES(IRaw8CYGMImageTransform), "dswhok", 8},
        {FACES(IRaw8CYGMImageTransform_3x3), "dswhok", 8},
        {FACES(IRaw8CYGMImageTransform_Bin), "dswhok", 8, 0, 4},
        {FACES(IRaw8CYGMToBGR), "dswh", 8, 3},
        {FACES(IRaw8CYGMToBGR_3x3), "dswh", 8, 3},
        {FACES(IRaw8CYGMToBGR_Bin), "dswh", 8, 3, 4},
        {FACES(IRaw8CYGMToMono), "dswh", 8, 1},

        {FACES(Flip), "dwhmg", 0, 0, 1, false, false, sizesOfFlip},
        {FACES(FlipVertical), "dwh", 0, 0, 1, false, false, sizesOfLines},
        {FACES(InterlacedToProgressive), "dswh", 0, 0, 1, true, false, sizesOfFields},
        {FACES(ResampleScanlines), "dsLLLbkff", 0, 0, 1, false, false, sizesOfScanlines},
        {FACES(ResampleScanlinesEx), "dsLlLlLbkff", 0, 0, 1, false, false, sizesOfScanlinesEx},
        {FACES(GetSIS), "dswhiLk", 0, 0, 1, false, false, sizesOfBlock},
        {FACE(OrvTransformOLD), "doswhkF", 0, 0, 1, false, false, sizesOfOld},
    };
    return list;
}

// The memory of objects stays until the process ends, so that there are a few for all calls. The first is null.
constexpr std::uint32_t corrections = 1 + 2 * 8;
ColorCorrectionHandle correction(std::uint32_t number) {
    static const std::vector<ColorCorrectionHandle> made = [] {
        std::vector<ColorCorrectionHandle> handles(corrections, nullptr);
        proof::Random random(2);
        for (std::uint32_t i = 1; i < corrections; i += 2) {
            float matrix[9];
            for (float& coefficient : matrix)
                coefficient = static_cast<float>(random.below(4096)) / (i < 8 ? 1024.0F : 8.0F) - 1.5F;
            OrvCreateColorCorrectionMatrix_Int8(matrix, &handles[i]);
            OrvCreateColorCorrectionMatrix_Int16(matrix, &handles[i + 1]);
        }
        return handles;
    }();
    return made[number];
}

std::intptr_t valueOf(char letter, Choices& choices, const OrvShiftRecord& record) {
    switch (letter) {
    case 'n':
    case 'w':
    case 'h': return choices.size();
    case 'l': return choices.below(300);
    case 'L': return static_cast<std::int32_t>(choices.size());
    case 'o': return choices.code(11);
    case 'p': return static_cast<std::int32_t>(choices.below(6)) - 1;
    case 'r': return choices.once(8) ? 0 : reinterpret_cast<std::intptr_t>(&record);
    case 'c': return reinterpret_cast<std::intptr_t>(correction(choices.below(corrections)));
    case 'k': return choices.code(17);
    case 'b': return choices.code(7);
    case 'i':
    case 'g': return choices.code(150);
    case 'm': return choices.below(5);
    case 'F': return knownFormat(choices);
    case 'f': return std::bit_cast<std::uint32_t>(choices.coefficient() * (choices.once(3) ? 1000.0F : 2.0F));
    default: return 0; // a buffer, which comes later
    }
}

std::vector<std::size_t> sizesFor(const Function& function, const Values& values) {
    if (function.sizes) return function.sizes(values);
    const auto value = [&](char letter) {
        const std::size_t at = function.arguments.find(letter);
        return at == std::string_view::npos ? std::intptr_t{-1} : values[at];
    };
    const std::uint64_t pixels =
        value('n') >= 0 ? static_cast<std::uint64_t>(value('n')) : product(value('w'), value('h'));
    std::size_t bytes = function.destinationBytes;
    if (bytes == 0 && value('o') <= 10) bytes = definition::outputs[value('o')].bytes;
    const unsigned __int128 bits = pixels * static_cast<unsigned __int128>(function.sourceBits); // may need 68 bits
    const std::size_t destination = pixels > longest ? pixels : pixels / function.binned * bytes;
    std::vector<std::size_t> sizes{destination, static_cast<std::size_t>((bits + 7) / 8)};
    for (const char plane : {'2', '3', '4'})
        if (function.arguments.find(plane) != std::string_view::npos) sizes.push_back(destination);
    return sizes;
}

} // namespace

std::uint32_t knownFormat(Choices& choices) {
    static constexpr OrvPixelFormatType formats[] = {OrvPixelFormatMono8,
                                                     OrvPixelFormatMono10,
                                                     OrvPixelFormatMono12,
                                                     OrvPixelFormatMono12Packed,
                                                     OrvPixelFormatMono10p,
                                                     OrvPixelFormatMono12p,
                                                     OrvPixelFormatMono14,
                                                     OrvPixelFormatMono16,
                                                     OrvPixelFormatBayerGR8,
                                                     OrvPixelFormatBayerRG8,
                                                     OrvPixelFormatBayerGB8,
                                                     OrvPixelFormatBayerBG8,
                                                     OrvPixelFormatBayerRG10,
                                                     OrvPixelFormatBayerGB12,
                                                     OrvPixelFormatBayerGR12Packed,
                                                     OrvPixelFormatBayerBG10p,
                                                     OrvPixelFormatBayerRG12p,
                                                     OrvPixelFormatBayerGB16,
                                                     OrvPixelFormatRgb8,
                                                     OrvPixelFormatBgr8,
                                                     OrvPixelFormatRgba8,
                                                     OrvPixelFormatBgra8,
                                                     OrvPixelFormatRgb12,
                                                     OrvPixelFormatRgb16,
                                                     OrvPixelFormatYuv411,
                                                     OrvPixelFormatYuv422,
                                                     OrvPixelFormatYuv444,
                                                     OrvPixelFormatYCbCr411_8_CbYYCrYY,
                                                     OrvPixelFormatYCbCr422_8_CbYCrY,
                                                     OrvPixelFormatYCbCr8_CbYCr};
    if (choices.once(16)) return choices.ConsumeIntegral<std::uint32_t>();
    return formats[choices.below(std::size(formats))];
}

void callFunction(Choices& choices) {
    const Function& function = functions()[choices.below(static_cast<std::uint32_t>(functions().size()))];
    const OrvShiftRecord record{choices.code(1), choices.code(2), choices.code(18), choices.code(2), choices.code(5)};
    Values values;
    for (const char letter : function.arguments) values.push_back(valueOf(letter, choices, record));
    const std::vector<std::size_t> sizes = sizesFor(function, values);
    if (std::ranges::any_of(sizes, [](std::size_t size) { return size > longest; })) return; // no memory for that

    const auto call = [&](const Call& face) {
        return [&](std::uint8_t* const* buffers) {
            Values all = values;
            for (std::size_t i = 0; i < all.size(); ++i) {
                const char letter = function.arguments[i];
                const std::size_t buffer = std::string_view("ds234").find(letter == '1' ? 'd' : letter);
                if (buffer != std::string_view::npos) all[i] = reinterpret_cast<std::intptr_t>(buffers[buffer]);
            }
            return face(all);
        };
    };
    const bool inPlace = function.inPlace && sizes[0] <= sizes[1];
    Job job{function.name,  {}, sizes, inPlace, function.changesSource,
            !function.sizes}; // memcpy's buffers must not overlap
    if (function.current) job.faces.push_back(call(function.current));
    if (function.legacy) job.faces.push_back(call(function.legacy));
    run(job, choices);
}

} // namespace fuzz
