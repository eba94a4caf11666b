#include "processing.h"

#include "errors.h"
#include "names.h"

namespace tool {

namespace {

constexpr DebayerMode debayerTable[] = {
    {"2x2", OrvDebayerMode2x2, "blocks of 2x2 samples"},
    {"3x3", OrvDebayerMode3x3, "bilinear"},
    {"lcaa", OrvDebayerModeLCAA, "2x2, mean chroma of 4x1"},
    {"lcaav", OrvDebayerModeLCAAV, "2x2, mean chroma of 4x2"},
    {"yuv422", OrvDebayerModeYuv422, "2x2, mean chroma of 2x1"},
};

} // namespace

std::span<const DebayerMode> debayerModes() { return debayerTable; }

const DebayerMode& debayerModeNamed(const std::string& name) {
    for (const DebayerMode& mode : debayerTable) {
        if (sameName(mode.name, name)) return mode;
    }
    throw UsageError("unknown debayer mode '" + name + "'; known: 2x2, 3x3, lcaa, lcaav, yuv422");
}

std::string text(const Processing& processing) {
    return processing.debayer.code == OrvDebayerMode2x2 ? "" : "--debayer " + std::string(processing.debayer.name);
}

} // namespace tool
