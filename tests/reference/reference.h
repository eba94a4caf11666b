// A second implementation of every conversion, naive on purpose and written for the tests alone.
#pragma once
#include <cstdint>
#include <string>

#include "reference/outputs.h"

namespace reference {

struct Job {
    Byte* destination;
    Byte* source; // overwritten where the library does so
    std::size_t width, height;
    unsigned pattern; // Bayer: 0 RGGB, 1 GBRG, 2 GRBG, 3 BGGR
    Output output;

    std::size_t pixels() const { return width * height; }
};

using Conversion = void (*)(const Job&);

// By the catalogue's names; null if there is none.
Conversion find(const std::string& source, const std::string& method);
Output outputNamed(const std::string& name);

} // namespace reference
