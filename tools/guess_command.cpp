#include <algorithm>
#include <cstdio>

#include "adjustments.h"
#include "commands.h"
#include "contact_sheet.h"
#include "errors.h"
#include "guesses.h"

namespace tool {

namespace {

// What 'orvella convert' wants to be told.
std::string optionsFor(const FrameFormat& frame) {
    std::string options = "-f " + std::string(frame.pixels.name) + " -s " + text(frame.size);
    if (frame.pixels.bits != findPixelFormat(frame.pixels.name)->bits)
        options += " --bits-used " + std::to_string(frame.pixels.bits);
    if (frame.bigEndian) options += " --big-endian";
    if (frame.msbAligned) options += " --msb-aligned";
    return options;
}

// What it is without such columns, if its rows are whole bytes.
std::string paddedRows(const FrameGuess& guess) {
    FrameFormat frame = guess.frames[0];
    const std::uint64_t bytes = byteCount(frame);
    if (guess.padding == 0 || bytes % frame.size.height != 0) return "";
    const std::uint64_t stride = bytes / frame.size.height;
    frame.size.width -= guess.padding;
    return "    its last columns are all the same; if they are padding: -s " + text(frame.size) + " --stride " +
           std::to_string(stride);
}

void print(const std::filesystem::path& path, const Bytes& dump, const std::vector<FrameGuess>& guesses) {
    std::printf("%s, %zu bytes, may be\n", inputName(path).c_str(), dump.size());
    int rank = 0;
    for (const FrameGuess& guess : guesses) {
        std::string line = optionsFor(guess.frames[0]);
        if (guess.count > 1) line += " --frame all   " + std::to_string(guess.count) + " frames";
        if (guess.frames.size() > 1)
            line += "   or " + std::string(guess.frames[1].pixels.name) + ", red and blue exchanged";
        std::printf("%2d  %.2f  %s\n", ++rank, guess.cost, line.c_str());
        if (const std::string padded = paddedRows(guess); !padded.empty()) std::puts(padded.c_str());
    }
    std::puts("The number: bits that a byte of it would take if it were so; the fewer, the likelier.");
    if (path == "-") return;
    std::printf("Look at the first: orvella convert --auto %s%s %s picture.png\n",
                optionsFor(guesses[0].frames[0]).c_str(), guesses[0].count > 1 ? " --frame 1" : "",
                path.string().c_str());
}

// The dump developed by each guess, numbered.
Image sheetOf(const Bytes& dump, const std::vector<FrameGuess>& guesses) {
    ContactSheet sheet(guesses.size());
    for (const FrameGuess& guess : guesses) {
        const FrameFormat& frame = guess.frames[0];
        try {
            LinearImage linear = linearImage(frame, dump, debayerModes().front());
            AdjustmentOptions automatic;
            automatic.automatic = true;
            Adjustments(automatic, frame).apply(linear, {});
            sheet.add(imageOf(linear, outputNamed("RGB24")));
        } catch (const Refusal&) { // no conversion of this size: the tile stays dark
            sheet.addEmpty();
        }
    }
    return sheet.image();
}

} // namespace

void guessCommand(const GuessOptions& options) {
    const FileType type = options.sheet.empty() ? FileType::png : fileTypeOf(options.sheet);
    InputFile file(options.file);
    file.skip(options.skip);
    const Bytes dump = file.read(std::uint64_t{1} << 32);
    const std::vector<FrameGuess> guesses = guessFrames(dump, options.count);
    if (guesses.empty())
        throw Error(file.name() + ": no format and size fits its " + std::to_string(dump.size()) + " bytes");
    print(options.file, dump, guesses);
    if (!options.sheet.empty()) writeFile(options.sheet, encode(sheetOf(dump, guesses), type));
}

} // namespace tool
