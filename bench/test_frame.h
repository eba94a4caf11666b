// A smooth colourful frame in the format of a conversion's source: what contestants are checked with. Similar demosaics
// agree on it, and exchanged colours, bytes or bits do not go unnoticed.
#pragma once
#include <cstdint>
#include <vector>

#include "bench/size.h"
#include "catalogue/conversions.h"

namespace bench {

std::vector<std::uint8_t> testFrame(const catalogue::Conversion& conversion, Size size);

} // namespace bench
