// Every conversion of the library as plain loops: what each output byte is, for those who want to know or to port it.
//
// The tests compare the library with these functions at every instruction-set level, and the benchmark times them as the
// plain loop that it is measured against. Nothing here depends on the library.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace definition {

// A call. Images are dense, buffers as large as their formats say, and `matrix` is there where the method has one.
struct Job {
    std::uint8_t* destination;
    std::uint8_t* source; // the filtered demosaics leave their intermediate image here; flips have one buffer only
    std::size_t width, height;
    unsigned pattern = 0;          // of a mosaic, by its upper left samples: 0 RG/GB, 1 GB/RG, 2 GR/BG, 3 BG/GR
    const float* matrix = nullptr; // 3x3, row by row

    std::size_t pixels() const { return width * height; }
};

using Function = void (*)(const Job&);

struct Conversion {
    std::string name; // "Bayer8 3x3 -> BGR24"
    Function convert;
};

const std::vector<Conversion>& conversions();
Function find(const std::string& name); // null if there is none

// Lines stretched or shrunk by any ratio, with pitches: what the conversions "nearest" and "linear" do by 3 / 2.
struct Resampling {
    std::int64_t destinationLength, destinationPitch, sourceLength, sourcePitch, lines; // in pixels
    std::int64_t bytesPerPixel;
    bool linear;
    float a, b; // output pixel i lies at i * a / b of the source
};
void resample(std::uint8_t* destination, const std::uint8_t* source, const Resampling& how);
std::int64_t nearestPixel(std::int64_t i, const Resampling& how); // the source pixel that output pixel i is closest to

// A matrix coefficient in steps of 1/1024.
std::int32_t fixedPoint(float coefficient);

} // namespace definition
