#include "catalogue/conversions.h"

#include <initializer_list>

#include "catalogue/colour_matrix.h"
#include "definition/outputs.h"

namespace catalogue {

namespace {

using definition::outputs;

// A camera format, as OrvImageTransform is told about it.
struct Source {
    std::string name;
    OrvPixelFormatType format[4]; // mosaics: by Bayer pattern; others: the first counts
    bool bigEndian = false;
    unsigned widthStep = 1, heightStep = 1, patterns = 1, smallest = 1;
    bool inPlace = false;         // for outputs that are no larger
    unsigned beyondForColour = 0; // bytes behind the source that colour outputs read as well
};

OrvImage describe(const Source& source, void* data, std::uint32_t width, std::uint32_t height, std::uint32_t pattern) {
    OrvImage image{};
    image.Size = sizeof image;
    image.Data = data;
    OrvSetImageInfoFromPixelFormat(source.format[source.patterns == 1 ? 0 : pattern], width, height, &image);
    if (source.bigEndian) image.ImageInfo.PixelInfo.Endianness = 1;
    return image;
}

OrvTransformInfo debayer(OrvDebayerMode mode) {
    OrvTransformInfo option{};
    OrvSetDebayerMode(mode, &option);
    return option;
}
OrvTransformInfo matrix(const float (&coefficients)[9]) {
    OrvTransformInfo option{};
    OrvSetColorCorrectionMatrix3x3(coefficients, &option);
    return option;
}

// What the "matrix" rows use.
struct Matrix {
    OrvTransformInfo option;                                       // with the coefficients
    ColorCorrectionHandle for8Bits = nullptr, for16Bits = nullptr; // outputs

    explicit Matrix(const float (&coefficients)[9]) : option(matrix(coefficients)) {
        OrvCreateColorCorrectionMatrix_Int8(coefficients, &for8Bits);
        OrvCreateColorCorrectionMatrix_Int16(coefficients, &for16Bits);
    }
};
Matrix& used() {
    static Matrix matrix(colourMatrix);
    return matrix;
}

class List {
public:
    std::vector<Conversion> rows;

    // One row for a function that is called by itself, with the destination's planes, if any, one after the other.
    void addCall(const std::string& source, const std::string& method, const std::string& output, unsigned sourceBits,
                 unsigned destinationBytes, decltype(Conversion::convert) call, unsigned widthStep = 1) {
        Conversion row;
        row.source = source;
        row.method = method;
        row.output = output;
        row.sourceBits = sourceBits;
        row.destinationBytes = destinationBytes;
        row.widthStep = widthStep;
        row.convert = std::move(call);
        rows.push_back(std::move(row));
    }
    void addMosaicCall(const std::string& source, const std::string& method, const std::string& output,
                       unsigned sourceBits, unsigned destinationBytes, decltype(Conversion::convert) call) {
        addCall(source, method, output, sourceBits, destinationBytes, std::move(call), 2);
        rows.back().heightStep = 2;
        rows.back().patterns = 4;
    }

    void addInPlaceCall(const std::string& source, const std::string& method, const std::string& output,
                        unsigned sourceBits, unsigned destinationBytes, decltype(Conversion::convert) call,
                        unsigned widthStep = 1) {
        addCall(source, method, output, sourceBits, destinationBytes, std::move(call), widthStep);
        rows.back().inPlace = true;
    }

    // Flips of pixels that a colour coding describes.
    void addFlips(const std::string& source, const std::string& output, unsigned bytes, std::uint32_t coding) {
        constexpr const char* methods[] = {"flip horizontal", "flip vertical", "turn"};
        for (const int mode : {1, 2, 3}) {
            addInPlaceCall(source, methods[mode - 1], output, 8 * bytes, bytes,
                           [=](void* image, void*, std::uint32_t w, std::uint32_t h, std::uint32_t) {
                               return OrvFlip(image, w, h, mode, coding);
                           });
            rows.back().onlyInPlace = true;
            rows.back().heightStep = 2; // a single line is refused
        }
    }

