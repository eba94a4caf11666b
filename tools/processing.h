// What a conversion does on its way, besides changing the format.
#pragma once
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "orvella/orv.h"

namespace tool {

// How a mosaic becomes colour.
struct DebayerMode {
    std::string_view name;
    OrvDebayerMode code;
    std::string_view description;
};

std::span<const DebayerMode> debayerModes(); // by their code; the first is the default

// Throws UsageError.
const DebayerMode& debayerModeNamed(const std::string& name);

using Matrix = std::array<float, 9>; // row by row: R', G', B' from R, G, B

// Nine numbers with commas between them, or a name like "identity". Throws UsageError.
Matrix parseMatrix(const std::string& text);

struct Processing {
    DebayerMode debayer = debayerModes().front(); // a matrix needs this default
    std::optional<Matrix> matrix{};
};

// "--debayer 3x3", "--matrix", or nothing for what happens without options.
std::string text(const Processing& processing);

} // namespace tool
