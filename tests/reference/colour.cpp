#include <algorithm>

#include "reference/families.h"

namespace reference {

namespace {

// r, g, b: the positions of the channels in a source pixel. Alpha is copied to 32-bit outputs if there is one.
void rgbFamily(const Job& job, std::size_t bytes, std::size_t r, std::size_t b) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + bytes * i;
        put(job.destination, i, job.output, {at[r], at[1], at[b]});
        if (bytes == 4 && bytesPerPixel(job.output) == 4) job.destination[4 * i + 3] = at[3];
    }
}

} // namespace

void rgb8(const Job& job) { rgbFamily(job, 3, 0, 2); }
void bgr8(const Job& job) { rgbFamily(job, 3, 2, 0); }
void rgba8(const Job& job) { rgbFamily(job, 4, 0, 2); }
void bgra8(const Job& job) { rgbFamily(job, 4, 2, 0); }

Colour yuvColour(int y, int u, int v) {
    const auto offset = [](int chroma, double factor) { return static_cast<int>((chroma - 128) * factor); };
    const auto clamped = [](int value) { return std::clamp(value, 0, 255); };
    return {clamped(y + offset(v, 1.4022)), clamped(y + offset(u, -0.3457) + offset(v, -0.7144)),
            clamped(y + offset(u, 1.771))};
}

void yuv411(const Job& job) {
    constexpr std::size_t luma[] = {1, 2, 4, 5};
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* group = job.source + i / 4 * 6;
        put(job.destination, i, job.output, yuvColour(group[luma[i % 4]], group[0], group[3]));
    }
}

void yuv422(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* group = job.source + i / 2 * 4;
        put(job.destination, i, job.output, yuvColour(group[1 + i % 2 * 2], group[0], group[2]));
    }
}

void yuv444(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + 3 * i;
        put(job.destination, i, job.output, yuvColour(at[1], at[0], at[2]));
    }
}

} // namespace reference
