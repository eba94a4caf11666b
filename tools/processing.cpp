#include "processing.h"

#include <algorithm>

#include "errors.h"
#include "frames/names.h"
#include "numbers.h"

namespace tool {

using frames::sameName;

namespace {

constexpr DebayerMode debayerTable[] = {
    {"2x2", OrvDebayerMode2x2, "blocks of 2x2 samples"},
    {"3x3", OrvDebayerMode3x3, "bilinear"},
    {"lcaa", OrvDebayerModeLCAA, "2x2, mean chroma of 4x1"},
    {"lcaav", OrvDebayerModeLCAAV, "2x2, mean chroma of 4x2"},
    {"yuv422", OrvDebayerModeYuv422, "2x2, mean chroma of 2x1"},
};

struct NamedMatrix {
    std::string_view name;
    Matrix matrix;
};
constexpr float r = 77 / 256.f, g = 150 / 256.f, b = 29 / 256.f; // luma
constexpr NamedMatrix matrixTable[] = {
    {"identity", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    {"swap-red-blue", {0, 0, 1, 0, 1, 0, 1, 0, 0}},
    {"grey", {r, g, b, r, g, b, r, g, b}},
};

} // namespace

std::span<const DebayerMode> debayerModes() { return debayerTable; }

const DebayerMode& debayerModeNamed(const std::string& name) {
    for (const DebayerMode& mode : debayerTable) {
        if (sameName(mode.name, name)) return mode;
    }
    throw UsageError("unknown debayer mode '" + name + "'; known: 2x2, 3x3, lcaa, lcaav, yuv422");
}

Matrix parseMatrix(const std::string& text) {
    for (const NamedMatrix& named : matrixTable) {
        if (sameName(named.name, text)) return named.matrix;
    }
    Matrix matrix{};
    const auto list = parseNumbers(text);
    if (list && list->size() == matrix.size()) {
        std::copy(list->begin(), list->end(), matrix.begin());
        return matrix;
    }
    throw UsageError("'" + text +
                     "' is no matrix; give nine numbers, row by row, like 1.2,-0.1,-0.1,0,1,0,0,0,1.1; or "
                     "identity, swap-red-blue, grey");
}

std::string text(const Processing& processing) {
    if (processing.matrix) return "--matrix";
    return processing.debayer.code == OrvDebayerMode2x2 ? "" : "--debayer " + std::string(processing.debayer.name);
}

} // namespace tool