    // Lines stretched to one and a half times their length.
    void addStretched(const std::string& source, const std::string& output, unsigned bytes) {
        for (const std::uint32_t mode : {0U, 1U}) {
            addCall(
                source, mode == 0 ? "nearest" : "linear", output, 8 * bytes, bytes,
                [=](void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
                    const auto width = static_cast<std::int32_t>(w), lines = static_cast<std::int32_t>(h);
                    const OrvErrorType result =
                        OrvResampleScanlines(d, s, width / 2 * 3, width, lines, bytes, mode, 2, 3);
                    return result == 1 ? OrvErrorType{OrvErrorSuccess} : result;
                },
                2);
            rows.back().stretch[0] = 3, rows.back().stretch[1] = 2;
        }
    }

    using CygmTransform = OrvErrorType (*)(void*, const void*, std::uint32_t width, std::uint32_t height, OrvOutputCode,
                                           std::uint32_t);
    // binning: columns and lines that become one.
    void addCygm(const std::string& method, CygmTransform transform, unsigned smallest, unsigned binning = 1) {
        for (const unsigned code : {0U, 1U, 2U, 3U, 4U, 5U, 6U}) {
            addCall(
                "CYGM8", method, outputs[code].name, 8, outputs[code].bytes,
                [transform, code](void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
                    return transform(d, s, w, h, code, 0);
                },
                code == OrvOutputYuv422 ? 2 * binning : 2);
            Conversion& row = rows.back();
            row.heightStep = 4;
            row.smallest = smallest;
            row.keepsFourthByte = code == OrvOutputBgra32 || code == OrvOutputRgba32;
            row.stretch[1] = row.linesToOne = binning;
        }
    }

