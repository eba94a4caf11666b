// What the faces cost: the C function, the C++ header with a picture that is reused and with a new one for each frame, bands
// and frames over threads. One line per measurement: case, face, microseconds a call.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "orvella/orvella.hpp"

namespace {

using namespace orvella;
using Clock = std::chrono::steady_clock;

struct Case {
    const char* name;
    PixelFormat format;
    Output output;
    Options options;
    Size size;
    int calls; // in a measurement
};

const Case cases[] = {
    {"BayerRG12p to RGB24", PixelFormat::BayerRG12p, Output::Rgb24, {}, {2448, 2048}, 1},
    {"Mono12p to Mono16", PixelFormat::Mono12p, Output::Mono16, {}, {2448, 2048}, 1},
    {"BayerRG8 3x3 to RGB24", PixelFormat::BayerRG8, Output::Rgb24, {.debayer = Debayer::Mode3x3}, {2448, 2048}, 1},
    {"BayerRG8 to RGB24, 64x64", PixelFormat::BayerRG8, Output::Rgb24, {}, {64, 64}, 100},
};

struct Face {
    const char* name;
    std::function<void()> call;
    double framesPerCall = 1;
    double best = 1e30;
};

// A thread for each job, as a pool that is as simple as can be.
void onThreads(std::size_t threads, std::size_t n, const auto& job) {
    std::vector<std::jthread> pool;
    for (std::size_t t = 0; t < threads; ++t)
        pool.emplace_back([&, t] {
            for (std::size_t i = t; i < n; i += threads) job(i);
        });
}

void measure(const Case& one, int rounds, std::size_t threads) {
    const std::size_t frameLength = imageBytes(one.format, one.size), length = imageBytes(one.output, one.size);
    std::vector<std::uint8_t> memory(frameLength * threads, 77), target(length * threads);
    const Frame frame(memory.data(), frameLength, one.format, one.size);
    Picture picture(target.data(), length, one.output, one.size);
    std::vector<Converter> converters(threads);

    OrvImage from{}, to{};
    from.Size = to.Size = sizeof(OrvImage);
    from.Data = memory.data();
    to.Data = target.data();
    const auto width = static_cast<std::uint32_t>(one.size.width), height = static_cast<std::uint32_t>(one.size.height);
    OrvSetImageInfoFromPixelFormat(static_cast<std::uint32_t>(one.format), width, height, &from);
    OrvSetImageInfoOutput(static_cast<std::uint32_t>(one.output), width, height, &to);
    OrvTransformInfo option{};
    OrvSetDebayerMode(static_cast<std::uint32_t>(one.options.debayer), &option);

    std::vector<Face> faces = {
        {"C", [&] { OrvImageTransform(&from, &to, &option, 1); }},
        {"C++", [&] { converters[0].convert(frame, picture, one.options); }},
        {"C++, new picture", [&] { convert(frame, one.output, one.options); }},
    };
    if (height > 64) {
        const auto run = [&](std::size_t n, const Job& job) { onThreads(threads, n, job); };
        const auto oneFrame = [&](std::size_t i) {
            Picture own(&target[i * length], length, one.output, one.size);
            converters[i].convert({&memory[i * frameLength], frameLength, one.format, one.size}, own, one.options);
        };
        faces.push_back({"C++, bands", [&, run] { converters[0].convert(frame, picture, one.options, run); }});
        faces.push_back({"C++, frames", [&, oneFrame] { onThreads(threads, threads, oneFrame); }, double(threads)});
    }
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < faces.size(); ++i) {
            // Forwards and backwards in turn, so that none is always behind the same other one.
            Face& face = faces[round % 2 == 0 ? i : faces.size() - 1 - i];
            face.call(); // after which the caches hold what it leaves there, not what another face has left
            const auto start = Clock::now();
            for (int n = 0; n < one.calls; ++n) face.call();
            const std::chrono::duration<double, std::micro> time = Clock::now() - start;
            face.best = std::min(face.best, time.count() / one.calls / face.framesPerCall);
        }
    for (const Face& face : faces) std::printf("%s\t%s\t%.3f\n", one.name, face.name, face.best);
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 100;
    for (const Case& one : cases) measure(one, rounds, std::thread::hardware_concurrency());
}
