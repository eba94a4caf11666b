// What goes wrong: one line that says what was expected, the exit code, and no file left behind.
#include <algorithm>
#include <csignal>
#include <sys/resource.h>

#include "program.h"

namespace {

struct Failure {
    std::string arguments;
    int code;
    std::vector<std::string> says;
};

class Errors : public ProgramTest {
protected:
    void expectEach(const std::vector<Failure>& failures, const std::string& input = "") {
        for (const Failure& failure : failures) {
            SCOPED_TRACE(failure.arguments);
            const auto before = files();
            const Outcome outcome = run(failure.arguments, input);
            EXPECT_EQ(outcome.code, failure.code);
            EXPECT_EQ(outcome.out, "");
            EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
            for (const std::string& part : failure.says)
                EXPECT_NE(outcome.err.find(part), std::string::npos) << "no '" << part << "' in: " << outcome.err;
            EXPECT_EQ(files(), before);
        }
    }
};

TEST_F(Errors, WrongFiles) {
    writeFile(path("short.raw"), std::string(99, 'x'));
    writeFile(path("long.raw"), std::string(6001, 'x'));
    writeFile(path("right.raw"), std::string(100, 'x'));
    writeFile(path("huge.pgm"), "P5 2147483648 1073741824 255\n"); // its bits are 2^64
    writeFile(path("cut.npy"), std::string("\x93NUMPY\1\0\x20\0{'shape': (4, 4), 'descr':  ", 37));
    std::filesystem::create_directory(path("folder"));
    std::filesystem::create_directory(path("folder.png"));
    std::filesystem::create_directory(path("planes.b.png"));
    const std::string convert = "convert -f Mono8 -s 10x10 ";
    expectEach({
        {convert + "short.raw out.png", 1, {"short.raw", "expected 100 bytes for Mono8 at 10x10, found 99"}},
        {"convert -f BayerRG12p -s 64x48 long.raw out.png",
         1,
         {"expected 4608 bytes for BayerRG12p", "found 6001; that fits a header of 1393"}},
        {"convert -f Mono10p -s 3x1 short.raw out.png", 1, {"expected 4 bytes"}},
        {"convert -f Mono16 -s 1000000x1000000 short.raw out.png", 1, {"expected 2000000000000 bytes", "found 99"}},
        {"convert huge.pgm out.png", 1, {"huge.pgm", "2147483648x1073741824", "no camera's frame"}},
        {"convert cut.npy out.png", 1, {"no .npy file"}},
        {convert + "/dev/zero out.png", 1, {"expected 100 bytes", "found more"}},
        {convert + "none.raw out.png", 1, {"none.raw", "No such file"}},
        {"convert none.raw out.png", 1, {"none.raw", "No such file"}},
        {convert + "folder out.png", 2, {"folder", "--output-directory"}},
        {"convert -f Mono8 -s 25x2 right.raw out.png", 1, {"2 such frames", "16 bits", "25x4", "50x2"}},
        {convert + "right.raw none/out.png", 1, {"none/out.png", "No such file"}},
        {convert + "right.raw folder.png", 2, {"folder.png", "is a directory"}},
        {convert + "right.raw -t planes planes.png", 1, {"planes.b.png", "Is a directory"}}, // and no planes.r.png
        {convert + "right.raw --output-directory short.raw", 1, {"short.raw"}},
    });
    expectEach({{convert + "- out.png", 1, {"standard input", "expected 100 bytes", "found 5"}}}, "five!");
}

TEST_F(Errors, WrongNames) {
    writeFile(path("in.raw"), "");
    const std::string files = " -s 8x8 in.raw out.png";
    expectEach({
        {"convert -f BayerRX8" + files, 2, {"'BayerRX8'", "did you mean BayerRG8", "orvella formats"}},
        {"convert -f Nonsense" + files, 2, {"'Nonsense'", "orvella formats"}},
        {"convert -f Mono8 -t plane" + files, 2, {"did you mean planes?"}},
        {"convert -f Mono8 -t RGB25" + files, 2, {"'RGB25'", "did you mean", "RGB24"}},
        {"chart -f Bayer8 -s 8x8 out.raw", 2, {"BayerRG8, BayerGR8, BayerGB8, BayerBG8"}},
        {"chart -f YUV422_8 -s 8x8 out.raw", 2, {"Yuv422 (U Y V Y)"}}, // it is Y U Y V
        {"chart -f 0x02100032 -s 8x8 out.raw", 2, {"unknown"}},
        {"chart -f BayerRG10Packed -s 8x8 out.raw", 2, {"neither 10p nor 12Packed"}},
    });
}

TEST_F(Errors, Refusals) {
    writeFile(path("12x3.raw"), std::string(36, 'x'));
    writeFile(path("3x3p.raw"), std::string(14, 'x'));
    writeFile(path("6x6.raw"), std::string(54, 'x'));
    writeFile(path("12p.raw"), std::string(24, 'x'));
    writeFile(path("words.raw"), std::string(32, 'x'));
    expectEach({
        {"convert -f BayerRG8 -s 12x3 12x3.raw out.png", 1, {"(-7)", "an even width and height"}},
        {"convert -f Mono12p -s 3x3 3x3p.raw out.png", 1, {"(-7)", "even number of pixels"}},
        {"convert -f Mono8 -s 12x3 -t RGB48 12x3.raw out.png", 1, {"offered are Mono8", "(-17)"}},
        {"convert -f Mono16 --bits-used 11 -s 4x4 words.raw out.png", 1, {"(-1)", "10, 12, 13, 14, 15, 16"}},
        {"convert -f BayerRG8 -s 18x2 --debayer 3x3 12x3.raw out.png", 1, {"--debayer 3x3", "(-7)", "at least 4"}},
        {"convert -f BayerRG8 -s 6x6 --debayer lcaa --raw -t UYVY 12x3.raw out", 1, {"(-17)", "Mono8, BGR24, BGRA32"}},
        {"convert -f Yuv411 -s 6x6 -t planes 6x6.raw out.png", 1, {"to planes", "(-7)", "multiple of 4"}},
        {"convert -f Rgb16 -s 2x2 -t YUV422 --raw 12p.raw out", 2, {"nor of deep mosaics or colours"}},
        {"convert -f BayerRG8 -s 12x3 --raw -t YUV422 --matrix grey 12x3.raw out.png",
         1,
         {"(-7)", "Mono8, BGR24, RGB24, M"}},
        {"convert -f BayerGR16 -s 4x4 --raw -t YUV422 --matrix grey words.raw out.png",
         1,
         {"(-7)", "Mono16_Rec709, BGR48"}},
        {"convert -f Mono12p -s 4x4 --matrix grey 12p.raw out.png", 1, {"--matrix is offered for BayerRG8,", "Rgb8"}},
        {"convert -f BayerGR12Packed -s 1x16 --matrix grey 12p.raw out.png", 1, {"(-7)", "an even width"}},
        {"convert -f Mono8 -s 36x1 --flip h 12x3.raw out.png", 1, {"36x1", "(-7)", "at least 2 lines"}},
        {"convert -f Mono8 -s 12x3 --deinterlace 12x3.raw out.png", 1, {"12x3", "(-7)", "an even height"}},
        {"convert -f Mono12p -s 1x16 --deinterlace 12p.raw out.png", 1, {"1x16", "whole bytes"}},
        {"chart -f Yuv411 -s 6x6 out.raw", 1, {"Yuv411 at 6x6", "multiple of 4"}},
    });
}

TEST_F(Errors, Usage) {
    const std::string content(64, 'x');
    writeFile(path("in.raw"), content);
    writeFile(path("in.g.raw"), content);
    const std::string convert = "convert -f Mono8 -s 8x8 ";
    expectEach({
        {"", 2, {"--help"}},
        {"transform", 2, {"'transform'", "--help"}},
        {"conver in.raw out.png", 2, {"'conver'", "did you mean convert?"}},
        {"in.raw out.png", 2, {"orvella convert in.raw"}},
        {convert + "in.raw .", 2, {"'.' is a directory", "--output-directory"}},
        {"convert in.raw out.png", 2, {"--format", "--size", "x_BayerRG12p_2448x2048.raw"}},
        {"convert -f Mono8 -s 8 in.raw out.png", 2, {"'8'", "2448x2048"}},
        {"convert -f Mono8 -s 0x8 in.raw out.png", 2, {"'0x8'"}},
        {"convert -f Mono8 -s 8x8x in.raw out.png", 2, {"'8x8x'"}},
        {convert + "in.raw", 2, {"--output-directory"}},
        {convert + "in.raw out.png third.png", 2, {"--output-directory"}},
        {convert + "in.raw out.jpeg", 2, {"out.jpeg", "png", "--type"}},
        {convert + "in.raw out", 2, {"--type"}},
        {convert + "--type bmp in.raw out", 2, {"'bmp'", "png"}},
        {convert + "--type png --raw in.raw out", 2, {"--raw"}},
        {convert + "-t UYVY in.raw out.png", 2, {"YUV422", "raw"}},
        {convert + "-t RGB24 in.raw out.pgm", 2, {"PGM"}},
        {convert + "-t planes in.raw out.ppm", 2, {"PPM", "planes"}},
        {convert + "-t planes in.raw -", 2, {"several files"}},
        {convert + "-t RGBA32 in.raw out.ppm", 2, {"PPM"}},
        {convert + "--debayer 3x3 in.raw out.png", 2, {"--debayer", "mosaics", "Mono8"}},
        {"convert -f BayerRG8 -s 8x8 --exposure 2 --raw -t UYVY in.raw out", 2, {"YUV422", "RGB24"}},
        {convert + "--gamma 0 in.raw out.png", 2, {"--gamma", "srgb"}},
        {convert + "--stretch 50,5 in.raw out.png", 2, {"--stretch", "lower"}},
        {convert + "--frame 3-2 in.raw out.png", 2, {"'3-2'", "all"}},
        {convert + "--stride 7 in.raw out.png", 2, {"8 bytes", "--stride"}},
        {convert + "-t RGBA32 in.raw out.y4m", 2, {"Y4M"}},
        {convert + "--matrix 1,0,0,0,1,0,0,0 in.raw out.png", 2, {"'1,0,0,0,1,0,0,0'", "nine numbers", "identity"}},
        {convert + "--matrix 1,0,0,0,1,0,0,0,1,0 in.raw out.png", 2, {"nine numbers"}},
        {convert + "--matrix 1,0,0,0,1,0,0,0,1e99 in.raw out.png", 2, {"nine numbers"}},
        {convert + "--matrix 1,0,0,0,1,0,0,0,nan in.raw out.png", 2, {"nine numbers"}},
        {convert + "--flip '' in.raw out.png", 2, {"--flip", "empty"}},
        {convert + "-t '' in.raw out.png", 2, {"--to", "empty"}},
        {"convert -f cygm8 -s 8x8 --deinterlace in.raw out.png", 2, {"--deinterlace", "Cygm8"}},
        {convert + "--flip x in.raw out.png", 2, {"'x'", "h, v, 90, 180"}},
        {convert + "--flip 180 -t BGRA32 in.raw out.png", 2, {"--flip v", "BGRA32", "RGB24"}},
        {convert + "--flip h -t UYVY --raw in.raw out", 2, {"--flip v", "YUV422"}},
        {"convert -f BayerRG8 -s 8x8 --debayer 4x4 in.raw out.png", 2, {"'4x4'", "2x2, 3x3, lcaa"}},
        {convert + "--big-endian in.raw out.png", 2, {"16-bit samples", "Mono8"}},
        {convert + "--raw in.raw ./in.raw", 2, {"overwritten"}},
        {convert + "-t planes --raw in.g.raw in.raw", 2, {"in.g.raw", "overwritten"}},
        {convert + "--raw in.g.raw in.raw -t planes --output-directory .", 2, {"in.g.raw", "overwritten"}},
        {convert + "in.raw ./in.raw --output-directory out", 2, {"both become"}},
        {"grab -n 0 out.raw", 2, {"--frames"}},
    });
    EXPECT_EQ(readFile(path("in.raw")), content);
}

TEST_F(Errors, ADiskThatFillsUp) {
    writeFile(path("in.raw"), std::string(10000, 'x'));
    writeFile(path("old.raw"), "old");
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const rlimit limited{5000, unlimited.rlim_max}; // the program's files cannot grow beyond this
    ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
    const std::string convert = "convert -f Mono8 -s 100x100 in.raw ";
    expectEach({{convert + "-t BGR24 new.raw", 1, {"new.raw", "File too large"}},
                {convert + "-t BGR24 old.raw", 1, {"old.raw", "File too large"}},
                {convert + "-t planes new.raw", 1, {"new.r.raw", "File too large"}},
                {convert + "--type png /dev/full", 1, {"/dev/full", "No space left"}}});
    ::setrlimit(RLIMIT_FSIZE, &unlimited);
    ::signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(readFile(path("old.raw")), "old");
}

} // namespace
