#include "picture/develop.h"

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr float white = 0xFFFF;

std::uint16_t rounded(float value) {
    return static_cast<std::uint16_t>(std::clamp(value, 0.f, white) + .5f); // a NaN of clamp's is 0 here
}

// The steps up to the exposure, all of them linear: a matrix and what is added.
class Exposed {
public:
    explicit Exposed(const Settings& s) {
        for (unsigned row = 0; row < 3; ++row) {
            for (unsigned column = 0; column < 3; ++column) {
                factors_[row][column] = s.matrix[3 * row + column] * s.whiteBalance[column] * s.exposure;
                added_[row] -= factors_[row][column] * s.black;
            }
        }
        grey_ = s.exposure;
        black_ = s.black;
    }
    float grey(std::uint16_t sample) const { return (sample - black_) * grey_; }
    // No channel has a part in another one.
    bool isDiagonal() const {
        for (unsigned row = 0; row < 3; ++row)
            for (unsigned column = 0; column < 3; ++column)
                if (row != column && factors_[row][column] != 0) return false;
        return true;
    }
    float channel(unsigned c, std::uint16_t sample) const { return added_[c] + factors_[c][c] * sample; }
    std::array<float, 3> colour(const std::uint16_t* pixel) const {
        std::array<float, 3> result = added_;
        for (unsigned row = 0; row < 3; ++row)
            for (unsigned column = 0; column < 3; ++column) result[row] += factors_[row][column] * pixel[column];
        return result;
    }

private:
    float factors_[3][3]{}, grey_ = 1, black_ = 0;
    std::array<float, 3> added_{};
};

float curved(const Curve& curve, float value) { // 0 to 1
    switch (curve.kind) {
    case Curve::power: return std::pow(value, 1 / curve.gamma);
    case Curve::srgb: return value <= .0031308f ? 12.92f * value : 1.055f * std::pow(value, 1 / 2.4f) - .055f;
    default: return value;
    }
}

std::vector<std::uint16_t> tableOf(const Curve& curve) {
    std::vector<std::uint16_t> table(0x10000);
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = rounded(white * curved(curve, static_cast<float>(i) / white));
    return table;
}

// How often each value occurs. Of large pictures, some pixels stand for all.
class Histogram {
public:
    void add(float value) {
        ++counts_[rounded(value)];
        ++total_;
    }
    float percentile(double part) const {
        const double wanted = part * static_cast<double>(total_);
        double below = 0;
        for (std::size_t i = 0; i < counts_.size(); ++i)
            if ((below += counts_[i]) > wanted) return static_cast<float>(i);
        return white;
    }

private:
    std::vector<std::uint32_t> counts_ = std::vector<std::uint32_t>(0x10000);
    std::uint64_t total_ = 0;
};

// Every how many-th pixel is measured; odd, so as not to meet the same columns in every row of most pictures.
std::size_t stepFor(std::size_t pixels) { return pixels / 500'000 * 2 + 1; }

} // namespace

void develop(Samples samples, unsigned channels, const Settings& settings) {
    const std::vector<std::uint16_t> table = tableOf(settings.curve);
    const Exposed exposed(settings);
    const float scale = white / std::max(settings.high - settings.low, 1.f);
    const auto finished = [&](float value) { return table[rounded((value - settings.low) * scale)]; };
    if (channels == 1 || exposed.isDiagonal()) { // then all that can become of a sample is known beforehand
        std::vector<std::uint16_t> tables[3];
        for (unsigned c = 0; c < channels; ++c) {
            tables[c].resize(0x10000);
            for (unsigned value = 0; value < 0x10000; ++value) {
                const auto sample = static_cast<std::uint16_t>(value);
                tables[c][value] = finished(channels == 1 ? exposed.grey(sample) : exposed.channel(c, sample));
            }
        }
        for (std::size_t i = 0; i + channels <= samples.size(); i += channels)
            for (unsigned c = 0; c < channels; ++c) samples[i + c] = tables[c][samples[i + c]];
        return;
    }
    for (std::size_t i = 0; i + 2 < samples.size(); i += 3) {
        const auto colour = exposed.colour(&samples[i]);
        for (unsigned c = 0; c < 3; ++c) samples[i + c] = finished(colour[c]);
    }
}

float percentile(ConstSamples samples, double part) {
    Histogram histogram;
    for (std::size_t i = 0, step = stepFor(samples.size()); i < samples.size(); i += step) histogram.add(samples[i]);
    return histogram.percentile(part);
}

float measureBlack(ConstSamples samples) { return percentile(samples, .0005); }

std::array<float, 3> measureWhiteBalance(ConstSamples samples, float black) {
    constexpr float clipped = .95f * white;
    std::array<float, 3> factors{1, 1, 1};
    const std::size_t step = 3 * stepFor(samples.size() / 3);
    // First the mean of all pixels counts as grey, then that of those which are nearly grey by the factors so far.
    for (float tolerance : {1e9f, 3.f, 2.f, 1.5f, 1.5f, 1.5f}) {
        std::array<double, 3> sums{};
        for (std::size_t i = 0; i + 2 < samples.size(); i += step) {
            const float colour[3] = {samples[i] - black, samples[i + 1] - black, samples[i + 2] - black};
            const float balanced[3] = {colour[0] * factors[0], colour[1] * factors[1], colour[2] * factors[2]};
            const auto [least, most] = std::minmax({balanced[0], balanced[1], balanced[2]});
            const bool isClipped = std::max({samples[i], samples[i + 1], samples[i + 2]}) > clipped;
            if (isClipped || least <= 0 || most > tolerance * least) continue;
            for (unsigned c = 0; c < 3; ++c) sums[c] += colour[c];
        }
        if (std::min({sums[0], sums[1], sums[2]}) <= 0) break;
        const double most = std::max({sums[0], sums[1], sums[2]});
        for (unsigned c = 0; c < 3; ++c) factors[c] = static_cast<float>(most / sums[c]);
    }
    return factors;
}

void measureStretch(ConstSamples samples, unsigned channels, double low, double high, Settings& settings) {
    Histogram histogram;
    const Exposed exposed(settings);
    const std::size_t step = channels * stepFor(samples.size() / channels);
    for (std::size_t i = 0; i + channels <= samples.size(); i += step) {
        if (channels == 1) {
            histogram.add(exposed.grey(samples[i]));
            continue;
        }
        for (const float value : exposed.colour(&samples[i])) histogram.add(value);
    }
    settings.low = histogram.percentile(low);
    settings.high = std::max(histogram.percentile(high), settings.low + 1);
}

} // namespace picture
