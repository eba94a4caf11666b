#pragma once
#include <optional>
#include <string_view>
#include <vector>

namespace tool {

// Finite numbers with commas between them; nothing for any other text.
std::optional<std::vector<float>> parseNumbers(std::string_view list);

} // namespace tool
