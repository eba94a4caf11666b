// Every conversion the library offers, as one list: what the tests check, the benchmarks time and the documentation
// shows.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "orvella/orv.h"

namespace catalogue {

struct Conversion {
    std::string source; // "Mono12p", "Mono16 big-endian", "Bayer8", ...
    std::string method; // "2x2", "3x3", ...; empty where there is only one
    std::string output; // "BGR24", ..., as in definition/outputs.h

    OrvPixelFormatType format = 0; // that OrvImageTransform is given, of a mosaic the one of pattern 0; 0: other calls

    unsigned sourceBits;       // per pixel
    unsigned destinationBytes; // per pixel
    unsigned widthStep = 1;    // widths are multiples of this
    unsigned heightStep = 1;
    unsigned smallest = 1;         // width and height
    unsigned patterns = 1;         // mosaics: 4, called with Bayer patterns 0 to 3
    unsigned beyond = 0;           // bytes behind the source that are read as well
    bool keepsFourthByte = false;  // of each destination pixel
    bool overwritesSource = false; // uses the source as scratch
    bool inPlace = false;          // destination and source may be the same
    bool onlyInPlace = false;      // they must be
    unsigned stretch[2] = {1, 1};  // lines become stretch[0] / stretch[1] times as long
    unsigned linesToOne = 1;       // of the source, for each of the destination

    // 0 on success. `pattern` counts for mosaics only.
    std::function<OrvErrorType(void* destination, void* source, std::uint32_t width, std::uint32_t height,
                               std::uint32_t pattern)>
        convert;

    std::string name() const;                                                // "Bayer8 2x2 -> BGR24"
    std::size_t sourceSize(std::uint32_t width, std::uint32_t height) const; // bytes, without those beyond
    std::size_t destinationSize(std::uint32_t width, std::uint32_t height) const;
    std::uint32_t destinationWidth(std::uint32_t width) const; // pixels
};

const std::vector<Conversion>& conversions();

// From now on the "matrix" rows apply this one in place of catalogue/colour_matrix.h. Not while conversions run.
void useMatrix(const float (&coefficients)[9]);
const float* matrixInUse();

} // namespace catalogue
