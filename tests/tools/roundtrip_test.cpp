// A chart goes through the program as a raw frame of every kind; where the chart is flat, the picture must equal it.
#include <algorithm>
#include <cstdlib>
#include <ostream>

#include "pictures.h"
#include "program.h"

namespace {

struct Trip {
    std::string frame; // format and, if need be, what else describes it
    std::string output;
    int tolerance;            // in steps of the output
    std::string options = ""; // of the conversion

    friend std::ostream& operator<<(std::ostream& stream, const Trip& trip) {
        return stream << trip.frame << " -> " << trip.output << " " << trip.options;
    }
};

constexpr unsigned width = 320, height = 240;

// The neighbours that a demosaic or a shared chroma sample may look at have one colour.
bool isFlat(const Picture& truth, unsigned x, unsigned y) {
    for (unsigned v = y > 1 ? y - 2 : 0; v <= std::min(y + 2, height - 1); ++v) {
        for (unsigned u = x > 3 ? x - 3 : 0; u <= std::min(x + 3, width - 1); ++u) {
            for (unsigned c = 0; c < truth.channels; ++c)
                if (truth.at(u, v, c) != truth.at(x, y, c)) return false;
        }
    }
    return true;
}

// What a pixel of the truth looks like with the picture's channels and bits.
int expected(const Picture& truth, const Picture& picture, unsigned x, unsigned y, unsigned channel) {
    const auto sample = [&](unsigned c) {
        const int value = truth.at(x, y, truth.channels == 1 ? 0 : c);
        return truth.bits == picture.bits ? value : picture.bits == 8 ? value >> 8 : value * 257;
    };
    if (channel == 3) return 255;
    if (picture.channels > 1) return sample(channel);
    return (77 * sample(0) + 150 * sample(1) + 29 * sample(2)) >> 8;
}

class RoundTrip : public ProgramTest, public ::testing::WithParamInterface<Trip> {};

TEST_P(RoundTrip, FlatColoursComeBack) {
    const Trip& trip = GetParam();
    const std::string frame = " -s 320x240 -f " + trip.frame;
    succeed("chart frame.raw --truth truth.png" + frame);
    succeed("convert frame.raw picture.png -t " + trip.output + " " + trip.options + frame);
    const Picture truth = readPng(path("truth.png")), picture = readPng(path("picture.png"));
    ASSERT_EQ(truth.width, width);
    ASSERT_EQ(truth.height, height);
    ASSERT_EQ(picture.width, width);
    ASSERT_EQ(picture.height, height);

    // Filtered chroma runs on from the end of a line into the next.
    const unsigned margin = trip.options.find("--debayer") == std::string::npos ? 0 : 4;
    unsigned flat = 0;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = margin; x < width - margin; ++x) {
            if (!isFlat(truth, x, y)) continue;
            ++flat;
            for (unsigned c = 0; c < picture.channels; ++c) {
                const int wanted = expected(truth, picture, x, y, c), got = picture.at(x, y, c);
                ASSERT_LE(std::abs(got - wanted), trip.tolerance)
                    << "x " << x << ", y " << y << ", channel " << c << ": " << got << " instead of " << wanted;
            }
        }
    }
    EXPECT_GT(flat, width * height / 2);
}

// Grey words of full depth tint by one step; chroma in bytes is off by up to two; a luma of bytes ends at 65280.
INSTANTIATE_TEST_SUITE_P(Grey, RoundTrip,
                         ::testing::Values(Trip{"Mono8", "Mono8", 0}, Trip{"Mono8", "RGBA32", 0},
                                           Trip{"Mono10", "Mono16", 63}, Trip{"Mono12", "Mono16", 15},
                                           Trip{"Mono14", "Mono8", 0}, Trip{"Mono16", "Mono16", 0},
                                           Trip{"Mono16", "RGB24", 1}, Trip{"Mono16 --big-endian", "Mono16", 0},
                                           Trip{"Mono16 --big-endian", "Mono8", 1},
                                           Trip{"Mono12 --msb-aligned --big-endian", "BGR48", 15},
                                           Trip{"Mono16 --bits-used 14", "Mono16", 3}, Trip{"Mono12Packed", "BGR24", 0},
                                           Trip{"Mono10p", "Mono16", 63}, Trip{"Mono12p", "Mono16", 15}));
