// Conversions with a 3x3 matrix of nine floats.
#pragma once
#include <cstdint>

#include "catalogue/colour_matrix.h"
#include "reference/reference.h"

namespace reference {

// A coefficient in steps of 1/1024.
std::int64_t fixedPoint(float coefficient);

void rgb8Corrected(const Job& job, const float* matrix);
void bgr8Corrected(const Job& job, const float* matrix);
void rgba8Corrected(const Job& job, const float* matrix);
void bgra8Corrected(const Job& job, const float* matrix);
void bayer8Corrected(const Job& job, const float* matrix);
template <int bitsUsed, bool isBigEndian> void bayer16Corrected(const Job& job, const float* matrix);
void bayer12PackedCorrected(const Job& job, const float* matrix);

// By the one-call converters.
void bayer8CorrectedByObject(const Job& job, const float* matrix);
void bayer12PackedCorrectedByObject(const Job& job, const float* matrix);
void bayer16CorrectedByObject(const Job& job, const float* matrix); // big-endian

template <auto convert> void withColourMatrix(const Job& job) { convert(job, catalogue::colourMatrix); }

} // namespace reference
