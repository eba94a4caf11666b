#include "picture/develop.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace picture {

namespace {

using Byte = std::uint8_t;
using Word = std::uint16_t;

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

using Table = std::vector<std::uint16_t>; // of all samples
Table tableOf(const Curve& curve) {
    Table table(0x10000);
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = rounded(white * curved(curve, static_cast<float>(i) / white));
    return table;
}

// How often each value occurs.
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

// A sample in so many bits, the high ones.
template <class Value> Value shortened(std::uint16_t sample) {
    return static_cast<Value>(sample >> (16 - 8 * sizeof(Value)));
}

// What becomes of every sample, if that is known beforehand; `exposed` takes a sample.
template <class Value, class Expose>
std::vector<Value> developedSamples(const Settings& settings, const Table& curve, const Expose& exposed) {
    const float scale = white / std::max(settings.high - settings.low, 1.f);
    std::vector<Value> table(0x10000);
    for (unsigned value = 0; value < 0x10000; ++value)
        table[value] =
            shortened<Value>(curve[rounded((exposed(static_cast<std::uint16_t>(value)) - settings.low) * scale)]);
    return table;
}

// `put` takes the number of a pixel and its value.
template <class Value, class Put> void developGrey(ConstSamples samples, const Settings& settings, const Put& put) {
    const Exposed exposed(settings);
    const auto table = developedSamples<Value>(settings, tableOf(settings.curve),
                                               [&](std::uint16_t sample) { return exposed.grey(sample); });
    for (std::size_t i = 0; i < samples.size(); ++i) put(i, table[samples[i]]);
}

// ... and its three values.
template <class Value, class Put> void developColour(ConstSamples samples, const Settings& settings, const Put& put) {
    const Table curve = tableOf(settings.curve);
    const Exposed exposed(settings);
    const std::size_t pixels = samples.size() / 3;
    const std::uint16_t* from = samples.data();
    if (exposed.isDiagonal()) {
        std::vector<Value> tables[3];
        for (unsigned c = 0; c < 3; ++c)
            tables[c] = developedSamples<Value>(settings, curve,
                                                [&](std::uint16_t sample) { return exposed.channel(c, sample); });
        for (std::size_t i = 0; i < pixels; ++i, from += 3)
            put(i, tables[0][from[0]], tables[1][from[1]], tables[2][from[2]]);
        return;
    }
    const float scale = white / std::max(settings.high - settings.low, 1.f);
    const auto finished = [&](float value) { return shortened<Value>(curve[rounded((value - settings.low) * scale)]); };
    for (std::size_t i = 0; i < pixels; ++i, from += 3) {
        const auto colour = exposed.colour(from);
        put(i, finished(colour[0]), finished(colour[1]), finished(colour[2]));
    }
}

} // namespace

void develop(Samples samples, unsigned channels, const Settings& settings) {
    if (channels == 1)
        developGrey<Word>(samples, settings, [&](std::size_t i, Word value) { samples[i] = value; });
    else
        developColour<Word>(samples, settings, [&](std::size_t i, Word red, Word green, Word blue) {
            samples[3 * i] = red, samples[3 * i + 1] = green, samples[3 * i + 2] = blue;
        });
}

void developForDisplay(ConstSamples samples, unsigned channels, const Settings& settings, std::uint8_t* rgba) {
    const auto put = [rgba](std::size_t i, Byte red, Byte green, Byte blue) {
        const Byte pixel[4] = {red, green, blue, 0xFF};
        std::memcpy(rgba + 4 * i, pixel, 4); // in one piece
    };
    if (channels == 1)
        developGrey<Byte>(samples, settings, [&](std::size_t i, Byte value) { put(i, value, value, value); });
    else
        developColour<Byte>(samples, settings, put);
}

std::vector<std::uint16_t> somePixels(ConstSamples samples, unsigned channels) {
    const std::size_t pixels = samples.size() / channels;
    const std::size_t step = pixels / 200'000 * 2 + 1; // odd, so as not to meet the same columns in every row of most
    std::vector<std::uint16_t> some;
    some.reserve((pixels / step + 1) * channels);
    for (std::size_t i = 0; i < pixels; i += step) {
        const std::uint16_t* const pixel = &samples[i * channels];
        some.insert(some.end(), pixel, pixel + channels);
    }
    return some;
}

float percentile(ConstSamples samples, double part) {
    Histogram histogram;
    for (const std::uint16_t sample : samples) histogram.add(sample);
    return histogram.percentile(part);
}

float measureBlack(ConstSamples samples) { return percentile(samples, .0005); }

std::array<float, 3> measureWhiteBalance(ConstSamples samples, float black) {
    constexpr float clipped = .95f * white;
    std::array<float, 3> factors{1, 1, 1};
    // First the mean of all pixels counts as grey, then that of those which are nearly grey by the factors so far.
    for (float tolerance : {1e9f, 3.f, 2.f, 1.5f, 1.5f, 1.5f}) {
        std::array<double, 3> sums{};
        for (std::size_t i = 0; i < samples.size(); i += 3) {
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
    for (std::size_t i = 0; i < samples.size(); i += channels) {
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