INSTANTIATE_TEST_SUITE_P(Mosaics, RoundTrip,
                         ::testing::Values(Trip{"BayerRG8", "RGB24", 0}, Trip{"BayerGR8", "BGR24", 0},
                                           Trip{"BayerGB8", "RGBA32", 0}, Trip{"BayerBG8", "BGRA32", 0},
                                           Trip{"BayerRG8", "Mono8", 0}, Trip{"BayerRG8", "Mono16", 255}));
INSTANTIATE_TEST_SUITE_P(DebayerModes, RoundTrip,
                         ::testing::Values(Trip{"BayerRG8", "RGB24", 0, "--debayer 2x2"},
                                           Trip{"BayerRG8", "RGB24", 0, "--debayer 3x3"},
                                           Trip{"BayerGR8", "Mono8", 0, "--debayer 3x3"},
                                           Trip{"BayerGR8", "RGB24", 3, "--debayer lcaa"},
                                           Trip{"BayerGB8", "BGRA32", 3, "--debayer LCAAV"},
                                           Trip{"BayerBG8", "RGB24", 3, "--debayer yuv422"}));
INSTANTIATE_TEST_SUITE_P(Corrections, RoundTrip,
                         ::testing::Values(Trip{"BayerRG8", "RGB24", 0, "--matrix identity"},
                                           Trip{"BayerGR8", "BGR24", 0, "--matrix identity"},
                                           Trip{"BayerGB8", "RGB24", 0, "--matrix identity"},
                                           Trip{"BayerBG8", "Mono8", 0, "--matrix identity"},
                                           Trip{"BayerRG16", "BGR48", 0, "--matrix identity"},
                                           Trip{"BayerGR12", "BGR48", 15, "--matrix identity"},
                                           Trip{"BayerGB16 --big-endian", "BGR48", 0, "--matrix identity"},
                                           Trip{"BayerBG10 --msb-aligned", "BGR48", 63, "--matrix identity"},
                                           Trip{"BayerGR12Packed", "BGR48", 15, "--matrix identity"},
                                           Trip{"BayerGB12Packed", "BGR24", 0, "--matrix identity"},
                                           Trip{"Bgra8", "RGBA32", 0, "--matrix identity"}));
INSTANTIATE_TEST_SUITE_P(DeepMosaics, RoundTrip,
                         ::testing::Values(Trip{"BayerRG10", "RGB24", 0}, Trip{"BayerGR10 --msb-aligned", "BGR24", 0},
                                           Trip{"BayerGB12 --big-endian", "RGB24", 0}, Trip{"BayerBG12", "BGR48", 15},
                                           Trip{"BayerRG16", "RGB24", 0}, Trip{"BayerGR16 --big-endian", "RGBA32", 0},
                                           Trip{"BayerGB16 --bits-used 14", "BGR48", 3},
                                           Trip{"BayerBG12Packed", "RGB24", 0}, Trip{"BayerRG12Packed", "RGB24", 0},
                                           Trip{"BayerGR10p", "RGB24", 0}, Trip{"BayerGB10p", "Mono16", 64},
                                           Trip{"BayerBG12p", "RGB24", 0}, Trip{"BayerRG12p", "Mono8", 1},
                                           Trip{"BayerGB12p", "BGR48", 15}, Trip{"BayerGR12", "RGB48", 15}));
INSTANTIATE_TEST_SUITE_P(Colour, RoundTrip,
                         ::testing::Values(Trip{"Rgb8", "RGB24", 0}, Trip{"Bgr8", "RGBA32", 0},
                                           Trip{"Rgba8", "BGR24", 0}, Trip{"Bgra8", "BGRA32", 0},
                                           Trip{"Argb8", "Mono8", 0}, Trip{"Yuv411", "RGB24", 2},
                                           Trip{"Yuv422", "BGR24", 2}, Trip{"Yuv444", "RGBA32", 2},
                                           Trip{"YCbCr422_8_CbYCrY", "Mono8", 2}));
// Cells cannot see less than nothing: the most saturated colours fade.
INSTANTIATE_TEST_SUITE_P(ComplementaryColours, RoundTrip,
                         ::testing::Values(Trip{"Cygm8", "RGB24", 45}, Trip{"Cygm8", "Mono8", 20}));

} // namespace
