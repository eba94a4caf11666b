#include "picture/guess.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>

namespace picture {

namespace {

using Dump = std::span<const std::uint8_t>;
using Index = std::int64_t;

// ---- How samples lie

struct Layout {
    Storage storage;
    Kind kind;
};
constexpr Layout layouts[] = {
    {Storage::bytes, Kind::grey},        {Storage::bytes, Kind::mosaic},        {Storage::bytes, Kind::rgb},
    {Storage::bytes, Kind::rgba},        {Storage::bytes, Kind::yuv411},        {Storage::bytes, Kind::yuv422},
    {Storage::littleEndian, Kind::grey}, {Storage::littleEndian, Kind::mosaic}, {Storage::bigEndian, Kind::grey},
    {Storage::bigEndian, Kind::mosaic},  {Storage::packed12, Kind::grey},       {Storage::packed12, Kind::mosaic},
    {Storage::stream10, Kind::grey},     {Storage::stream10, Kind::mosaic},     {Storage::stream12, Kind::grey},
    {Storage::stream12, Kind::mosaic},
};

int bitsOf(Storage storage) {
    switch (storage) {
    case Storage::bytes: return 8;
    case Storage::stream10: return 10;
    case Storage::packed12:
    case Storage::stream12: return 12;
    default: return 16;
    }
}

// Samples for `pixels` pixels.
struct Ratio {
    int samples, pixels;
};
Ratio ratioOf(Kind kind) {
    switch (kind) {
    case Kind::rgb:
    case Kind::yuv444: return {3, 1};
    case Kind::rgba: return {4, 1};
    case Kind::yuv411: return {6, 4};
    case Kind::yuv422: return {2, 1};
    default: return {1, 1};
    }
}

template <Storage storage> int sampleAt(Dump dump, std::size_t i) {
    const auto byte = [&](std::size_t at) { return int{dump[at]}; };
    switch (storage) {
    case Storage::bytes: return byte(i);
    case Storage::littleEndian: return byte(2 * i) | byte(2 * i + 1) << 8;
    case Storage::bigEndian: return byte(2 * i) << 8 | byte(2 * i + 1);
    case Storage::packed12: {
        const int middle = byte(i / 2 * 3 + 1);
        return byte(i / 2 * 3 + i % 2 * 2) << 4 | (i % 2 ? middle >> 4 : middle & 15);
    }
    case Storage::stream10: return (byte(i * 10 / 8) | byte(i * 10 / 8 + 1) << 8) >> (i * 10 % 8) & 0x3FF;
    default: return (byte(i * 12 / 8) | byte(i * 12 / 8 + 1) << 8) >> (i * 12 % 8) & 0xFFF;
    }
}

// Samples from the `first` on.
void readSamples(Dump dump, Storage storage, Index first, std::span<int> samples) {
    const auto read = [&](int (*sample)(Dump, std::size_t)) {
        auto i = static_cast<std::size_t>(first);
        for (int& each : samples) each = sample(dump, i++);
    };
    switch (storage) { // here, so that each loop has its own reader in it
    case Storage::bytes: return read(sampleAt<Storage::bytes>);
    case Storage::littleEndian: return read(sampleAt<Storage::littleEndian>);
    case Storage::bigEndian: return read(sampleAt<Storage::bigEndian>);
    case Storage::packed12: return read(sampleAt<Storage::packed12>);
    case Storage::stream10: return read(sampleAt<Storage::stream10>);
    default: return read(sampleAt<Storage::stream12>);
    }
}

int sampleAt(Dump dump, Storage storage, Index i) {
    int sample;
    readSamples(dump, storage, i, {&sample, 1});
    return sample;
}

// ---- What a model costs

constexpr int runLength = 32;
constexpr double impossible = 1e9; // too small for any run

class Random { // the same numbers every time
public:
    Index below(Index limit) {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<Index>((state_ >> 33) % static_cast<std::uint64_t>(limit));
    }

private:
    std::uint64_t state_ = 1;
};

// From the left, above, and above the left: the median of what they and their plane say.
int predicted(int left, int above, int diagonal) {
    const auto [least, most] = std::minmax(left, above);
    return std::clamp(left + above - diagonal, least, most);
}

// Bits for a sample whose residuals are of such a mean size, of a two-sided geometric distribution.
double bitsFor(double residual, int sampleBits) {
    return std::min(std::log2(1 + 2 * 2.718 * residual), static_cast<double>(sampleBits));
}

// Two runs of samples, one above the other, and what lies to the left of them.
constexpr Index margin = 6;
using Run = std::array<int, margin + runLength>;

// The sum of residuals. `left` says how far to the left of a sample the next one of its colour lies.
template <class Left> int residualsOf(const Run& here, const Run& above, int modulus, const Left& left) {
    int sum = 0;
    for (std::size_t i = margin; i < here.size(); ++i) {
        const std::size_t from = i - left(i);
        const int residual = std::abs(here[i] - predicted(here[from], above[i], above[from]));
        sum += std::min(residual, modulus - residual);
    }
    return sum;
}

// ... which begin at such a sample of their rows.
int residualsOf(const Run& here, const Run& above, int modulus, Kind kind, std::size_t x) {
    const auto sum = [&](const auto& left) { return residualsOf(here, above, modulus, left); };
    switch (kind) {
    case Kind::grey: return sum([](std::size_t) -> std::size_t { return 1; });
    case Kind::mosaic: return sum([](std::size_t) -> std::size_t { return 2; });
    case Kind::rgba: return sum([](std::size_t) -> std::size_t { return 4; });
    case Kind::yuv422: return sum([x](std::size_t i) -> std::size_t { return (x + i) % 2 ? 2 : 4; }); // U Y V Y
    case Kind::yuv411:
        return sum([x](std::size_t i) -> std::size_t {
            return (x + i) % 3 == 0 ? 6 : (x + i) % 3 == 1 ? 2 : 1;
        }); // U Y Y V Y Y
    default: return sum([](std::size_t) -> std::size_t { return 3; });
    }
}

// Bits for a sample, by so many runs of samples here and there.
double bitsOfSamples(Dump dump, const Layout& layout, Index width, Index height, int runs) {
    const Ratio ratio = ratioOf(layout.kind);
    const Index row = width * ratio.samples / ratio.pixels, above = layout.kind == Kind::mosaic ? 2 * row : row;
    const Index firstRow = above / row;
    if (row < margin + runLength + 2 || height <= firstRow) return impossible;
    const int bits = bitsOf(layout.storage), modulus = 1 << bits;
    Random random;
    double sum = 0;
    for (int run = 0; run < runs; ++run) {
        const Index y = firstRow + random.below(height - firstRow);
        const Index x = random.below(row - margin - runLength);
        Run here, there;
        readSamples(dump, layout.storage, y * row + x, here);
        readSamples(dump, layout.storage, y * row + x - above, there);
        const int residuals = residualsOf(here, there, modulus, layout.kind, static_cast<std::size_t>(x));
        sum += bitsFor(static_cast<double>(residuals) / runLength, bits);
    }
    return sum / runs;
}

// ---- Sizes

// What is usual counts as if it saved some bits of each byte.
constexpr double unusual = .02; // at least
double strangeness(Index width, Index height, std::span<const UsualSize> usual) {
    const double aspect = static_cast<double>(std::max(width, height)) / static_cast<double>(std::min(width, height));
    double strange = unusual + .1 * std::max(0., std::log2(aspect / 1.8)) + (width < height ? .01 : 0);
    for (const UsualSize& size : usual)
        if (size.width == width && size.height == height) strange = 0;
    return strange;
}

// Whether the fourth of every four bytes is nearly always the same, as that of a camera that sends opaque pixels.
bool hasAlpha(Dump dump) {
    std::array<int, 256> counts{};
    Random random;
    constexpr int looks = 1000;
    for (int i = 0; i < looks; ++i)
        ++counts[dump[static_cast<std::size_t>(random.below(static_cast<Index>(dump.size()) / 4) * 4 + 3)]];
    return *std::max_element(std::begin(counts), std::end(counts)) > .9 * looks;
}

// Which bits are used in the first and in the second bytes of all pairs.
struct UsedBits {
    unsigned first = 0, second = 0;
};
UsedBits usedBits(Dump dump) {
    std::uint64_t used = 0, four = 0;
    std::size_t i = 0;
    for (; i + 8 <= dump.size(); i += 8) {
        std::memcpy(&four, &dump[i], 8); // pairs, of a little-endian machine
        used |= four;
    }
    used |= used >> 32;
    used |= used >> 16;
    UsedBits bits{static_cast<unsigned>(used & 0xFF), static_cast<unsigned>(used >> 8 & 0xFF)};
    for (; i + 1 < dump.size(); i += 2) bits.first |= dump[i], bits.second |= dump[i + 1];
    return bits;
}

// What speaks against a storage, as bits for each byte: words use the bits from one to another; and if they leave the
// highest ones alone, as samples of 10 to 14 bits do, they are hardly pairs of bytes.
double doubtsOf(const UsedBits& bits, Storage storage) {
    if (storage == Storage::bytes) return bits.first > 0xF && bits.second < 0x40 ? .2 : 0;
    if (storage != Storage::littleEndian && storage != Storage::bigEndian) return 0;
    const unsigned used =
        storage == Storage::littleEndian ? bits.first | bits.second << 8 : bits.second | bits.first << 8;
    return std::has_single_bit((used >> std::countr_zero(used | 0x10000)) + 1) ? 0 : .5;
}

// Pixels of such a dump; none if it does not end with a whole one.
Index pixelsOf(Dump dump, const Layout& layout) {
    const Ratio ratio = ratioOf(layout.kind);
    const Index bits = static_cast<Index>(dump.size()) * 8, sample = bitsOf(layout.storage);
    const Index samples = bits / sample;
    const bool whole = (samples * sample + 7) / 8 * 8 == bits && samples * ratio.pixels % ratio.samples == 0;
    if (layout.kind == Kind::rgba && !hasAlpha(dump)) return 0;
    return whole ? samples * ratio.pixels / ratio.samples : 0;
}

// One frame, or many of them one after the other.
bool fits(const Layout& layout, Index width, Index height) {
    constexpr Index shortest = 8, narrowest = 16;
    if (width < narrowest || height < shortest || width > 64 * height || height > 2000 * width) return false;
    switch (layout.kind) {
    case Kind::mosaic: return width % 2 == 0 && height % 2 == 0;
    case Kind::yuv422: return width % 2 == 0;
    case Kind::yuv411: return width % 4 == 0;
    default: return true;
    }
}

// ---- Several frames

// How much more two rows differ than rows near them do, as a logarithm: high where one frame ends and the next begins.
double seamAt(Dump dump, const Layout& layout, Index row, Index y) {
    const Index step = layout.kind == Kind::mosaic ? 2 : 1; // to the next row of the same colours
    constexpr std::size_t most = 512;
    std::array<int, most> here, above;
    const std::size_t count = std::min(most, static_cast<std::size_t>(row));
    const Index column = (row - static_cast<Index>(count)) / 2;
    const auto read = [&](Index at, std::array<int, most>& samples) {
        readSamples(dump, layout.storage, at * row + column, std::span(samples).first(count));
    };
    const auto difference = [&](Index at) {
        read(at, here);
        read(at - step, above);
        double sum = .5 * static_cast<double>(count); // so that rows without noise are no wonder
        for (std::size_t i = 0; i < count; ++i) sum += std::abs(here[i] - above[i]);
        return sum;
    };
    return std::log2(difference(y) / std::max(difference(y - step), difference(y + step)));
}

// Whether the dump looks as if a frame of this height ended where it should, again and again.
bool hasSeams(Dump dump, const Guess& all, Index height) {
    const Ratio ratio = ratioOf(all.kind);
    const Index row = Index{all.width} * ratio.samples / ratio.pixels, seams = all.height / height - 1;
    const Index looks = std::min(seams, Index{24});
    double sum = 0;
    Index high = 0;
    for (Index i = 1; i <= looks; ++i) {
        const double seam = seamAt(dump, {all.storage, all.kind}, row, (i * seams / looks) * height);
        sum += seam;
        high += seam > .5 ? 1 : 0;
    }
    return 4 * high >= 3 * looks && sum / static_cast<double>(looks) * std::sqrt(static_cast<double>(looks)) > 2;
}

// The least strange frame of those that it may be several of; the guess itself if there are none.
Guess oneOfSeveral(Dump dump, const Guess& all, std::span<const UsualSize> usual) {
    constexpr Index narrowest = 160;
    Guess best = all;
    double least = impossible;
    if (all.width < narrowest) return best;
    for (Index height = std::max(Index{48}, Index{all.width} / 4); 2 * height <= all.height; ++height) {
        const bool possible = all.height % height == 0 && (all.kind != Kind::mosaic || height % 2 == 0);
        if (!possible || height > 2 * Index{all.width}) continue;
        const double strange = strangeness(all.width, height, usual);
        if (strange >= least || !hasSeams(dump, all, height)) continue;
        least = strange;
        best.height = static_cast<std::uint32_t>(height);
        best.frames = static_cast<std::uint32_t>(all.height / height);
    }
    return best;
}

// ---- What else can be seen of the best

// How alike two series of samples are: their correlation, less what their means differ by.
class Likeness {
public:
    void add(double a, double b) {
        sums_[0] += a, sums_[1] += b, squares_[0] += a * a, squares_[1] += b * b, products_ += a * b;
        ++count_;
    }
    double value() const {
        const double a = sums_[0] / count_, b = sums_[1] / count_;
        const double variances = (squares_[0] / count_ - a * a) * (squares_[1] / count_ - b * b);
        return (products_ / count_ - a * b) / std::sqrt(std::max(variances, 1e-9)) - std::abs(a - b) / (a + b + 1e-9);
    }

private:
    double sums_[2]{}, squares_[2]{}, products_ = 0, count_ = 0;
};

// Of the four samples of a mosaic's cell, the greens are the two that are more alike, on one diagonal.
bool greenFirst(Dump dump, Storage storage, Index width, Index height) {
    Random random;
    Likeness main, other;
    for (int i = 0; i < 5000; ++i) {
        const Index at = random.below(height / 2) * 2 * width + random.below(width / 2) * 2;
        const auto sample = [&](Index offset) { return sampleAt(dump, storage, at + offset); };
        main.add(sample(0), sample(width + 1));
        other.add(sample(1), sample(width));
    }
    return main.value() > other.value();
}

// How strongly channels vary, and their means.
struct ChannelStatistics {
    std::array<double, 3> mean{}, variance{};
    double covariance = 0; // of the outer two channels with the middle one, the smaller
};
ChannelStatistics statisticsOf(Dump dump) {
    ChannelStatistics s;
    Random random;
    constexpr int count = 20000;
    const Index pixels = static_cast<Index>(dump.size()) / 3;
    std::array<double, 2> products{};
    for (int i = 0; i < count; ++i) {
        const std::size_t at = static_cast<std::size_t>(random.below(pixels)) * 3;
        for (std::size_t c = 0; c < 3; ++c) {
            s.mean[c] += dump[at + c] / double{count};
            s.variance[c] += dump[at + c] * dump[at + c] / double{count};
        }
        products[0] += dump[at] * dump[at + 1] / double{count};
        products[1] += dump[at + 2] * dump[at + 1] / double{count};
    }
    for (std::size_t c = 0; c < 3; ++c) s.variance[c] -= s.mean[c] * s.mean[c];
    s.covariance = std::min(products[0] - s.mean[0] * s.mean[1], products[1] - s.mean[2] * s.mean[1]);
    return s;
}

// Chroma stays near 128 and does not follow luma, which lies between.
bool looksLikeYuv444(const ChannelStatistics& s) {
    const bool nearMiddle = std::abs(s.mean[0] - 128) < 40 && std::abs(s.mean[2] - 128) < 40;
    const bool calm = s.variance[0] < .5 * s.variance[1] && s.variance[2] < .5 * s.variance[1];
    return nearMiddle && calm && s.covariance < .5 * s.variance[1];
}

// Which bits of words are used. A few samples may be out of range.
struct Depth {
    unsigned bits;
    bool high;
};
Depth depthOf(Dump dump, Storage storage) {
    if (bitsOf(storage) != 16) return {static_cast<unsigned>(bitsOf(storage)), false};
    const Index count = static_cast<Index>(dump.size()) / 2;
    Index samplesOfLength[17] = {};
    unsigned used = 0;
    constexpr Index most = 4096;
    int some[most];
    for (Index i = 0; i < count; i += most) {
        const std::span part = std::span(some).first(static_cast<std::size_t>(std::min(most, count - i)));
        readSamples(dump, storage, i, part);
        for (const int sample : part) {
            used |= static_cast<unsigned>(sample);
            ++samplesOfLength[std::bit_width(static_cast<unsigned>(sample))];
        }
    }
    int top = 16;
    for (Index above = samplesOfLength[16]; top > 0 && above <= count / 25000; above += samplesOfLength[--top]) {
    }
    const int bottom = std::countr_zero(used);
    const auto depth = [](int bits) { return bits <= 10 ? 10u : bits <= 12 ? 12u : bits <= 14 ? 14u : 16u; };
    const bool high = top == 16 && bottom >= 2 && bottom <= 6;
    return {depth(high ? 16 - bottom : top), high};
}

// Columns at the right that have one value all over.
std::uint32_t paddingOf(Dump dump, const Guess& guess) {
    const auto [samples, pixels] = ratioOf(guess.kind);
    if (pixels != 1) return 0;
    const Index row = Index{guess.width} * samples, most = std::min(Index{64}, Index{guess.width} / 4);
    const int value = sampleAt(dump, guess.storage, row - 1);
    Index alike = most * samples; // at the end of every row
    for (Index y = 0; y < guess.height && alike > 0; ++y) {
        Index i = 0;
        while (i < alike && sampleAt(dump, guess.storage, (y + 1) * row - 1 - i) == value) ++i;
        alike = i;
    }
    const Index cell = guess.kind == Kind::mosaic ? 2 : 1;
    return static_cast<std::uint32_t>(alike / samples / cell * cell);
}

void describe(Dump dump, Guess& guess, const Depth& depth) {
    guess.bits = depth.bits;
    guess.highBits = depth.high;
    guess.padding = paddingOf(dump, guess);
    if (guess.kind == Kind::mosaic) guess.greenFirst = greenFirst(dump, guess.storage, guess.width, guess.height);
    if (guess.kind != Kind::rgb) return;
    const ChannelStatistics statistics = statisticsOf(dump);
    if (looksLikeYuv444(statistics)) guess.kind = Kind::yuv444;
    guess.redFirst = statistics.mean[0] >= statistics.mean[2];
}

// All sizes that a dump can have in all layouts.
std::vector<Guess> possibilities(Dump dump) {
    std::vector<Guess> guesses;
    for (const Layout& layout : layouts) {
        const Index pixels = pixelsOf(dump, layout);
        const auto add = [&](Index width, Index height) {
            if (fits(layout, width, height))
                guesses.push_back({.storage = layout.storage,
                                   .kind = layout.kind,
                                   .width = static_cast<std::uint32_t>(width),
                                   .height = static_cast<std::uint32_t>(height)});
        };
        for (Index width = 1; width * width <= pixels; ++width) {
            if (pixels % width != 0) continue;
            add(width, pixels / width);
            if (width * width < pixels) add(pixels / width, width);
        }
    }
    return guesses;
}

// Keeps the best, at most `count`.
void keepBest(std::vector<Guess>& guesses, std::size_t count) {
    const auto better = [](const Guess& a, const Guess& b) { return a.cost < b.cost; };
    const std::size_t kept = std::min(count, guesses.size());
    std::partial_sort(guesses.begin(), guesses.begin() + static_cast<std::ptrdiff_t>(kept), guesses.end(), better);
    guesses.resize(kept);
    std::erase_if(guesses, [](const Guess& guess) { return guess.cost >= impossible; });
}

} // namespace

std::vector<Guess> guess(Dump dump, std::span<const UsualSize> usual, std::size_t count) {
    constexpr std::size_t fewestBytes = 128;
    if (dump.size() < fewestBytes) return {};
    const UsedBits used = usedBits(dump);
    std::vector<Guess> guesses = possibilities(dump);
    // Frames without noise are drawn, not taken: their patterns suit many models, so that what is usual decides.
    bool drawn = false;
    const auto weigh = [&](int runs) {
        for (Guess& one : guesses)
            one.cost = bitsOfSamples(dump, {one.storage, one.kind}, one.width, Index{one.height} * one.frames, runs) *
                       8 / bitsOf(one.storage);
        drawn = std::any_of(guesses.begin(), guesses.end(), [](const Guess& one) { return one.cost < .3; });
    };
    std::vector<Guess> several; // of these, what is seen of their rows speaks against a single frame
    const auto couldBeSeveral = [&](const Guess& one) {
        return one.frames == 1 && std::any_of(several.begin(), several.end(), [&](const Guess& other) {
                   return other.storage == one.storage && other.kind == one.kind && other.width == one.width;
               });
    };
    const auto keep = [&](std::size_t most) {
        for (Guess& one : guesses) {
            const double strange = strangeness(one.width, one.height, usual) + (couldBeSeveral(one) ? .05 : 0);
            const bool unlikely = drawn && one.frames > 1 && strange >= unusual;
            one.cost += unlikely ? impossible : (drawn ? 10 : 1) * strange + doubtsOf(used, one.storage);
        }
        keepBest(guesses, most);
    };
    weigh(25);
    std::vector<Guess> bestRows = guesses; // whatever their number
    keepBest(bestRows, 20);
    keep(20 * count + 100);
    for (const Guess& rows : bestRows)
        if (const Guess one = oneOfSeveral(dump, rows, usual); one.frames > 1) several.push_back(one);
    guesses.insert(guesses.end(), several.begin(), several.end());
    weigh(100);
    keep(4 * count + 30); // among so many is the best of all
    weigh(500);
    keep(count);
    std::map<Storage, Depth> depths;
    for (Guess& one : guesses) {
        if (!depths.contains(one.storage)) depths[one.storage] = depthOf(dump, one.storage);
        describe(dump, one, depths[one.storage]);
    }
    return guesses;
}

} // namespace picture
