// Files, streams and names of the converter.
#include <algorithm>
#include <array>
#include <csignal>
#include <map>
#include <set>
#include <sys/stat.h>

#include "pictures.h"
#include "program.h"

namespace {

class Convert : public ProgramTest {
protected:
    using Names = std::vector<std::string>;
    const std::string mosaic = "convert -f BayerRG8 -s 64x48 ";
    const std::string grey = "convert -f Mono12p -s 64x48 ";

    Convert() {
        succeed("chart -f BayerRG8 -s 64x48 mosaic.raw");
        succeed("chart -f Mono12p -s 64x48 grey.raw");
    }
};

TEST_F(Convert, EveryFileTypeHoldsTheSamePicture) {
    for (const std::string output : {"RGB24", "BGR24"}) {
        for (const std::string type : {"png", "ppm", "pnm", "tif", "TIFF"})
            succeed(mosaic + "-t " + output + " mosaic.raw " + output + "." + type);
    }
    const Picture colour = readPng(path("RGB24.png"));
    EXPECT_EQ(colour.channels, 3u);
    for (const std::string output : {"RGB24", "BGR24"}) {
        EXPECT_EQ(readPng(path(output + ".png")), colour);
        EXPECT_EQ(readPnm(path(output + ".ppm")), colour);
        EXPECT_EQ(readPnm(path(output + ".pnm")), colour);
        EXPECT_EQ(readTiff(path(output + ".tif")), colour);
        EXPECT_EQ(readTiff(path(output + ".TIFF")), colour);
    }

    for (const std::string type : {"png", "pgm", "tif"}) {
        succeed(grey + "grey.raw grey." + type);
        succeed(grey + "-t BGRA32 grey.raw alpha." + (type == "pgm" ? "tiff" : type));
    }
    const Picture deep = readPng(path("grey.png"));
    EXPECT_EQ(deep.channels, 1u);
    EXPECT_EQ(deep.bits, 16u);
    EXPECT_EQ(readPnm(path("grey.pgm")), deep);
    EXPECT_EQ(readTiff(path("grey.tif")), deep);
    EXPECT_EQ(readPng(path("alpha.png")).channels, 4u);
    EXPECT_EQ(readTiff(path("alpha.tif")), readPng(path("alpha.png")));
}

TEST_F(Convert, ChoosesTheOutputThatSuitsSourceAndFile) {
    struct {
        std::string arguments, file;
        unsigned channels, bits;
    } const rows[] = {{mosaic + "mosaic.raw ", "a.png", 3, 8},
                      {mosaic + "mosaic.raw ", "a.pgm", 1, 8},
                      {grey + "grey.raw ", "b.png", 1, 16},
                      {grey + "grey.raw ", "b.ppm", 3, 8}};
    for (const auto& row : rows) {
        succeed(row.arguments + row.file);
        const bool png = row.file.ends_with("png");
        const Picture picture = png ? readPng(path(row.file)) : readPnm(path(row.file));
        EXPECT_EQ(picture.channels, row.channels) << row.file;
        EXPECT_EQ(picture.bits, row.bits) << row.file;
    }
    // No 16-bit output exists for this one.
    succeed("chart -f Mono12Packed -s 64x48 packed.raw");
    succeed("convert -f Mono12Packed -s 64x48 packed.raw packed.png");
    EXPECT_EQ(readPng(path("packed.png")).bits, 8u);
}

TEST_F(Convert, RawFilesHoldTheBytesOfTheOutput) {
    succeed(mosaic + "--raw -t BGR24 mosaic.raw bytes");
    succeed(mosaic + "-t UYVY mosaic.raw pairs.raw");
    EXPECT_EQ(std::filesystem::file_size(path("pairs.raw")), 64u * 48 * 2);
    succeed(mosaic + "mosaic.raw picture.png");
    const std::string bytes = readFile(path("bytes"));
    const Picture picture = readPng(path("picture.png"));
    ASSERT_EQ(bytes.size(), picture.samples.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        ASSERT_EQ(static_cast<unsigned char>(bytes[i]), picture.samples[i / 3 * 3 + 2 - i % 3]) << i;
}

TEST_F(Convert, PlanesAreAFileForEachColour) {
    const Names letters{"r", "g", "b", "y"};
    for (const std::string format : {"Rgb8", "Yuv411", "Yuv422", "Yuv444", "Bgra8", "BayerGB12p"}) {
        SCOPED_TRACE(format);
        const std::string frame = " -s 64x48 -f " + format;
        succeed("chart frame.raw" + frame);
        succeed("convert frame.raw whole.ppm" + frame);
        succeed("convert -t planes-y frame.raw planes.pgm" + frame);
        const Picture whole = readPnm(path("whole.ppm"));
        std::array<Picture, 4> planes;
        for (unsigned i = 0; i < 4; ++i) {
            planes[i] = readPnm(path("planes." + letters[i] + ".pgm"));
            ASSERT_EQ(planes[i].samples.size(), 64u * 48);
        }
        // Luma rounds otherwise than the picture's, and planes of YUV otherwise than a picture of it.
        for (unsigned i = 0; i < 64 * 48; ++i) {
            const auto colour = [&](unsigned c) { return static_cast<double>(planes[c].samples[i]); };
            for (unsigned c = 0; c < 3; ++c) ASSERT_NEAR(colour(c), whole.samples[3 * i + c], 1) << i;
            if (format.starts_with("Yuv")) continue; // the source's own
            ASSERT_NEAR(colour(3), 0.299 * colour(0) + 0.587 * colour(1) + 0.114 * colour(2), 1) << i;
        }
    }
}

TEST_F(Convert, PlanesAreNamedAfterTheOutput) {
    succeed(mosaic + "-t planes --raw mosaic.raw bytes");
    succeed(mosaic + "-t PLANES mosaic.raw --output-directory made");
    EXPECT_EQ(files(), (Names{"bytes.b", "bytes.g", "bytes.r", "grey.raw", "made/mosaic.b.png", "made/mosaic.g.png",
                              "made/mosaic.r.png", "mosaic.raw"}));
    EXPECT_EQ(std::filesystem::file_size(path("bytes.g")), 64u * 48);
}

TEST_F(Convert, NamesIgnoreCaseAndPrefix) {
    succeed(mosaic + "mosaic.raw picture.png");
    for (const std::string format : {"bayerrg8", "PixelFormatBayerRG8", "orvpixelformatBAYERRG8", "0x01080009"}) {
        succeed("convert -s 64x48 -t rgb8 -f " + format + " mosaic.raw other.png");
        EXPECT_EQ(readFile(path("other.png")), readFile(path("picture.png"))) << format;
    }
    for (const auto& [format, same] : std::map<std::string, std::string>{{"YUV422_8_UYVY", "Yuv422"},
                                                                         {"UYVY", "Yuv422"},
                                                                         {"RGB8Packed", "Rgb8"},
                                                                         {"BayerRG14", "BayerRG16 --bits-used 14"}})
        EXPECT_EQ(succeed("chart -s 64x48 - -f " + format).out, succeed("chart -s 64x48 - -f " + same).out) << format;
}

TEST_F(Convert, AnInterruptionLeavesNoFilesBehind) {
    ASSERT_EQ(::mkfifo(path("planes.g.raw").c_str(), 0600), 0); // nobody reads it: the program waits
    for (const int signal : {SIGINT, SIGTERM})
        EXPECT_TRUE(interrupt(mosaic + "-t planes mosaic.raw planes.raw", signal));
    EXPECT_EQ(files(), (Names{"grey.raw", "mosaic.raw", "planes.g.raw"}));
}

TEST_F(Convert, EveryDebayerModeMakesAPictureOfItsOwn) {
    std::set<std::string> pictures;
    for (const std::string mode : {"2x2", "3x3", "lcaa", "lcaav", "yuv422"})
        pictures.insert(succeed(mosaic + "mosaic.raw - --debayer " + mode).out);
    EXPECT_EQ(pictures.size(), 5u);
    EXPECT_TRUE(pictures.contains(succeed(mosaic + "mosaic.raw -").out));
}

TEST_F(Convert, MatricesMixColours) {
    const auto bytes = [&](const std::string& options) {
        return succeed(mosaic + options + " --raw mosaic.raw -").out;
    };
    EXPECT_EQ(bytes("--matrix swap-red-blue -t RGB24"), bytes("-t BGR24"));
    EXPECT_EQ(bytes("--matrix 0,0,1,0,1e0,0,1.0,0,0 -t RGB24"), bytes("-t BGR24"));
    EXPECT_EQ(bytes("--matrix Identity --debayer 2x2"), bytes(""));
    EXPECT_EQ(bytes("--matrix -1,0,0,0,-0.5,0,0,0,-1"), std::string(64 * 48 * 3, '\0'));
    EXPECT_EQ(bytes("--matrix grey -t Mono8"), bytes("-t Mono8"));

    // Too much is white, also where the library's own sums would wrap around.
    writeFile(path("white.raw"), std::string(64 * 48 * 3 / 2, '\xFF'));
    EXPECT_EQ(succeed("convert -f BayerRG12Packed -s 64x48 -t BGR24 --matrix 9,0,0,0,9,0,0,0,9 --raw white.raw -").out,
              std::string(64 * 48 * 3, '\xFF'));
}

TEST_F(Convert, WarnsOfSamplesAboveTheirBits) {
    writeFile(path("words.raw"), std::string(64 * 48 * 2, '\x04')); // 0x404
    const Outcome outcome = run("convert -f BayerRG10 -s 64x48 words.raw picture.png");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.err.find("3072 samples are above the 1023 of 10 bits, up to 1028"), std::string::npos)
        << outcome.err;
    succeed("convert -f BayerRG10 --bits-used 12 -s 64x48 words.raw picture.png");
}

TEST_F(Convert, WithAMatrixDeepMosaicsBecomeDeepPictures) {
    for (const std::string format : {"BayerGB12", "BayerGB12Packed"}) {
        succeed("chart -s 64x48 deep.raw -f " + format);
        succeed("convert -s 64x48 deep.raw deep.png --matrix identity -f " + format);
        const Picture picture = readPng(path("deep.png"));
        EXPECT_EQ(picture.channels, 3u) << format;
        EXPECT_EQ(picture.bits, 16u) << format;
    }
    succeed("chart -s 64x48 deep.raw -f BayerGB12");
    succeed("convert -s 64x48 deep.raw deep.pgm --matrix identity -f BayerGB12");
    EXPECT_EQ(readPnm(path("deep.pgm")).bits, 16u);
}

TEST_F(Convert, StandardInputAndOutput) {
    succeed(mosaic + "mosaic.raw picture.png");
    const std::string frame = readFile(path("mosaic.raw"));
    EXPECT_EQ(succeed(mosaic + "- -", frame).out, readFile(path("picture.png")));
    succeed(mosaic + "mosaic.raw picture.ppm");
    EXPECT_EQ(succeed(mosaic + "- - --type ppm", frame).out, readFile(path("picture.ppm")));
    EXPECT_EQ(succeed("chart -f BayerRG8 -s 64x48 -").out, frame);
}

TEST_F(Convert, DevicesStayWhatTheyAre) {
    succeed(mosaic + "mosaic.raw /dev/null --type png");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(Convert, NamesAreInAnyLanguage) {
    succeed(mosaic + "mosaic.raw Größe.png");
    succeed("convert Größe.png 日本.tif");
    succeed("convert 日本.tif --output-directory été -t planes --type pgm");
    EXPECT_EQ(files(), (Names{"Größe.png", "grey.raw", "mosaic.raw", "été/日本.b.pgm", "été/日本.g.pgm",
                              "été/日本.r.pgm", "日本.tif"}));
}

TEST_F(Convert, ManyInputs) {
    succeed("chart -f BayerRG8 -s 64x48 second.raw");
    succeed(mosaic + "mosaic.raw second.raw --output-directory made/here");
    EXPECT_EQ(files(), (Names{"grey.raw", "made/here/mosaic.png", "made/here/second.png", "mosaic.raw", "second.raw"}));
    EXPECT_EQ(readPng(path("made/here/second.png")).width, 64u);
}

TEST_F(Convert, ABadInputDoesNotStopTheOthers) {
    writeFile(path("short.raw"), "too short");
    const Outcome outcome = run(mosaic + "short.raw missing.raw mosaic.raw --output-directory . --type tif");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "orvella: short.raw: expected 3072 bytes for BayerRG8 at 64x48, found 9\n"
                           "orvella: cannot open missing.raw: No such file or directory\n"
                           "orvella: 2 of 3 inputs were not converted\n");
    EXPECT_EQ(files(), (Names{"grey.raw", "mosaic.raw", "mosaic.tif", "short.raw"}));
}

TEST_F(Convert, ARefusedConversionIsReportedOnce) {
    writeFile(path("first.raw"), std::string(9, 'x'));
    writeFile(path("second.raw"), std::string(9, 'x'));
    const Outcome outcome = run("convert -f BayerRG8 -s 3x3 first.raw second.raw --output-directory .");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

TEST_F(Convert, ReplacesAFileThroughALinkAndKeepsItsMode) {
    writeFile(path("old.png"), "old");
    using std::filesystem::perms;
    std::filesystem::permissions(path("old.png"), perms::owner_read | perms::owner_write);
    std::filesystem::create_symlink("old.png", path("link.png"));
    succeed(mosaic + "mosaic.raw link.png");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.png")));
    EXPECT_EQ(readPng(path("old.png")).width, 64u);
    EXPECT_EQ(std::filesystem::status(path("old.png")).permissions(), perms::owner_read | perms::owner_write);
}

} // namespace