    // One row per output, through OrvImageTransform.
    void add(const Source& source, std::initializer_list<unsigned> outputCodes, const std::string& method = "",
             OrvTransformInfo option = debayer(OrvDebayerMode2x2)) {
        for (const unsigned code : outputCodes) {
            Conversion row;
            row.source = source.name;
            row.method = method;
            row.output = outputs[code].name;
            row.format = source.format[0];
            std::uint32_t bits = 0;
            OrvBitsPerPixel(&bits, source.format[0]);
            row.sourceBits = bits;
            row.destinationBytes = outputs[code].bytes;
            row.widthStep = code == OrvOutputYuv422 && source.widthStep == 1 ? 2 : source.widthStep;
            row.heightStep = source.heightStep;
            row.patterns = source.patterns;
            row.smallest = source.smallest;
            row.keepsFourthByte = code == OrvOutputBgra32 || code == OrvOutputRgba32;
            const bool colour = code >= OrvOutputBgr24 && code <= OrvOutputRgba32;
            row.beyond = colour ? source.beyondForColour : 0;
            row.inPlace = source.inPlace && 8 * row.destinationBytes <= row.sourceBits;
            row.overwritesSource = option.TransformType == OrvTransformTypeDebayerMode &&
                                   option.Parameter.DebayerMode >= OrvDebayerModeLCAA;
            row.convert = [source, code, option](void* d, void* s, std::uint32_t width, std::uint32_t height,
                                                 std::uint32_t pattern) {
                const OrvImage from = describe(source, s, width, height, pattern);
                OrvImage to{};
                to.Size = sizeof to;
                to.Data = d;
                OrvSetImageInfoOutput(code, width, height, &to);
                const bool isMatrix = option.TransformType == OrvTransformTypeColorCorrection;
                return OrvImageTransform(&from, &to, isMatrix ? &used().option : &option, 1);
            };
            rows.push_back(std::move(row));
        }
    }
};

Source mono(const std::string& name, OrvPixelFormatType format, unsigned widthStep = 1) {
    return {.name = name, .format = {format}, .widthStep = widthStep, .inPlace = true};
}
Source rgb(const std::string& name, OrvPixelFormatType format) { return mono(name, format); }
Source yuv(const std::string& name, OrvPixelFormatType format, unsigned widthStep) {
    return {.name = name, .format = {format}, .widthStep = widthStep};
}
Source bigEndian(Source source) {
    source.name += " big-endian";
    source.bigEndian = true;
    return source;
}
Source mosaic(const std::string& name, OrvPixelFormatType rg, OrvPixelFormatType gb, OrvPixelFormatType gr,
              OrvPixelFormatType bg) {
    return {.name = name, .format = {rg, gb, gr, bg}, .widthStep = 2, .heightStep = 2, .patterns = 4};
}

// Without the limits to even sizes, which do not hold with colour correction.
Source ofAnySize(Source source) {
    source.widthStep = source.heightStep = 1;
    source.smallest = 2;
    return source;
}

// Calls of a one-call converter of pixels, of a mosaic, and of a splitter into planes.
template <auto function> OrvErrorType ofPixels(void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
    return function(d, s, w * h);
}
template <auto function>
OrvErrorType ofMosaic(void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t pattern) {
    return function(d, s, w, h, static_cast<std::int32_t>(pattern));
}
// With an object of the matrix, for outputs of 8 or 16 bits a channel.
template <auto function, int bits>
OrvErrorType corrected(void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t pattern) {
    const Matrix& matrix = used();
    return function(d, s, w, h, static_cast<std::int32_t>(pattern), bits == 8 ? matrix.for8Bits : matrix.for16Bits);
}
template <auto function, bool withLuma>
OrvErrorType ofPlanes(void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
    const std::size_t n = std::size_t{w} * h;
    auto* planes = static_cast<std::uint8_t*>(d);
    return function(planes, planes + n, planes + 2 * n, withLuma ? planes + 3 * n : nullptr, s, w, h);
}

template <class Width, class Height>
decltype(Conversion::convert) ofSize(OrvErrorType (*function)(void*, const void*, Width, Height)) {
    return [function](void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
        return function(d, s, static_cast<Width>(w), static_cast<Height>(h));
    };
}
template <auto function, unsigned swap, unsigned lsbAligned, unsigned bits>
OrvErrorType ofWords(void* d, void* s, std::uint32_t w, std::uint32_t h, std::uint32_t) {
    return function(d, s, w * h, swap, lsbAligned, bits);
}

std::vector<Conversion> all() {
    List list;

    const Source mono16 = mono("Mono16", OrvPixelFormatMono16);
    Source littleEndianMono16 = mono16;
    littleEndianMono16.beyondForColour = 1; // the tint of a pixel comes from the byte behind it
    list.add(mono("Mono8", OrvPixelFormatMono8), {0, 1, 2, 3, 4, 5, 6});
    list.add(mono("Mono10", OrvPixelFormatMono10), {0, 1, 2, 3, 4, 5, 7, 8, 9});
    list.add(mono("Mono12", OrvPixelFormatMono12), {0, 1, 2, 3, 4, 5, 7, 8, 9});
    list.add(bigEndian(mono("Mono12", OrvPixelFormatMono12)), {0, 1, 2, 3, 4, 5, 7, 8, 9});
    list.add(mono("Mono14", OrvPixelFormatMono14), {0, 1, 2, 3, 4, 5, 7, 8, 9});
    list.add(littleEndianMono16, {0, 1, 2, 3, 4, 5, 7, 8});
    list.add(bigEndian(mono16), {0, 1, 2, 3, 4, 5, 7, 8});
    list.add(mono("Mono12Packed", OrvPixelFormatMono12Packed, 2), {0, 1, 2, 3, 4, 5});
    list.add(mono("Mono10p", OrvPixelFormatMono10p), {0, 1, 2, 3, 4, 5, 7, 8});
    list.add(mono("Mono12p", OrvPixelFormatMono12p, 2), {0, 1, 2, 3, 4, 5, 7, 8});

    list.add(rgb("RGB8", OrvPixelFormatRgb8), {0, 1, 2, 3, 4, 5});
    list.add(rgb("BGR8", OrvPixelFormatBgr8), {0, 1, 2, 3, 4, 5});
    list.add(rgb("RGBA8", OrvPixelFormatRgba8), {0, 1, 2, 3, 4, 5});
    list.add(rgb("BGRA8", OrvPixelFormatBgra8), {0, 1, 2, 3, 4, 5});
    list.add(yuv("YUV 4:1:1", OrvPixelFormatYuv411, 4), {0, 1, 2, 3, 4, 5});
    list.add(yuv("YUV 4:2:2", OrvPixelFormatYuv422, 2), {0, 1, 2, 3, 4, 5});
    list.add(yuv("YUV 4:4:4", OrvPixelFormatYuv444, 1), {0, 1, 2, 3, 4, 5});

    const Source bayer8 = mosaic("Bayer8", OrvPixelFormatBayerRG8, OrvPixelFormatBayerGB8, OrvPixelFormatBayerGR8,
                                 OrvPixelFormatBayerBG8);
    list.add(bayer8, {0, 1, 2, 3, 4, 5, 6, 7, 8}, "2x2");
    list.add(bayer8, {0, 1, 2, 3, 4, 5, 7, 8}, "3x3", debayer(OrvDebayerMode3x3));
    list.add(bayer8, {0, 1, 2, 3, 4, 5, 7, 8}, "LCAA", debayer(OrvDebayerModeLCAA));
    list.add(bayer8, {0, 1, 2, 3, 4, 5, 7, 8}, "LCAAV", debayer(OrvDebayerModeLCAAV));
    list.add(bayer8, {0, 1, 2, 3, 4, 5, 7, 8}, "YUV422", debayer(OrvDebayerModeYuv422));

    const Source bayer16 = mosaic("Bayer16", OrvPixelFormatBayerRG16, OrvPixelFormatBayerGB16, OrvPixelFormatBayerGR16,
                                  OrvPixelFormatBayerBG16);
    const Source bayer10 = mosaic("Bayer10", OrvPixelFormatBayerRG10, OrvPixelFormatBayerGB10, OrvPixelFormatBayerGR10,
                                  OrvPixelFormatBayerBG10);
    const Source bayer12 = mosaic("Bayer12", OrvPixelFormatBayerRG12, OrvPixelFormatBayerGB12, OrvPixelFormatBayerGR12,
                                  OrvPixelFormatBayerBG12);
    const Source bayer12Packed = mosaic("Bayer12Packed", OrvPixelFormatBayerRG12Packed, OrvPixelFormatBayerGB12Packed,
                                        OrvPixelFormatBayerGR12Packed, OrvPixelFormatBayerBG12Packed);
    list.add(bayer10, {0, 1, 2, 3, 4, 5, 7, 8, 9}, "2x2");
    list.add(bayer12, {0, 1, 2, 3, 4, 5, 7, 8, 9}, "2x2");
    list.add(bigEndian(bayer12), {0, 1, 2, 3, 4, 5, 7, 8, 9}, "2x2");
    list.add(bayer16, {0, 1, 2, 3, 4, 5, 7, 8, 9}, "2x2");
    list.add(bigEndian(bayer16), {0, 1, 2, 3, 4, 5}, "2x2");
    list.add(bayer12Packed, {0, 1, 2, 3, 4, 5, 7, 8}, "2x2");
    list.add(mosaic("Bayer10p", OrvPixelFormatBayerRG10p, OrvPixelFormatBayerGB10p, OrvPixelFormatBayerGR10p,
                    OrvPixelFormatBayerBG10p),
             {0, 1, 2, 3, 4, 5, 7, 8}, "2x2");
    list.add(mosaic("Bayer12p", OrvPixelFormatBayerRG12p, OrvPixelFormatBayerGB12p, OrvPixelFormatBayerGR12p,
                    OrvPixelFormatBayerBG12p),
             {0, 1, 2, 3, 4, 5, 7, 8}, "2x2");

    list.addInPlaceCall("Mono16 big-endian", "rounded", "Mono8", 16, 1, ofPixels<OrvY16ToY8>);
    list.addInPlaceCall("Mono16", "rounded", "Mono8", 16, 1, ofWords<OrvY16ToY8Ex, 0, 0, 16>);
    list.addInPlaceCall("Mono12", "rounded", "Mono8", 16, 1, ofWords<OrvY16ToY8Ex, 0, 1, 12>);
    list.addInPlaceCall("Mono9 big-endian", "rounded", "Mono8", 16, 1, ofWords<OrvY16ToY8Ex, 1, 1, 9>);
    list.addCall("Mono16 big-endian", "tinted", "BGR24", 16, 3, ofPixels<OrvY16ToBGR>);
    list.addCall("Mono16", "tinted", "BGR24", 16, 3, ofWords<OrvY16ToBGREx, 0, 0, 16>);
    list.addCall("Mono12", "tinted", "BGR24", 16, 3, ofWords<OrvY16ToBGREx, 0, 1, 12>);
    list.addCall("Mono10 big-endian", "tinted", "BGR24", 16, 3, ofWords<OrvY16ToBGREx, 1, 1, 10>);
    list.addCall("Mono8", "one call", "BGR24", 8, 3, ofPixels<OrvY8ToBGR>);
    list.addCall("Mono12Packed", "whole", "Mono16 big-endian", 12, 2, ofSize(OrvPacked12BitTo16Bit), 2);
    list.addInPlaceCall("Mono12Packed", "one call", "Mono8", 12, 1, ofSize(OrvPacked12BitTo8Bit), 2);

    list.add(rgb("RGB8", OrvPixelFormatRgb8), {1, 2, 3, 4}, "matrix", matrix(colourMatrix));
    list.add(rgb("BGR8", OrvPixelFormatBgr8), {1, 2, 3, 4}, "matrix", matrix(colourMatrix));
    list.add(rgb("RGBA8", OrvPixelFormatRgba8), {1, 2, 3, 4}, "matrix", matrix(colourMatrix));
    list.add(rgb("BGRA8", OrvPixelFormatBgra8), {1, 2, 3, 4}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bayer8), {0, 1, 3, 5}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bayer10), {7, 8, 9}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bayer12), {7, 8, 9}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bayer16), {7, 8, 9}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bigEndian(bayer16)), {7, 8, 9}, "matrix", matrix(colourMatrix));
    list.add(ofAnySize(bayer12Packed), {1, 9}, "matrix", matrix(colourMatrix));

    list.addCygm("", OrvIRaw8CYGMImageTransform, 2);
    list.addCygm("3x3", OrvIRaw8CYGMImageTransform_3x3, 4);
    list.addCygm("binned", OrvIRaw8CYGMImageTransform_Bin, 2, 2);

    list.addCall("RGB8", "double precision", "Mono8", 24, 1, ofPixels<OrvRGB8ToY8>);
    list.addCall("RGB8", "planes", "R G B", 24, 3, ofPlanes<OrvRGB8ToRGBYPlanes, false>);
    list.addCall("RGB8", "planes", "R G B Y", 24, 4, ofPlanes<OrvRGB8ToRGBYPlanes, true>);
    list.addCall("YUV 4:1:1", "planes", "R G B", 12, 3, ofPlanes<OrvYUV411ToRGBYPlanes, false>, 4);
    list.addCall("YUV 4:1:1", "planes", "R G B Y", 12, 4, ofPlanes<OrvYUV411ToRGBYPlanes, true>, 4);
    list.addCall("YUV 4:2:2", "planes", "R G B", 16, 3, ofPlanes<OrvYUV422ToRGBYPlanes, false>, 2);
    list.addCall("YUV 4:2:2", "planes", "R G B Y", 16, 4, ofPlanes<OrvYUV422ToRGBYPlanes, true>, 2);
    list.addCall("YUV 4:4:4", "planes", "R G B", 24, 3, ofPlanes<OrvYUV444ToRGBYPlanes, false>);
    list.addCall("YUV 4:4:4", "planes", "R G B Y", 24, 4, ofPlanes<OrvYUV444ToRGBYPlanes, true>);

    list.addMosaicCall("Bayer8", "2x2 grey", "BGR24", 8, 3, ofMosaic<OrvRaw8ToBGR_mono>);
    list.addMosaicCall("Bayer12Packed", "2x2 whole", "BGR48", 12, 6, ofMosaic<OrvRaw12ToBGR16>);
    list.addMosaicCall("Bayer16 big-endian", "2x2 whole", "BGR48", 16, 6, ofMosaic<OrvRaw16ToBGR16>);
    list.addMosaicCall("Bayer16 big-endian", "2x2 whole", "Mono16", 16, 2, ofMosaic<OrvRaw16ToY16>);
    list.addMosaicCall("Bayer8", "2x2 matrix", "BGR24", 8, 3, corrected<OrvRaw8ToBGR_CC, 8>);
    list.addMosaicCall("Bayer8", "2x2 matrix", "Mono8", 8, 1, corrected<OrvRaw8ToY8_CC, 8>);
    list.addMosaicCall("Bayer12Packed", "2x2 matrix", "BGR24", 12, 3, corrected<OrvRaw12ToBGR_CC, 8>);
    list.addMosaicCall("Bayer12Packed", "2x2 matrix", "BGR48", 12, 6, corrected<OrvRaw12ToBGR16_CC, 16>);
    list.addMosaicCall("Bayer16 big-endian", "2x2 matrix", "BGR48", 16, 6, corrected<OrvRaw16ToBGR16_CC, 16>);
    list.addMosaicCall("Bayer16 big-endian", "2x2 matrix", "Mono16", 16, 2, corrected<OrvRaw16ToY16_CC, 16>);

    list.addFlips("Mono8", "Mono8", 1, 0);
    list.addFlips("Mono16", "Mono16", 2, 5);
    list.addFlips("RGB8", "RGB24", 3, 4);
    list.addFlips("RGB16", "RGB48", 6, 6);
    list.addInPlaceCall("Fields", "", "Mono8", 8, 1, ofSize(OrvInterlacedToProgressive), 2);
    list.rows.back().heightStep = 2;
    list.addStretched("Mono8", "Mono8", 1);
    list.addStretched("Mono16", "Mono16", 2);
    list.addStretched("RGB8", "RGB24", 3);
    list.addStretched("RGB16", "RGB48", 6);

    return std::move(list.rows);
}

} // namespace

