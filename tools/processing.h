// What a conversion does on its way, besides changing the format.
#pragma once
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

struct Processing {
    DebayerMode debayer = debayerModes().front();
};

// "--debayer 3x3", or nothing for what happens without options.
std::string text(const Processing& processing);

} // namespace tool
