// A recording, frame after frame in one file, converted by a pool of threads: each takes the next frame and converts it by
// itself, without a lock. The file is mapped: nothing is read twice, and memory stays small however long it is.
//
//     thread_pool RECORDING WIDTH HEIGHT [THREADS]     of BayerRG12p; without arguments, a black one of 100 frames
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <orvella/orvella.hpp>
#include <thread>
#include <vector>

int main(int argc, char** argv) {
    constexpr auto format = orvella::PixelFormat::BayerRG12p;
    const orvella::Size size =
        argc > 3 ? orvella::Size{std::atoi(argv[2]), std::atoi(argv[3])} : orvella::Size{1280, 960};
    const std::size_t frameBytes = orvella::imageBytes(format, size);
    const unsigned threads = argc > 4 ? static_cast<unsigned>(std::atoi(argv[4])) : std::thread::hardware_concurrency();

    std::FILE* const file = argc > 3 ? std::fopen(argv[1], "rb") : std::tmpfile();
    if (!file || frameBytes == 0) return std::fprintf(stderr, "no such recording\n"), 1;
    if (argc <= 3 && ftruncate(fileno(file), static_cast<off_t>(100 * frameBytes)) != 0) return 1;
    const auto length = static_cast<std::size_t>(lseek(fileno(file), 0, SEEK_END));
    void* const map = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, fileno(file), 0);
    if (map == MAP_FAILED) return std::fprintf(stderr, "the recording cannot be read\n"), 1;
    const auto* const recording = static_cast<const std::byte*>(map);

    const std::size_t frames = length / frameBytes;
    std::atomic<std::size_t> next = 0, converted = 0;
    const auto work = [&] {
        orvella::Converter converter; // one per thread, like the picture
        orvella::Picture picture(orvella::Output::Rgb24, size);
        for (std::size_t i; (i = next++) < frames;) {
            const orvella::Frame frame(recording + i * frameBytes, frameBytes, format, size);
            if (converter.tryConvert(frame, picture)) ++converted; // and write it away, or measure it
        }
    };
    const auto begin = std::chrono::steady_clock::now();
    {
        std::vector<std::jthread> pool;
        for (unsigned i = 0; i < threads; ++i) pool.emplace_back(work);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::printf("%zu of %zu frames of %lldx%lld by %u threads, %.1f frames/s\n", converted.load(), frames,
                static_cast<long long>(size.width), static_cast<long long>(size.height), threads,
                static_cast<double>(converted) / seconds.count());
    return converted == frames ? 0 : 1;
}
