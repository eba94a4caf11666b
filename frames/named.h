#pragma once
#include "frames/frame.h"

namespace frames {

// What a file's name, like "x_BayerRG12p_2448x2048", says.
struct Named {
    std::optional<PixelFormat> format;
    std::optional<Size> size;
};
Named named(std::string_view stem);

} // namespace frames
