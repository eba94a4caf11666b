// Exact comparisons that say where and by how much two buffers differ.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "support/fill.h"

namespace support {

// Rows of pixels; a pixel of one byte where pixels are packed.
struct Shape {
    std::size_t rowBytes, pixelBytes = 1;
};

[[nodiscard]] inline ::testing::AssertionResult same(std::span<const std::uint8_t> expected,
                                                     std::span<const std::uint8_t> actual, Shape shape) {
    if (expected.size() != actual.size())
        return ::testing::AssertionFailure() << actual.size() << " bytes, not " << expected.size();
    const auto [e, a] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (e == expected.end()) return ::testing::AssertionSuccess();

    const auto at = static_cast<std::size_t>(e - expected.begin());
    std::size_t wrong = 0;
    for (std::size_t i = at; i < expected.size(); ++i) wrong += expected[i] != actual[i];
    const std::size_t row = at / shape.rowBytes, inRow = at % shape.rowBytes;
    return ::testing::AssertionFailure() << "row " << row << ", column " << inRow / shape.pixelBytes << ", byte "
                                         << inRow % shape.pixelBytes << " is " << int{*a} << ", not " << int{*e}
                                         << " (byte " << at << "; " << wrong << " of " << expected.size()
                                         << " bytes differ; --gtest_random_seed=" << seed() << ")";
}

// A single row of bytes.
[[nodiscard]] inline ::testing::AssertionResult same(std::span<const std::uint8_t> expected,
                                                     std::span<const std::uint8_t> actual) {
    return same(expected, actual, {std::max<std::size_t>(1, expected.size())});
}

} // namespace support
