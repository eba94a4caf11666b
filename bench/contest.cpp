#include "bench/contest.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "bench/plausible.h"
#include "bench/test_frame.h"

namespace bench {

namespace {

using catalogue::Conversion;
using Bytes = std::vector<std::uint8_t>;

std::size_t bytesRead(const Conversion& c, Size size) { return c.sourceSize(size.width, size.height) + c.beyond; }
std::size_t bytesWritten(const Conversion& c, Size size) { return c.destinationSize(size.width, size.height); }

template <class BytesOf>
std::size_t most(const Conversions& conversions, const std::vector<Size>& sizes, BytesOf bytesOf) {
    std::size_t most = 0;
    for (const Size size : sizes)
        for (const Conversion* conversion : conversions)
            most = std::max({most, bytesOf(*conversion, size),
                             (bytesRead(*conversion, size) + bytesWritten(*conversion, size)) / 2});
    return most;
}

void convert(const Conversion& conversion, Size size, std::uint8_t* to, std::uint8_t* from, kel::Level level) {
    kel::limitLevel(level);
    std::uint8_t* destination = conversion.onlyInPlace ? from : to;
    const OrvErrorType result = conversion.convert(destination, from, size.width, size.height, 0);
    if (result != OrvErrorSuccess) throw std::runtime_error(conversion.name() + " answers " + std::to_string(result));
}

const PeerRow* find(const Peer& peer, const std::string& conversion) {
    const auto found = std::ranges::find(peer.rows, conversion, &PeerRow::conversion);
    return found == peer.rows.end() ? nullptr : &*found;
}

constexpr Size checkedSize{256, 128};

} // namespace

Memory::Memory(const Conversions& conversions, const std::vector<Size>& sizes)
    : from_(most(conversions, sizes, bytesRead)), to_(most(conversions, sizes, bytesWritten)) {}

Contestant ours(const Conversion& conversion, Size size, const Memory& memory, kel::Level level) {
    return {kel::nameOf(level),
            [&conversion, size, &memory, level] { convert(conversion, size, memory.to(), memory.from(), level); }};
}

Contestant copying(const Conversion& conversion, Size size, const Memory& memory) {
    const std::size_t bytes = (bytesRead(conversion, size) + bytesWritten(conversion, size)) / 2;
    return {"memcpy", [&memory, bytes] {
                std::memcpy(memory.to(), memory.from(), bytes);
                asm volatile("" ::: "memory");
            }};
}

const Result* Outcome::find(const std::string& name) const {
    const auto found = std::ranges::find(results, name, &Result::name);
    return found == results.end() ? nullptr : &*found;
}

Contest::Contest(std::vector<kel::Level> levels, bool withPeers) : levels_(std::move(levels)) {
    if (withPeers) peers_ = peers(levelNames());
    std::vector<std::string> known;
    for (const Conversion& conversion : catalogue::conversions()) known.push_back(conversion.name());
    for (const Peer& peer : peers_)
        for (const PeerRow& row : peer.rows)
            if (std::ranges::count(known, row.conversion) == 0)
                throw std::runtime_error(peer.name() + "'s table names '" + row.conversion +
                                         "', which the catalogue does not");
}

std::vector<std::string> Contest::levelNames() const {
    std::vector<std::string> names;
    for (const kel::Level level : levels_) names.push_back(kel::nameOf(level));
    return names;
}

std::vector<std::string> Contest::names() const {
    std::vector<std::string> names = levelNames();
    for (const Peer& peer : peers_) names.push_back(peer.name());
    return names;
}

void Contest::check(const Conversion& conversion) const {
    const Bytes frame = testFrame(conversion, checkedSize);
    const auto resultOf = [&](bool inPlace, const auto& contestant) {
        Bytes from = frame, to(bytesWritten(conversion, checkedSize), 0xA5);
        contestant(to.data(), from.data());
        return inPlace ? from : to;
    };
    const auto oursAt = [&](kel::Level level) {
        return resultOf(conversion.onlyInPlace,
                        [&](auto* to, auto* from) { convert(conversion, checkedSize, to, from, level); });
    };

    const Bytes expected = oursAt(levels_.back());
    for (const kel::Level level : levels_)
        if (oursAt(level) != expected)
            throw std::runtime_error(conversion.name() + ": levels " + kel::nameOf(level) + " and " + best() +
                                     " differ");
    for (const Peer& peer : peers_) {
        const PeerRow* row = find(peer, conversion.name());
        if (!row) continue;
        if (peer.enter) peer.enter();
        const Bytes result = resultOf(conversion.onlyInPlace && !row->outOfPlace, [&](auto* to, auto* from) {
            row->prepare({to, from, checkedSize.width, checkedSize.height})();
        });
        const double difference = usualDifference(conversion, expected, result);
        if (difference > tolerance(row->likeness))
            throw std::runtime_error(peer.name() + "'s " + conversion.name() + " differs from ours by " +
                                     std::to_string(difference) + " of 256 steps");
    }
}

Outcome Contest::run(const Conversion& conversion, Size size, const Memory& memory, Effort effort) const {
    Outcome outcome{&conversion, size, 0, {}};
    std::vector<Contestant> contestants{copying(conversion, size, memory)};
    const auto add = [&](const Contestant& contestant, Likeness likeness) {
        contestants.push_back(contestant);
        outcome.results.push_back({contestant.name, likeness, 0});
    };
    for (const kel::Level level : levels_) add(ours(conversion, size, memory, level), Likeness::same);
    const Job job{memory.to(), memory.from(), size.width, size.height};
    for (const Peer& peer : peers_)
        if (const PeerRow* row = find(peer, conversion.name()))
            add({peer.name(), row->prepare(job), peer.enter}, row->likeness);

    const std::vector<double> seconds = measure(contestants, effort);
    outcome.copySeconds = seconds[0];
    for (std::size_t i = 0; i < outcome.results.size(); ++i) outcome.results[i].seconds = seconds[i + 1];
    return outcome;
}

} // namespace bench
