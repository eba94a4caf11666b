// Whether two ways to do a conversion come to the same, more or less.
#pragma once
#include <cstdint>
#include <span>

#include "bench/peers/peers.h"
#include "catalogue/conversions.h"

namespace bench {

// How far results may usually differ, in steps of 1/256 of the whole range.
constexpr double tolerance(Likeness likeness) { return likeness == Likeness::same ? 2 : 16; }

// Nine tenths of the samples differ by no more than this. (Borders and single pixels may well differ by more.)
double usualDifference(const catalogue::Conversion& conversion, std::span<const std::uint8_t> a,
                       std::span<const std::uint8_t> b);

} // namespace bench
