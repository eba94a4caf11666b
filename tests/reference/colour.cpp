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

namespace {

struct Yuv {
    int y, u, v;
};
using Unpack = Yuv (*)(const Byte* source, std::size_t i);

Yuv unpack411(const Byte* source, std::size_t i) {
    constexpr std::size_t luma[] = {1, 2, 4, 5};
    const Byte* group = source + i / 4 * 6;
    return {group[luma[i % 4]], group[0], group[3]};
}
Yuv unpack422(const Byte* source, std::size_t i) {
    const Byte* group = source + i / 2 * 4;
    return {group[1 + i % 2 * 2], group[0], group[2]};
}
Yuv unpack444(const Byte* source, std::size_t i) { return {source[3 * i + 1], source[3 * i], source[3 * i + 2]}; }

void yuv(const Job& job, Unpack unpack) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Yuv p = unpack(job.source, i);
        put(job.destination, i, job.output, yuvColour(p.y, p.u, p.v));
    }
}

// The planes of 4:1:1 and 4:4:4: sums truncated, green's offset a signed byte.
Colour summedColour(int y, int u, int v) {
    const auto truncated = [](double sum, double low, double high) {
        return static_cast<int>(std::clamp(sum, low, high));
    };
    const int offset = truncated(-0.3457 * (u - 128) - 0.7144 * (v - 128), -128, 127);
    return {truncated(y + 1.4022 * (v - 128), 0, 255), std::clamp(y + offset, 0, 255),
            truncated(y + 1.771 * (u - 128), 0, 255)};
}

void putPlanes(const Job& job, std::size_t i, const Colour& colour, int luma) {
    const int values[] = {colour.r, colour.g, colour.b, luma};
    const std::size_t planes = job.output == Output::planesWithLuma ? 4 : 3;
    for (std::size_t k = 0; k < planes; ++k) job.destination[k * job.pixels() + i] = static_cast<Byte>(values[k]);
}

void yuvPlanes(const Job& job, Unpack unpack, Colour (*colour)(int, int, int)) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Yuv p = unpack(job.source, i);
        putPlanes(job, i, colour(p.y, p.u, p.v), p.y);
    }
}

} // namespace

void yuv411(const Job& job) { yuv(job, unpack411); }
void yuv422(const Job& job) { yuv(job, unpack422); }
void yuv444(const Job& job) { yuv(job, unpack444); }

void yuv411Planes(const Job& job) { yuvPlanes(job, unpack411, summedColour); }
void yuv422Planes(const Job& job) { yuvPlanes(job, unpack422, yuvColour); }
void yuv444Planes(const Job& job) { yuvPlanes(job, unpack444, summedColour); }

void rgb8ByDoublePrecision(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + 3 * i;
        job.destination[i] = static_cast<Byte>((0.21 * at[0] + 0.72 * at[1]) + 0.07 * at[2]);
    }
}

void rgb8Planes(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + 3 * i;
        const double luma = (0.299 * at[0] + 0.587 * at[1]) + 0.114 * at[2];
        putPlanes(job, i, {at[0], at[1], at[2]}, static_cast<int>(luma));
    }
}

} // namespace reference
