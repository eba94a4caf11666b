// A call of OrvImageTransform with a matrix.
#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "orvella/orv.h"

namespace correction {

using Matrix = std::array<float, 9>;
constexpr Matrix identity{1, 0, 0, 0, 1, 0, 0, 0, 1};

inline OrvTransformInfo option(const Matrix& matrix) {
    OrvTransformInfo info{};
    OrvSetColorCorrectionMatrix3x3(matrix.data(), &info);
    return info;
}

struct Call {
    OrvImage source{}, destination{};

    Call(OrvPixelFormatType format, std::uint32_t width, std::uint32_t height, OrvOutputCode output) {
        source.Size = destination.Size = sizeof(OrvImage);
        OrvSetImageInfoFromPixelFormat(format, width, height, &source);
        OrvSetImageInfoOutput(output, width, height, &destination);
    }

    OrvErrorType run(std::span<std::uint8_t> to, std::span<const std::uint8_t> from,
                     std::span<const OrvTransformInfo> options) {
        source.Data = const_cast<std::uint8_t*>(from.data());
        destination.Data = to.data();
        return OrvImageTransform(&source, &destination, options.data(), static_cast<std::uint32_t>(options.size()));
    }
    OrvErrorType run(std::span<std::uint8_t> to, std::span<const std::uint8_t> from, const Matrix& matrix) {
        const OrvTransformInfo options[] = {option(matrix)};
        return run(to, from, options);
    }
};

} // namespace correction
