// Frames as they come: with headers, names that say what they are, several in a file; and adjusted to look right.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <tiffio.h>
#include <tuple>

#include "pictures.h"
#include "program.h"

namespace {

class Inputs : public ProgramTest {
protected:
    std::string bytes(const std::string& arguments, const std::string& input = "") {
        return succeed("convert --raw " + arguments + " -", input).out;
    }
    std::string chart(const std::string& frame) { return succeed("chart - " + frame).out; }
};

TEST_F(Inputs, SayThemselvesWhatTheyHold) {
    succeed("chart -f BayerGB12p -s 64x48 x-BayerGB12p-64x48.raw");
    succeed("chart -f BayerGR16 --bits-used 14 -s 64x48 x_BayerGR14lsb_64x48.raw");
    succeed("chart -f YUV422_8_UYVY -s 64x48 64x48_YUV422_8_UYVY.bin");
    const std::string words = chart("-f BayerRG12 -s 64x48"), swapped = chart("-f BayerRG12 --big-endian -s 64x48");
    const std::string colours = chart("-f Rgba8 -s 64x48"), deep = chart("-f Rgb16 -s 64x48");
    writeFile(path("a.pgm"), "P5 # 12 bits\n64 48\n4095\n" + swapped);
    writeFile(path("a.pam"), "P7\nWIDTH 64\nHEIGHT 48\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n" + colours);
    const std::string header = "{'descr': '<u2', 'fortran_order': False, 'shape': (48, 64), }\n";
    writeFile(path("a.npy"),
              std::string("\x93NUMPY\x01\x00", 8) + static_cast<char>(header.size()) + '\0' + header + words);
    for (const std::string name : {"a.tif", "a.png"}) succeed("convert -f Mono12 -s 64x48 - " + name, words);
    succeed("convert -f Rgba8 -s 64x48 -t RGBA32 - colour.png", colours);

    for (const auto& [arguments, same] : std::map<std::string, std::string>{
             {"x-BayerGB12p-64x48.raw", "-f BayerGB12p -s 64x48 x-BayerGB12p-64x48.raw"},
             {"x_BayerGR14lsb_64x48.raw", "-f BayerGR16 --bits-used 14 -s 64x48 x_BayerGR14lsb_64x48.raw"},
             {"64x48_YUV422_8_UYVY.bin", "-f Yuv422 -s 64x48 64x48_YUV422_8_UYVY.bin"}})
        EXPECT_EQ(bytes(arguments), bytes(same)) << arguments;
    EXPECT_EQ(bytes("-f BayerRG12 a.pgm"), bytes("-f BayerRG12 -s 64x48 -", words));
    EXPECT_EQ(bytes("a.pgm"), bytes("-f Mono12 -s 64x48 -", words));
    EXPECT_EQ(bytes("a.pam"), bytes("-f Rgba8 -s 64x48 -", colours));
    EXPECT_EQ(bytes("-f BayerRG12 a.npy"), bytes("-f BayerRG12 -s 64x48 -", words));
    for (const std::string name : {"a.tif", "a.png"})
        EXPECT_EQ(bytes(name), bytes("-f Mono12 -s 64x48 -", words)) << name;
    for (const std::string name : {"deep.tif", "deep.png", "deep.ppm"}) {
        succeed("convert -f Rgb16 -s 64x48 - " + name, deep);
        EXPECT_EQ(bytes(name), deep) << name;
    }
    EXPECT_EQ(bytes("colour.png"), bytes("-f Rgba8 -s 64x48 -", colours));
    writeFile(path("bad.png"), "no PNG");
    EXPECT_EQ(run("convert bad.png a.pgm").code, 1);
}

TEST_F(Inputs, MayBePagesOfATiffFile) {
    TIFF* const tiff = TIFFOpen(path("pages.tif").c_str(), "w");
    for (const std::string row : {"\x01\x02", "\x03\x04", "\x05\x06"}) {
        for (const auto& [tag, value] : std::map<int, int>{{TIFFTAG_IMAGEWIDTH, 2},
                                                           {TIFFTAG_IMAGELENGTH, 1},
                                                           {TIFFTAG_BITSPERSAMPLE, 8},
                                                           {TIFFTAG_SAMPLESPERPIXEL, 1}})
            TIFFSetField(tiff, static_cast<unsigned>(tag), value);
        std::string content = row; // libtiff may change it
        TIFFWriteScanline(tiff, content.data(), 0, 0);
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
    EXPECT_EQ(bytes("--frame all pages.tif"), "\x01\x02\x03\x04\x05\x06");
    EXPECT_EQ(bytes("--frame 2 pages.tif"), "\x03\x04");
    EXPECT_EQ(bytes("--frame 2-3 pages.tif"), "\x03\x04\x05\x06");
    for (const std::string wrong : {"", "--frame 4 ", "--frame 2-4 "})
        EXPECT_EQ(run("convert " + wrong + "pages.tif out.pgm").code, 1) << wrong;
}

TEST_F(Inputs, MayBePaddedAndSeveralInAFile) {
    std::string frames[3], padded = "header", all;
    for (int i = 0; i < 3; ++i) {
        frames[i] = chart("-f BayerRG8 -s 64x48");
        std::rotate(frames[i].begin(), frames[i].begin() + std::ptrdiff_t{i} * 64 * 2, frames[i].end());
        for (std::size_t y = 0; y < 48; ++y) padded += frames[i].substr(64 * y, 64) + "pad";
        all += bytes("-f BayerRG8 -s 64x48 -", frames[i]);
    }
    writeFile(path("in.raw"), padded);
    const std::string layout = "-f BayerRG8 -s 64x48 --skip 6 --stride 67 ";
    EXPECT_EQ(bytes(layout + "--frame 2 in.raw"), bytes("-f BayerRG8 -s 64x48 -", frames[1]));
    EXPECT_EQ(bytes(layout + "--frame all -j 3 in.raw"), all);
    EXPECT_EQ(bytes(layout + "--frame all -", padded), all);
    EXPECT_EQ(bytes(layout + "--frame 1-2 in.raw"), all.substr(0, all.size() / 3 * 2));

    succeed("convert " + layout + "--frame 2-3 in.raw out.png");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.raw", "out-0002.png", "out-0003.png"}));
    const std::string video = succeed("convert " + layout + "--frame all -j 2 --type y4m --fps 30 in.raw -").out;
    EXPECT_EQ(video.find("YUV4MPEG2 W64 H48 F30:1 Ip A1:1 C444\nFRAME\n"), 0u);
    EXPECT_EQ(video.size(), 37 + 3 * (6 + 64 * 48 * 3u));
    EXPECT_EQ(run("convert " + layout + "--frame 4 in.raw out.png").code, 1);
    EXPECT_EQ(run("convert " + layout + "--frame all in.raw -").code, 2);
}

TEST_F(Inputs, BecomeVideoThatFfmpegReads) {
    const auto ffmpeg = [&](const std::string& arguments) {
        return std::system(("ffmpeg " + arguments + " >" + path("ffmpeg.txt").string() + " 2>&1").c_str()) == 0;
    };
    if (!ffmpeg("-version")) GTEST_SKIP() << "there is no ffmpeg";
    for (const auto& [format, layout, most] : {std::tuple{"BayerRG8", "rgb24", 2}, std::tuple{"Mono8", "gray", 0}}) {
        const std::string frame = std::string("-s 64x48 -f ") + format, in = chart(frame),
                          out = path("video.raw").string();
        succeed("convert --frame all " + frame + " - video.y4m", in + in);
        ASSERT_TRUE(ffmpeg("-i " + path("video.y4m").string() + " -f rawvideo -y -pix_fmt " + layout + " " + out));
        const std::string wanted = bytes("--frame all " + frame + " -", in + in), seen = readFile(out);
        ASSERT_EQ(seen.size(), wanted.size());
        for (std::size_t i = 0; i < seen.size(); ++i)
            ASSERT_NEAR(static_cast<unsigned char>(seen[i]), static_cast<unsigned char>(wanted[i]), most) << i;
    }
}

TEST_F(Inputs, MayBeADirectory) {
    succeed("chart -f BayerRG8 -s 64x48 x.raw");
    std::filesystem::create_directory(path("in"));
    for (const std::string name : {"in/b_Mono8_64x48.raw", "in/a_Mono8_64x48.raw", "in/notes.txt"})
        std::filesystem::copy_file(path("x.raw"), path(name));
    succeed("convert in --output-directory out -j 2 --type pgm");
    EXPECT_TRUE(std::filesystem::exists(path("out/a_Mono8_64x48.pgm")));
    EXPECT_EQ(files().size(), 6u);
}

// A soft scene with noise; colours differ.
unsigned sampleOfScene(unsigned x, unsigned y, unsigned channel) {
    static unsigned random = 1;
    random = random * 1664525 + 1013904223;
    const double light = 2048 + 900 * std::sin(x / 17. + channel) + 700 * std::cos(y / 13. + 2 * channel);
    return static_cast<unsigned>(light) + (random >> 27);
}

TEST_F(Inputs, AreGuessed) {
    std::map<std::string, std::string> frames;
    const auto append = [&](const std::string& name, std::initializer_list<unsigned> bytes) {
        for (const unsigned byte : bytes) frames[name] += static_cast<char>(byte & 0xFF);
    };
    for (unsigned y = 0; y < 234; ++y) {
        for (unsigned x = 0; x < 310; ++x) {
            const unsigned grey = sampleOfScene(x, y, 0),
                           mosaic = sampleOfScene(x, y, x % 2 == y % 2 ? 1 : 2 * (y % 2));
            append("Mono8", {grey >> 4});
            append("Mono12", {grey, grey >> 8});
            append("BayerGR12", {mosaic, mosaic >> 8});
            append("Bgr8", {grey >> 4, sampleOfScene(x, y, 1) >> 4, sampleOfScene(x, y, 2) >> 4});
            if (x % 2 == 0) continue;
            const unsigned before = sampleOfScene(x - 1, y, 0);
            append("Mono12p", {before, before >> 8 | grey << 4, grey >> 4});
            append("Mono12Packed", {before >> 4, (before & 15) | grey << 4, grey >> 4});
        }
    }
    for (const auto& [name, frame] : frames) {
        const std::string list = succeed("guess --sheet sheet.png -", frame).out, first = " -f " + name + " -s 310x234";
        EXPECT_LT(list.find(first), list.find("\n 2 ")) << name << "\n" << list;
        EXPECT_GT(readPng(path("sheet.png")).height, 260u);
    }
    const std::string& deep = frames["BayerGR12"];
    EXPECT_NE(succeed("guess -", deep + deep + deep).out.find("-s 310x234 --frame all   3 frames"), std::string::npos);
    std::string padded;
    for (std::size_t y = 0; y < 234; ++y) padded += deep.substr(620 * y, 620) + std::string(12, '\0');
    EXPECT_NE(succeed("guess -", padded).out.find("-s 310x234 --stride 632"), std::string::npos);
    EXPECT_EQ(run("guess -", std::string(1009, 'x')).code, 1);
}

// Small frames, and what becomes of them.
TEST_F(Inputs, AreAdjusted) {
    const std::string grey("\x0A\x14\x28\xFA", 4), rgb("\x10\x20\x30\x20\x40\x60", 6);
    struct {
        std::string arguments, frame, expected;
    } const rows[] = {
        {"-f Mono8 -s 4x1 --black 10 --exposure 2", grey, std::string("\x00\x14\x3C\xFF", 4)},
        {"-f Rgb12 -s 1x1 -t BGR24", std::string("\x12\x03\x34\x05\x56\x07", 6), "\x75\x53\x31"},
        {"-f Mono8 -s 4x1 --gamma 2", grey, std::string("\x32\x47\x65\xFC", 4)},
        {"-f Mono8 -s 4x1 --gamma srgb", grey, std::string("\x37\x50\x6E\xFD", 4)},
        {"-f Mono8 -s 4x1 --stretch 0,99", grey, std::string("\x00\x0A\x1F\xFF", 4)},
        {"-f Rgb8 -s 2x1 --white-balance 2,1,.5 --exposure 1.5", rgb, "\x30\x30\x24\x60\x60\x48"},
        {"-f Rgb8 -s 2x1 --white-balance auto -t BGR24", rgb, "\x30\x30\x30\x60\x60\x60"},
        {"-f Rgb8 -s 2x1 --matrix swap-red-blue --white-balance 1,1,2", rgb, "\x60\x20\x10\xC0\x40\x20"},
        {"-f Bgr8 -s 2x1 --exposure .5 -t RGB48", rgb, "\x18\x18\x10\x10\x08\x08\x30\x30\x20\x20\x10\x10"},
    };
    for (const auto& row : rows) {
        const std::string got = bytes(row.arguments + " -", row.frame);
        ASSERT_EQ(got.size(), row.expected.size()) << row.arguments;
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], row.expected[i], 1) << row.arguments << ", " << i;
    }
}

// Deep and packed mosaics take the ways that the library has for plain 8-bit ones; the flat patches tell.
TEST_F(Inputs, GoTwoStepsWhereTheLibraryHasOne) {
    const auto middleOfPatch = [](const Picture& picture) {
        return picture.at(picture.width * 9 / 16, 20, 0) >> (picture.bits - 8);
    };
    for (const std::string format : {"BayerRG10p", "BayerGR12p", "BayerGB12Packed", "BayerBG16"}) {
        succeed("chart -s 320x240 in.raw -f " + format);
        const std::string convert = "convert -s 320x240 in.raw out.png -f " + format;
        succeed(convert);
        const int plain = middleOfPatch(readPng(path("out.png")));
        succeed(convert + " --matrix identity");
        EXPECT_EQ(middleOfPatch(readPng(path("out.png"))), plain) << format;
        const Outcome outcome = run(convert + " --debayer 3x3");
        EXPECT_NE(outcome.err.find("are reduced to 8"), std::string::npos) << outcome.err;
        EXPECT_EQ(middleOfPatch(readPng(path("out.png"))), plain) << format;
        succeed(convert + " --auto");
    }
}

} // namespace
