#include <algorithm>
#include <cmath>
#include <limits>

#include "geometry/geometry.h"
#include "geometry/geometry_kernels.h"
#include "support/faces.h"

namespace kel {

namespace {

enum Mode : u32 { nearest, linear };

// From the pixels of an output line to those of a source line.
struct Ratio {
    double step; // of the source, per output pixel
    i64 last;    // index that is never exceeded
    Mode mode;

    double position(i64 pixel) const { return static_cast<double>(pixel) * step; }

    // The nearest source pixel; 0 for positions in front of the line or without a value.
    i64 indexAt(double x) const {
        const double rounded = x + 0.5;
        if (!(rounded >= 1)) return 0;
        return rounded >= static_cast<double>(last) ? last : static_cast<i64>(rounded);
    }

    // How much of source pixel `index` goes into a pixel at x, in 1/1024.
    u16 weightAt(double x, i64 index) const {
        if (mode == nearest || index == 0 || index == last) return Strip::whole;
        const int fraction = static_cast<int>((x - static_cast<double>(index)) * 1024);
        return static_cast<u16>(fraction > 0 ? fraction : Strip::whole + fraction);
    }
};

// The strips of an output line.
struct OutputLine {
    const Ratio& ratio;
    i64 length; // in pixels
    size_t bytesPerPixel;
    i64 done = 0;

    bool fill(Strip& strip) {
        if (done >= length) return false;
        const i64 count = std::min(static_cast<i64>(Strip::capacity / bytesPerPixel), length - done);
        strip.start = static_cast<size_t>(done) * bytesPerPixel;
        strip.length = static_cast<size_t>(count) * bytesPerPixel;
        strip.sourceEnd = 0;
        strip.pixel = bytesPerPixel;
        size_t* source = strip.source;
        u16* weight = strip.weight;
        for (const i64 end = done + count; done < end; ++done) {
            const double x = ratio.position(done);
            const i64 index = ratio.indexAt(x);
            const size_t start = static_cast<size_t>(index) * bytesPerPixel;
            std::fill_n(weight, bytesPerPixel, ratio.weightAt(x, index));
            for (size_t byte = 0; byte < bytesPerPixel; ++byte) *source++ = start + byte;
            weight += bytesPerPixel;
            strip.sourceEnd = std::max(strip.sourceEnd, start + bytesPerPixel);
        }
        return true;
    }
};

void resampleLines(const ResampledLines& lines, OutputLine line) {
    const auto fill = [](void* state, Strip& strip) { return static_cast<OutputLine*>(state)->fill(strip); };
    geometryKernels().resample[line.ratio.mode](lines, {&line, fill});
}

void resample(u8* destination, const u8* source, const Scanlines& scanlines, const Ratio& ratio) {
    const size_t pixel = scanlines.bytesPerPixel;
    const auto pitchOf = [pixel](i32 pixels) { return ptrdiff_t{pixels} * static_cast<ptrdiff_t>(pixel); };
    ResampledLines lines{.destination = destination,
                         .source = source,
                         .destinationPitch = pitchOf(scanlines.destinationPitch),
                         .sourcePitch = pitchOf(scanlines.sourcePitch),
                         .count = static_cast<size_t>(scanlines.count)};

    // A line that begins within the one before overwrites its tail, which has to be there by then.
    const bool overlap = scanlines.destinationPitch > 0 && scanlines.destinationPitch < scanlines.destinationLength;
    size_t left = lines.count;
    if (overlap) lines.count = 1;
    for (; left > 0; left -= lines.count) {
        resampleLines(lines, {ratio, scanlines.destinationLength, pixel});
        lines.destination += lines.destinationPitch, lines.source += lines.sourcePitch;
    }
}

} // namespace

Refusal resampleScanlines(void* destination, const void* source, const Scanlines& lines, u32 mode, float a, float b) {
    const Refusal refusal =
        firstRefusal({{destination, Refusal::destination},
                      {source, Refusal::source},
                      {lines.bytesPerPixel >= 1 && lines.bytesPerPixel <= 6, Refusal::bytesPerPixel},
                      {mode <= linear, Refusal::mode},
                      {b != 0, Refusal::ratio}});
    return unlessRefused(refusal, [&] {
        if (lines.destinationLength <= 0 || lines.sourceLength <= 0 || lines.count <= 0) return;
        // Linear mode minds the end of the output line, not of the source line.
        const i32 length = mode == linear ? lines.destinationLength : lines.sourceLength;
        resample(bytes(destination), bytes(source), lines,
                 {.step = a / b, .last = length - 1, .mode = static_cast<Mode>(mode)});
    });
}

Refusal resampledScanlineLength(u32* result, i32 sourceLength, float a, float b) {
    const Refusal refusal = firstRefusal({{result, Refusal::destination}, {b != 0, Refusal::ratio}});
    return unlessRefused(refusal, [&] {
        constexpr double lowest = std::numeric_limits<i32>::min(), highest = std::numeric_limits<u32>::max() - 3;
        const float product = static_cast<float>(sourceLength) * b;
        const double quotient = static_cast<double>(product) / a;
        const i64 length = std::isnan(quotient) ? 0 : static_cast<i64>(std::clamp(quotient, lowest, highest));
        *result = static_cast<u32>(length % 4 == 0 ? length : length / 4 * 4 + 4);
    });
}

} // namespace kel

using namespace kel;

namespace {

// These two say 1 where others say 0.
OrvErrorType oneOnSuccess(Refusal refusal) { return refusal == Refusal::none ? 1 : orv(refusal); }

} // namespace

OrvErrorType OrvResampleScanlinesEx(void* destination, const void* source, int32_t destinationLength,
                                    int32_t destinationPitch, int32_t sourceLength, int32_t sourcePitch, int32_t lines,
                                    uint32_t bytesPerPixel, uint32_t mode, float a, float b) {
    return oneOnSuccess(resampleScanlines(
        destination, source, {destinationLength, destinationPitch, sourceLength, sourcePitch, lines, bytesPerPixel},
        mode, a, b));
}

OrvErrorType OrvResampleScanlines(void* destination, const void* source, int32_t destinationLength,
                                  int32_t sourceLength, int32_t lines, uint32_t bytesPerPixel, uint32_t mode, float a,
                                  float b) {
    return oneOnSuccess(resampleScanlines(destination, source,
                                          dense(destinationLength, sourceLength, lines, bytesPerPixel), mode, a, b));
}

OrvErrorType OrvGetResampledScanlineLength(uint32_t* result, int32_t sourceLength, float a, float b) {
    return orv(resampledScanlineLength(result, sourceLength, a, b));
}