std::string Conversion::name() const { return source + (method.empty() ? "" : " " + method) + " -> " + output; }

std::size_t Conversion::sourceSize(std::uint32_t width, std::uint32_t height) const {
    return (std::size_t{width} * height * sourceBits + 7) / 8;
}

std::size_t Conversion::destinationSize(std::uint32_t width, std::uint32_t height) const {
    return std::size_t{destinationWidth(width)} * (height / linesToOne) * destinationBytes;
}

std::uint32_t Conversion::destinationWidth(std::uint32_t width) const { return width * stretch[0] / stretch[1]; }

void useMatrix(const float (&coefficients)[9]) {
    Matrix& matrix = used();
    OrvDestroyColorCorrection(matrix.for8Bits);
    OrvDestroyColorCorrection(matrix.for16Bits);
    // Their memory stays, and in reach until the very end: the leak sanitizer looks after all destructors.
    static auto& former = *new std::vector<ColorCorrectionHandle>;
    former.insert(former.end(), {matrix.for8Bits, matrix.for16Bits});
    matrix = Matrix(coefficients);
}

const float* matrixInUse() { return used().option.Parameter.Matrix; }

const std::vector<Conversion>& conversions() {
    static const std::vector<Conversion> list = all();
    return list;
}

} // namespace catalogue
