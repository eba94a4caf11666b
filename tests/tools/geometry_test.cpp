// Mirrored pictures and woven fields.
#include "pictures.h"
#include "program.h"

namespace {

class Geometry : public ProgramTest {};

void expectMirrored(const Picture& picture, const Picture& flipped, const std::string& how) {
    ASSERT_EQ(flipped.samples.size(), picture.samples.size());
    for (unsigned y = 0; y < picture.height; ++y) {
        for (unsigned x = 0; x < picture.width; ++x) {
            const unsigned toX = how == "v"     ? x
                                 : how == "90"  ? picture.height - 1 - y
                                 : how == "270" ? y
                                                : picture.width - 1 - x;
            const unsigned toY = how == "h"     ? y
                                 : how == "90"  ? x
                                 : how == "270" ? picture.width - 1 - x
                                                : picture.height - 1 - y;
            for (unsigned c = 0; c < picture.channels; ++c)
                ASSERT_EQ(flipped.at(toX, toY, c), picture.at(x, y, c)) << "x " << x << ", y " << y << ", " << c;
        }
    }
}

TEST_F(Geometry, PicturesOfEveryPixelSizeAreMirrored) {
    succeed("chart -f BayerGB16 -s 66x46 frame.raw"); // not symmetric
    for (const std::string output : {"Mono8", "RGB24", "Mono16_Rec709", "BGR48", "RGBA32"}) {
        const std::string convert = "convert -f BayerGB16 -s 66x46 frame.raw -t " + output;
        succeed(convert + " straight.png");
        for (const std::string how : {"h", "v", "90", "180", "270"}) {
            if (output == "RGBA32" && (how == "h" || how == "180")) continue;
            SCOPED_TRACE(output + " " + how);
            succeed(convert + " flipped.png --flip " + how);
            expectMirrored(readPng(path("straight.png")), readPng(path("flipped.png")), how);
        }
    }
}

TEST_F(Geometry, PreviewsAreMeansOfFourPixels) {
    succeed("chart -f BayerGB16 -s 66x46 frame.raw");
    for (const std::string output : {"Mono8", "RGBA32", "BGR48"}) {
        const std::string convert = "convert -f BayerGB16 -s 66x46 frame.raw -t " + output;
        succeed(convert + " whole.png");
        succeed(convert + " half.png --half");
        const Picture whole = readPng(path("whole.png")), half = readPng(path("half.png"));
        ASSERT_EQ(half.width, 33u);
        ASSERT_EQ(half.height, 23u);
        for (unsigned i = 0; i < 33 * 23 * half.channels; ++i) {
            const unsigned c = i % half.channels, x = i / half.channels % 33 * 2, y = i / half.channels / 33 * 2;
            const int sum =
                whole.at(x, y, c) + whole.at(x + 1, y, c) + whole.at(x, y + 1, c) + whole.at(x + 1, y + 1, c);
            ASSERT_EQ(half.samples[i], (sum + 2) / 4) << output << " " << i;
        }
    }
}

TEST_F(Geometry, EveryPlaneIsMirrored) {
    succeed("chart -f Yuv422 -s 66x46 frame.raw");
    succeed("convert -f Yuv422 -s 66x46 frame.raw -t planes-y straight.png");
    succeed("convert -f Yuv422 -s 66x46 frame.raw -t planes-y flipped.png --flip 180");
    for (const std::string plane : {"r", "g", "b", "y"})
        expectMirrored(readPng(path("straight." + plane + ".png")), readPng(path("flipped." + plane + ".png")), "180");
}

TEST_F(Geometry, FieldsAreWoven) {
    for (const std::string frame : {"-f Mono8 -s 63x46 ", "-f BayerGR12p -s 66x46 ", "-f Yuv411 -s 36x46 "}) {
        SCOPED_TRACE(frame);
        const std::string lines = succeed("chart - " + frame).out;
        const std::size_t length = lines.size() / 46;
        std::string fields;
        for (const std::size_t first : {1u, 0u}) {
            for (std::size_t y = first; y < 46; y += 2) fields += lines.substr(y * length, length);
        }
        EXPECT_EQ(succeed("convert --deinterlace - - " + frame, fields).out,
                  succeed("convert - - " + frame, lines).out);
    }
}

} // namespace
