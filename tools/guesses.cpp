#include "guesses.h"

#include "fitting.h"
#include "picture/guess.h"

namespace tool {

namespace {

using picture::Guess;
using picture::Kind;
using picture::Storage;

// "10p", "12Packed", "14"
std::string depthOf(const Guess& guess) {
    switch (guess.storage) {
    case Storage::packed12: return "12Packed";
    case Storage::stream10: return "10p";
    case Storage::stream12: return "12p";
    default: return std::to_string(guess.bits);
    }
}

// The name, and that of the same with red and blue exchanged.
std::vector<std::string> namesOf(const Guess& guess) {
    const std::string depth = depthOf(guess);
    switch (guess.kind) {
    case Kind::grey: return {"Mono" + depth};
    case Kind::mosaic:
        if (guess.greenFirst) return {"BayerGR" + depth, "BayerGB" + depth};
        return {"BayerRG" + depth, "BayerBG" + depth};
    case Kind::rgb:
        return guess.redFirst ? std::vector<std::string>{"Rgb8", "Bgr8"} : std::vector<std::string>{"Bgr8", "Rgb8"};
    case Kind::rgba: return {"Rgba8", "Bgra8"};
    case Kind::yuv411: return {"Yuv411"};
    case Kind::yuv422: return {"Yuv422"};
    default: return {"Yuv444"};
    }
}

FrameFormat frameOf(const Guess& guess, const std::string& name) {
    FrameFormat frame{*findPixelFormat(name), {guess.width, guess.height}};
    frame.bigEndian = guess.storage == Storage::bigEndian;
    frame.msbAligned = guess.highBits && frame.pixels.bits < 16;
    return frame;
}

} // namespace

std::vector<FrameGuess> guessFrames(const Bytes& dump, std::size_t count) {
    std::vector<picture::UsualSize> usual;
    for (const Size& size : usualSizes()) usual.push_back({size.width, size.height});
    std::vector<FrameGuess> guesses;
    for (const Guess& guess : picture::guess(dump, usual, count)) {
        FrameGuess frames{{}, guess.cost, guess.frames, guess.padding};
        for (const std::string& name : namesOf(guess)) frames.frames.push_back(frameOf(guess, name));
        guesses.push_back(std::move(frames));
    }
    return guesses;
}

} // namespace tool
