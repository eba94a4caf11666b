#include "reference/reference.h"

#include <algorithm>
#include <stdexcept>

#include "reference/correction.h"
#include "reference/families.h"

namespace reference {

namespace {

struct Entry {
    const char* source;
    const char* method;
    Conversion convert;
};

constexpr Entry entries[] = {
    {"Mono8", "", mono8},
    {"Mono10", "", monoShifted<10, false>},
    {"Mono12", "", monoShifted<12, false>},
    {"Mono12 big-endian", "", monoShifted<12, true>},
    {"Mono14", "", monoShifted<14, false>},
    {"Mono16", "", mono16},
    {"Mono16 big-endian", "", mono16BigEndian},
    {"Mono12Packed", "", mono12Packed},
    {"Mono10p", "", mono10p},
    {"Mono12p", "", mono12p},

    {"RGB8", "", rgb8},
    {"BGR8", "", bgr8},
    {"RGBA8", "", rgba8},
    {"BGRA8", "", bgra8},
    {"YUV 4:1:1", "", yuv411},
    {"YUV 4:2:2", "", yuv422},
    {"YUV 4:4:4", "", yuv444},

    {"Bayer8", "2x2", bayer8},
    {"Bayer8", "3x3", bayer8By3x3},
    {"Bayer8", "LCAA", bayer8ByLcaa},
    {"Bayer8", "LCAAV", bayer8ByLcaav},
    {"Bayer8", "YUV422", bayer8ByYuv422},
    {"Bayer10", "2x2", bayer16<10, false>},
    {"Bayer12", "2x2", bayer16<12, false>},
    {"Bayer12 big-endian", "2x2", bayer16<12, true>},
    {"Bayer16", "2x2", bayer16<16, false>},
    {"Bayer16 big-endian", "2x2", bayer16FirstByte},
    {"Bayer12Packed", "2x2", bayer12Packed},
    {"Bayer10p", "2x2", bayer10p},
    {"Bayer12p", "2x2", bayer12p},

    {"Mono16 big-endian", "rounded", monoRounded<16, true>},
    {"Mono16", "rounded", monoRounded<16, false>},
    {"Mono12", "rounded", monoRounded<12, false>},
    {"Mono9 big-endian", "rounded", monoRounded<9, true>},
    {"Mono16 big-endian", "tinted", monoTinted<16, true>},
    {"Mono16", "tinted", monoTinted<16, false>},
    {"Mono12", "tinted", monoTinted<12, false>},
    {"Mono10 big-endian", "tinted", monoTinted<10, true>},
    {"Mono8", "one call", mono8},
    {"Mono12Packed", "whole", mono12PackedWhole},
    {"Mono12Packed", "one call", mono12Packed},

    {"RGB8", "matrix", withColourMatrix<rgb8Corrected>},
    {"BGR8", "matrix", withColourMatrix<bgr8Corrected>},
    {"RGBA8", "matrix", withColourMatrix<rgba8Corrected>},
    {"BGRA8", "matrix", withColourMatrix<bgra8Corrected>},
    {"Bayer8", "matrix", withColourMatrix<bayer8Corrected>},
    {"Bayer12", "matrix", withColourMatrix<bayer16Corrected<12, false>>},
    {"Bayer16", "matrix", withColourMatrix<bayer16Corrected<16, false>>},
    {"Bayer16 big-endian", "matrix", withColourMatrix<bayer16Corrected<16, true>>},
    {"Bayer12Packed", "matrix", withColourMatrix<bayer12PackedCorrected>},

    {"CYGM8", "", cygm8},
    {"CYGM8", "3x3", cygm8By3x3},
    {"CYGM8", "binned", cygm8Binned},

    {"RGB8", "double precision", rgb8ByDoublePrecision},
    {"RGB8", "planes", rgb8Planes},
    {"YUV 4:1:1", "planes", yuv411Planes},
    {"YUV 4:2:2", "planes", yuv422Planes},
    {"YUV 4:4:4", "planes", yuv444Planes},
    {"Bayer8", "2x2 grey", bayer8Grey},
    {"Bayer12Packed", "2x2 whole", bayer12PackedWhole},
    {"Bayer16 big-endian", "2x2 whole", bayer16Whole},
    {"Bayer8", "2x2 matrix", withColourMatrix<bayer8CorrectedByObject>},
    {"Bayer12Packed", "2x2 matrix", withColourMatrix<bayer12PackedCorrectedByObject>},
    {"Bayer16 big-endian", "2x2 matrix", withColourMatrix<bayer16CorrectedByObject>},

    {"Mono8", "flip horizontal", flipHorizontal},
    {"Mono8", "flip vertical", flipVertical},
    {"Mono8", "turn", turn},
    {"Mono16", "flip horizontal", flipHorizontal},
    {"Mono16", "flip vertical", flipVertical},
    {"Mono16", "turn", turn},
    {"RGB8", "flip horizontal", flipHorizontal},
    {"RGB8", "flip vertical", flipVertical},
    {"RGB8", "turn", turn},
    {"RGB16", "flip horizontal", flipHorizontal},
    {"RGB16", "flip vertical", flipVertical},
    {"RGB16", "turn", turn},
    {"Fields", "", weave},
    {"Mono8", "nearest", stretchNearest},
    {"Mono8", "linear", stretchLinear},
    {"Mono16", "nearest", stretchNearest},
    {"Mono16", "linear", stretchLinear},
    {"RGB8", "nearest", stretchNearest},
    {"RGB8", "linear", stretchLinear},
    {"RGB16", "nearest", stretchNearest},
    {"RGB16", "linear", stretchLinear},
};

constexpr const char* outputNames[] = {
    "Mono8",  "BGR24",         "BGRA32", "RGB24", "RGBA32", "Mono8 BT.709", "UYVY",
    "Mono16", "Mono16 BT.709", "BGR48",  "RGB48", "R G B",  "R G B Y",      "Mono16 big-endian"};

} // namespace

Conversion find(const std::string& source, const std::string& method) {
    for (const Entry& entry : entries)
        if (source == entry.source && method == entry.method) return entry.convert;
    return nullptr;
}

Output outputNamed(const std::string& name) {
    const auto found = std::ranges::find(outputNames, name);
    if (found == std::end(outputNames)) throw std::invalid_argument("no output " + name);
    return static_cast<Output>(found - std::begin(outputNames));
}

} // namespace reference
