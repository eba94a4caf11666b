// Comparing the names that a user types.
#pragma once
#include <span>
#include <string>
#include <string_view>

namespace frames {

// Whatever the case of the letters.
bool sameName(std::string_view a, std::string_view b);

// "did you mean BayerRG8, BayerBG8? " or nothing.
std::string suggestion(std::string_view name, std::span<const std::string_view> known);

} // namespace frames
