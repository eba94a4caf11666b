// What frames can become, by name.
#pragma once
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "frames/frame.h"
#include "orvella/orv.h"

namespace tool {

using namespace frames; // the program speaks of them everywhere

struct Output {
    std::array<std::string_view, 3> names; // the first is shown, all are understood; unused ones are empty
    OrvOutputCode code;                    // of planes, of each one
    std::string_view description;
    std::string_view planes = ""; // a picture for each of these letters; for none, a single picture
};

// No channels: U Y V Y, of which no picture is made.
struct Shape {
    unsigned channels, bits; // of a pixel, of a channel
};
Shape shapeOf(const Output& output);

std::span<const Output> outputs();      // 11, by their code
std::span<const Output> planeOutputs(); // 2

// Whatever the case of the letters. Throws UsageError for an unknown name; the message suggests similar ones.
const Output& outputNamed(std::string_view name);

} // namespace tool
