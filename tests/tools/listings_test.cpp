// The commands that tell something, and the simulated camera.
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "frame/pixel_formats.h"
#include "pictures.h"
#include "program.h"

namespace {

class Listings : public ProgramTest {};

TEST_F(Listings, FormatsShowsWhatTheLibraryConverts) {
    const std::string list = succeed("formats").out;
    for (const kel::PixelFormat& format : kel::pixelFormats()) {
        char row[64];
        std::snprintf(row, sizeof row, "  %-20s 0x%08X ", std::string(format.name).c_str(), format.code);
        EXPECT_NE(list.find(row), std::string::npos) << row << " is missing";
    }
    for (const std::string row : {
             "Mono8                0x01080001   x  x  x  x  x  x  x  .  .  .  .  any size",
             "Mono12Packed         0x010C0006   x  x  x  x  x  x  .  .  .  .  .  an even number of pixels",
             "Mono16               0x01100007   x  x  x  x  x  x  .  x  x  .  .  any size",
             "BayerBG8             0x0108000B   x  x  x  x  x  x  x  x  x  .  .  an even width and height",
             "Rgb16                0x02300033   .  .  .  .  .  .  .  .  .  .  .  any size; in two steps, to all but 6",
             "x  x  x  x  x  x  x  x  x  .  .  every mosaic; the default",
             "BayerRG12Packed      0x010C002B   .  x  .  .  .  .  .  .  .  x  .  an even width and height",
             "lcaav   2x2, mean chroma of 4x2   x  x  x  x  x  x  .  x  x  .  .  BayerRG8 (mosaics in every phase)",
         })
        EXPECT_NE(list.find(row), std::string::npos) << row << "\nis not in\n" << list;
}

TEST_F(Listings, EveryListedFormatCanBeMade) {
    std::istringstream lines(succeed("formats").out);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(" 0x0") == std::string::npos) continue;
        std::string name;
        unsigned code = 0;
        std::istringstream(line) >> name >> std::hex >> code;
        const unsigned bitsPerPixel = code >> 16 & 0xFF;
        EXPECT_EQ(succeed("chart -s 16x8 - -f " + name).out.size(), 16 * 8 * bitsPerPixel / 8) << name;
    }
}

TEST_F(Listings, InfoAndVersionAgree) {
    const std::string version = succeed("--version").out; // "orvella 1.2.3.4"
    const std::string number = version.substr(version.find(' ') + 1);
    EXPECT_NE(succeed("info").out.find("library   " + number), std::string::npos);
    EXPECT_EQ(succeed("version").out, version);
}

TEST_F(Listings, AFullDiskIsNoticed) {
    EXPECT_EQ(std::system(ORVELLA_PROGRAM " formats >/dev/full 2>/dev/null"), 1 << 8);
}

TEST_F(Listings, EveryCommandExplainsItself) {
    for (const std::string command : {"", "convert", "formats", "info", "chart", "grab", "cameras", "guess"})
        EXPECT_NE(succeed(command + " --help").out.find("Usage: orvella " + command), std::string::npos) << command;
}

TEST_F(Listings, GrabTakesFramesOfTheSimulatedCamera) {
    if (succeed("info").out.find("built without Aravis") != std::string::npos) {
        EXPECT_EQ(run("grab frame.raw").code, 1);
        GTEST_SKIP() << "built without Aravis";
    }
    EXPECT_EQ(succeed("cameras").out.find("Fake_1 "), 0u) << "a real camera is there";
    const std::string grab = "grab -c Fake_1 -s 64x48 ";
    EXPECT_EQ(succeed(grab + "-f BayerRG8 frame.raw").out, "frame.raw: BayerRG8 at 64x48\n");
    EXPECT_EQ(std::filesystem::file_size(path("frame.raw")), 64u * 48);
    succeed(grab + "-f Mono16 -n 2 picture.png");
    succeed(grab + "-f BayerRG8 -n 2 --set GainRaw=1 made/");
    EXPECT_EQ(files(), (std::vector<std::string>{"frame.raw", "made/Fake_1-0001_BayerRG8_64x48.raw",
                                                 "made/Fake_1-0002_BayerRG8_64x48.raw", "picture-0001.png",
                                                 "picture-0002.png"}));
    const Picture picture = readPng(path("picture-0002.png"));
    EXPECT_EQ(picture.width, 64u);
    EXPECT_EQ(picture.bits, 16u);
    EXPECT_EQ(run(grab + "-f Mono8 -n 20 -").out.size(), 20u * 64 * 48);
    EXPECT_EQ(run(grab + "--set Nonsense=1 frame2.raw").code, 1);
    EXPECT_EQ(run("grab -c no-such-camera frame2.raw").code, 1);
    EXPECT_NE(run("grab out.jpeg").err.find("rename it"), std::string::npos);
}

} // namespace
