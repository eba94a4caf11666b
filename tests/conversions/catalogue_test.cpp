// The catalogue against the library: what OrvImageTransform converts is listed, and nothing else.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "catalogue/colour_matrix.h"
#include "catalogue/conversions.h"
#include "definition/outputs.h"
#include "frame/pixel_formats.h"

namespace {

constexpr std::uint32_t side = 12;

OrvImage imageOf(OrvPixelFormatType format, void* data) {
    OrvImage image{sizeof image, data, {}};
    EXPECT_EQ(OrvSetImageInfoFromPixelFormat(format, side, side, &image), OrvErrorSuccess);
    return image;
}

// Whether the formats describe the same pixels, of any Bayer pattern: some formats have two names.
bool alike(OrvPixelFormatType a, OrvPixelFormatType b) {
    OrvPixelInfo x = imageOf(a, nullptr).ImageInfo.PixelInfo, y = imageOf(b, nullptr).ImageInfo.PixelInfo;
    x.BayerPattern = y.BayerPattern = 0;
    return std::memcmp(&x, &y, sizeof x) == 0;
}

bool isListed(OrvPixelFormatType format, std::uint32_t output, const std::string& method) {
    const auto& all = catalogue::conversions();
    return std::any_of(all.begin(), all.end(), [&](const catalogue::Conversion& conversion) {
        return conversion.format && alike(conversion.format, format) && conversion.method == method &&
               conversion.output == definition::outputs[output].name;
    });
}

bool isConverted(OrvPixelFormatType format, std::uint32_t output, const OrvTransformInfo& option) {
    static std::array<std::uint8_t, std::size_t{side} * side * 6 + 1> from, to;
    const OrvImage source = imageOf(format, from.data());
    OrvImage destination{sizeof destination, to.data(), {}};
    EXPECT_EQ(OrvSetImageInfoOutput(output, side, side, &destination), OrvErrorSuccess);
    return OrvImageTransform(&source, &destination, &option, 1) == OrvErrorSuccess;
}

void expectListedIfConverted(const kel::PixelFormat& format, const std::string& method,
                             const OrvTransformInfo& option) {
    for (std::uint32_t output = 0; output < std::size(definition::outputs); ++output)
        EXPECT_EQ(isListed(format.code, output, method), isConverted(format.code, output, option))
            << format.name << " to output " << output << " by " << method;
}

TEST(Catalogue, ListsEveryTransform) {
    constexpr const char* debayerModes[] = {"2x2", "3x3", "LCAA", "LCAAV", "YUV422"};
    OrvTransformInfo none{}, matrix{};
    OrvSetColorCorrectionMatrix3x3(catalogue::colourMatrix, &matrix);
    for (const kel::PixelFormat& format : kel::pixelFormats()) {
        expectListedIfConverted(format, format.pattern == OrvBayerPatternNone ? "" : "2x2", none);
        expectListedIfConverted(format, "matrix", matrix);
        if (format.layout != OrvPixelLayoutRaw || format.bitsUsed != 8) continue;
        for (const OrvDebayerMode mode : {1U, 2U, 3U, 4U}) {
            OrvTransformInfo debayer{};
            OrvSetDebayerMode(mode, &debayer);
            expectListedIfConverted(format, debayerModes[mode], debayer);
        }
    }
}

} // namespace
