// Developing: from the linear samples of a sensor, 0 to 65535, to a picture that looks right on a display.
//
// The order of the steps: black level, white balance, colour matrix, exposure, stretch, gamma. Each is neutral unless it
// is set. Results are rounded once, at the end, and clamped to 0 to 65535.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace picture {

// Row by row: R', G', B' from R, G, B.
using Matrix = std::array<float, 9>;

struct Curve {
    enum Kind { none, power, srgb } kind = none;
    float gamma = 1; // of power: the output is the input to the power of 1 / gamma
};

struct Settings {
    float black = 0;                            // taken off every sample
    std::array<float, 3> whiteBalance{1, 1, 1}; // factors of red, green and blue
    Matrix matrix{1, 0, 0, 0, 1, 0, 0, 0, 1};
    float exposure = 1;           // a factor
    float low = 0, high = 0xFFFF; // these become black and white
    Curve curve;
};

// `channels` is 1 (grey: white balance and matrix do not count) or 3 (red, green, blue). `samples` are whole pixels.
using Samples = std::span<std::uint16_t>;
using ConstSamples = std::span<const std::uint16_t>;

void develop(Samples samples, unsigned channels, const Settings& settings);

// The same with 8 bits, the high ones: R G B and 255 of every pixel.
void developForDisplay(ConstSamples samples, unsigned channels, const Settings& settings, std::uint8_t* rgba);

// Those that stand for all in what follows, which need not be every one of a large picture.
std::vector<std::uint16_t> somePixels(ConstSamples samples, unsigned channels);

// The sample below which lies such a part of them, 0 to 1.
float percentile(ConstSamples samples, double part);

// The level of darkness: nearly the smallest sample there is.
float measureBlack(ConstSamples samples);

// Makes grey what seems to be meant as grey: factors of at least 1, for three channels.
std::array<float, 3> measureWhiteBalance(ConstSamples samples, float black);

// Where the picture begins and ends after the settings' steps up to the exposure: the samples below which lie the
// parts `low` and `high`, 0 to 1. Sets settings.low and settings.high.
void measureStretch(ConstSamples samples, unsigned channels, double low, double high, Settings& settings);

} // namespace picture
