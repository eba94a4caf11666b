#include "statistics.h"

#include <algorithm>
#include <array>
#include <vector>

#include "frames/samples.h"

namespace web {

namespace {

constexpr unsigned bins = 256;

class Histogram {
public:
    // Of values below 2 to the power of `bits`, or above them, which count as the greatest.
    explicit Histogram(unsigned bits) : shift_(std::max(bits, 8u) - 8) {}

    void add(unsigned value, std::uint32_t times) {
        if (times == 0) return;
        counts_[std::min(value >> shift_, bins - 1)] += times;
        least_ = std::min(least_, value);
        most_ = std::max(most_, value);
        sum_ += std::uint64_t{value} * times;
        total_ += times;
    }
    std::string text(std::string_view name) const {
        const double mean = total_ == 0 ? 0 : static_cast<double>(sum_) / static_cast<double>(total_);
        return JsonObject()
            .add("name", name)
            .add("least", total_ == 0 ? 0 : least_)
            .add("mean", mean)
            .add("most", most_)
            .addText("counts", jsonList(counts_))
            .text();
    }

private:
    unsigned shift_;
    std::array<std::uint32_t, bins> counts_{};
    unsigned least_ = 0xFFFF, most_ = 0;
    std::uint64_t sum_ = 0, total_ = 0;
};

// One letter for each colour, and which of them each sample of a pixel, or of a block of 2x2, is.
struct Colours {
    std::string_view letters;
    std::array<unsigned, 4> of;
};

Colours coloursOf(frames::Samples samples) {
    using frames::Samples;
    switch (samples) {
    case Samples::rggb: return {"RGB", {0, 1, 1, 2}};
    case Samples::grbg: return {"RGB", {1, 0, 2, 1}};
    case Samples::gbrg: return {"RGB", {1, 2, 0, 1}};
    case Samples::bggr: return {"RGB", {2, 1, 1, 0}};
    case Samples::rgb: return {"RGB", {0, 1, 2}};
    case Samples::rgba: return {"RGBA", {0, 1, 2, 3}};
    case Samples::bgr: return {"RGB", {2, 1, 0}};
    case Samples::bgra: return {"RGBA", {2, 1, 0, 3}};
    case Samples::yuv411:
    case Samples::yuv422:
    case Samples::yuv444: return {"YUV", {0, 1, 2}};
    default: return {"Y", {0, 0, 0, 0}};
    }
}

std::string listOf(const std::vector<Histogram>& histograms, std::string_view letters) {
    std::string list;
    for (std::size_t i = 0; i < histograms.size(); ++i)
        list.append(list.empty() ? "" : ",").append(histograms[i].text(letters.substr(i, 1)));
    return "[" + list + "]";
}

} // namespace

std::string sensorHistograms(const tool::FrameFormat& frame, std::span<const std::uint8_t> bytes) {
    const auto [letters, colourOf] = coloursOf(frame.pixels.samples);
    const unsigned count = frames::samplesOfPixel(frame.pixels);
    const std::size_t period = count == 1 ? 2 : count; // a mosaic's row has two colours
    std::vector<std::vector<std::uint32_t>> counts(letters.size(), std::vector<std::uint32_t>(0x10000));
    std::vector<std::uint16_t> row(std::size_t{frame.size.width} * count);
    for (std::uint32_t y = 0; y < frame.size.height; ++y) {
        frames::readPixels(frame, bytes, 0, y, row);
        for (std::size_t first = 0; first < period; ++first) {
            auto& of = counts[colourOf[count == 1 ? y % 2 * 2 + first : first]];
            for (std::size_t i = first; i < row.size(); i += period) ++of[row[i]];
        }
    }
    std::vector<Histogram> histograms(letters.size(), Histogram(frame.pixels.bits));
    for (std::size_t i = 0; i < histograms.size(); ++i)
        for (unsigned value = 0; value < counts[i].size(); ++value) histograms[i].add(value, counts[i][value]);
    return listOf(histograms, letters);
}

std::string pictureHistograms(std::span<const std::uint8_t> rgba, unsigned channels) {
    std::array<std::array<std::uint32_t, bins>, 3> counts{};
    for (std::size_t i = 0; i + 4 <= rgba.size(); i += 4)
        for (unsigned channel = 0; channel < channels; ++channel) ++counts[channel][rgba[i + channel]];
    std::vector<Histogram> histograms(channels, Histogram(8));
    for (unsigned channel = 0; channel < channels; ++channel)
        for (unsigned value = 0; value < bins; ++value) histograms[channel].add(value, counts[channel][value]);
    return listOf(histograms, channels == 1 ? "Y" : "RGB");
}

} // namespace web
