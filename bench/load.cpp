// What loading the library costs a process: time of dlopen, private memory, and time of the first conversions, each run in a
// process of its own.
//
//     orvella_bench_load LIBRARY
//
// Uses nothing of libstdc++ itself, so that the first figure is what a C program pays; for the second one libstdc++ is
// there already, as in every C++ program.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "orvella/orv.h"

namespace {

struct Cost {
    double milliseconds;
    long privateKilobytes;
    double callMicroseconds[2]; // the first conversion, the second one
};

double milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

long privateKilobytes() {
    std::FILE* file = std::fopen("/proc/self/smaps_rollup", "r");
    long sum = 0;
    char line[256];
    while (file && std::fgets(line, sizeof line, file)) {
        long value = 0;
        if (std::sscanf(line, "Private_Clean: %ld", &value) == 1 ||
            std::sscanf(line, "Private_Dirty: %ld", &value) == 1)
            sum += value;
    }
    if (file) std::fclose(file);
    return sum;
}

void* open(const char* library) {
    void* handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        std::fprintf(stderr, "orvella_bench_load: %s\n", dlerror());
        std::_Exit(1);
    }
    return handle;
}

void timeCalls(void* library, double (&microseconds)[2]) {
    static std::uint8_t mosaic[64 * 64], picture[3 * sizeof mosaic];
    std::memset(picture, 0, sizeof picture); // their pages are there
    std::memset(mosaic, 1, sizeof mosaic);
    const auto convert = reinterpret_cast<decltype(&OrvImageTransform)>(dlsym(library, "OrvImageTransform"));
    OrvImage from{}, to{};
    from.Size = to.Size = sizeof(OrvImage);
    from.Data = mosaic, to.Data = picture;
    reinterpret_cast<decltype(&OrvSetImageInfoFromPixelFormat)>(dlsym(library, "OrvSetImageInfoFromPixelFormat"))(
        OrvPixelFormatBayerRG8, 64, 64, &from);
    reinterpret_cast<decltype(&OrvSetImageInfoOutput)>(dlsym(library, "OrvSetImageInfoOutput"))(OrvOutputBgr24, 64, 64,
                                                                                                &to);
    for (double& time : microseconds) {
        const double start = milliseconds();
        if (convert(&from, &to, nullptr, 0) != OrvErrorSuccess) std::_Exit(1);
        time = (milliseconds() - start) * 1e3;
    }
}

Cost load(const char* library) {
    const long before = privateKilobytes();
    const double start = milliseconds();
    void* handle = open(library);
    Cost cost{milliseconds() - start, 0, {}};
    cost.privateKilobytes = privateKilobytes() - before;
    timeCalls(handle, cost.callMicroseconds);
    return cost;
}

// In a child process, which reports through a pipe.
Cost loadInChild(const char* library, bool withRuntime) {
    int pipes[2];
    Cost cost{};
    if (pipe(pipes) != 0) return cost;
    const pid_t child = fork();
    if (child == 0) {
        if (withRuntime) open("libstdc++.so.6");
        cost = load(library);
        const bool written = write(pipes[1], &cost, sizeof cost) == sizeof cost;
        _exit(written ? 0 : 1);
    }
    close(pipes[1]);
    const bool got = read(pipes[0], &cost, sizeof cost) == sizeof cost;
    close(pipes[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!got || status != 0) std::_Exit(1);
    return cost;
}

int byTime(const void* a, const void* b) {
    const double difference = static_cast<const Cost*>(a)->milliseconds - static_cast<const Cost*>(b)->milliseconds;
    return difference < 0 ? -1 : difference > 0;
}

Cost median(const char* library, bool withRuntime) {
    constexpr int runs = 51;
    Cost costs[runs];
    for (Cost& cost : costs) cost = loadInChild(library, withRuntime);
    std::qsort(costs, runs, sizeof costs[0], byTime);
    return costs[runs / 2];
}

} // namespace

int main(int count, char** values) {
    if (count != 2) {
        std::fprintf(stderr, "usage: orvella_bench_load LIBRARY\n");
        return 2;
    }
    const Cost alone = median(values[1], false), withRuntime = median(values[1], true);
    const auto print = [](const char* process, const Cost& cost, const char* end) {
        std::printf("{\"process\": \"%s\", \"milliseconds\": %.3f, \"privateKilobytes\": %ld, "
                    "\"firstCallMicroseconds\": %.1f, \"secondCallMicroseconds\": %.1f}%s\n",
                    process, cost.milliseconds, cost.privateKilobytes, cost.callMicroseconds[0],
                    cost.callMicroseconds[1], end);
    };
    std::printf("[\n");
    print("C", alone, ",");
    print("C++", withRuntime, "");
    std::printf("]\n");
}
