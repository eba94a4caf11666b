// How often samples occur.
#pragma once
#include <span>

#include "json.h"
#include "linear.h"

namespace web {

// Of what the camera gave, for each colour, with the least, the mean and the greatest: a JSON list of {name, least,
// mean, most, counts}, 256 counts over all values that samples can have.
std::string sensorHistograms(const tool::FrameFormat& frame, std::span<const std::uint8_t> bytes);

// Of a picture's R G B A, likewise; of a grey one (one channel), only once.
std::string pictureHistograms(std::span<const std::uint8_t> rgba, unsigned channels);

} // namespace web
