// Random conversions of the catalogue: the same bytes at every instruction-set level of the machine, and of every second
// one those of the definition.
//
//     orvella_differential [--state FILE] [--commit NAME] [--seconds S] [--conversions N] [--share K/N]
//     orvella_differential --batch B [--case C]
//
// A batch is determined by its number, on every machine: 50000 cases of a conversion, a size, a mosaic's phase, in place
// or not, the contents of both buffers and a colour matrix. A case is converted once per level, each time at another
// alignment and with other bytes around the buffers, which must stay; and nothing of the source may change but what the
// conversion says. The state is a line of JSON per finished batch, with the commit; batches that it has of this commit are
// not run again. --share 0/2 and 1/2 divide the batches among two processes. Without --state, --batch is run and printed.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "catalogue/conversions.h"
#include "definition/definition.h"
#include "kernels/level.h"
#include "proof/noise.h"
#include "proof/random.h"
#include "proof/watched_buffer.h"

namespace proof {

namespace {

using catalogue::Conversion;
using Bytes = std::span<const std::uint8_t>;

constexpr std::uint64_t casesOfBatch = 50000;
constexpr std::size_t longest = 1 << 18; // bytes of a buffer

struct Row {
    const Conversion& conversion;
    definition::Function definition;
};

std::vector<Row> rows() {
    std::vector<Row> rows;
    for (const Conversion& conversion : catalogue::conversions())
        rows.push_back({conversion, definition::find(conversion.name())});
    return rows;
}

struct Case {
    const Row& row;
    std::uint32_t width, height, pattern;
    bool inPlace, againstDefinition;
    Bytes source, prefill; // of the destination
    std::uint64_t seed;    // of alignments and surroundings
};

// Mostly tiny; some around the blocks of kernels, narrow and high, long, and as wide as the strips of mosaics.
void chooseSize(Random& random, std::uint32_t& width, std::uint32_t& height) {
    const std::uint32_t kind = random.below(200);
    const auto choose = [&](std::uint32_t least, std::uint32_t most, std::uint32_t highest) {
        width = random.between(least, most);
        height = random.between(1, highest);
    };
    if (kind < 140)
        choose(1, 40, 6);
    else if (kind < 176)
        choose(56, 145, 4);
    else if (kind < 190)
        choose(1, 8, 40);
    else if (kind < 199)
        choose(1, 600, 3);
    else
        choose(4000, 4300, 2);
}

std::uint32_t fitting(std::uint32_t size, std::uint32_t step, std::uint32_t smallest) {
    return (std::max(size, smallest) + step - 1) / step * step;
}

// Mostly as of cameras; some that saturate everything, overflow or are no numbers.
void chooseMatrix(Random random) {
    constexpr float odd[] = {0.0F, 1.0F, -1.0F, 31.999F, -32.0F, 1e6F, -3e38F, __builtin_nanf("")};
    const bool isOdd = random.below(4) == 0;
    float matrix[9];
    for (float& coefficient : matrix)
        coefficient =
            isOdd && random.below(2) ? odd[random.below(8)] : static_cast<float>(random.below(4096)) / 1024.0F - 1.5F;
    catalogue::useMatrix(matrix);
}

class Differences {
public:
    explicit Differences(std::uint64_t batch) : batch_(batch) {}

    void add(std::uint64_t number, const Case& of, kel::Level level, const std::string& what) {
        if (++count_ > shown) return;
        std::cerr << of.row.conversion.name() << ", " << of.width << 'x' << of.height << ", pattern " << of.pattern
                  << (of.inPlace ? ", in place" : "") << ", at level " << kel::nameOf(level) << ": " << what
                  << "\n    orvella_differential --batch " << batch_ << " --case " << number << '\n';
    }
    std::uint64_t count() const { return count_; }

private:
    static constexpr std::uint64_t shown = 20;
    std::uint64_t batch_, count_ = 0;
};

std::string firstDifference(const char* in, Bytes expected, Bytes actual) {
    const auto at = static_cast<std::size_t>(std::mismatch(expected.begin(), expected.end(), actual.begin()).first -
                                             expected.begin());
    return std::string("byte ") + std::to_string(at) + " of " + std::to_string(expected.size()) + " of the " + in +
           " is " + std::to_string(actual[at]) + ", not " + std::to_string(expected[at]);
}

bool same(Bytes a, Bytes b) { return a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0; }

class Batch {
public:
    struct Counts {
        std::uint64_t cases = 0, conversions = 0, againstDefinition = 0, differences = 0;
    };

    Batch(const std::vector<Row>& rows, std::uint64_t number)
        : rows_(rows), seed_(Random(number).next()), noise_(seed_, longest), differences_(number) {
        chooseMatrix(Random(~seed_)); // whose coefficients the definition is given, too
    }

    Counts run(std::uint64_t first, std::uint64_t last) {
        for (std::uint64_t i = first; i <= last; ++i) check(i, choose(i));
        counts_.differences = differences_.count();
        return counts_;
    }

private:
    Case choose(std::uint64_t number) const {
        Random random(seed_ + number);
        const Row& row = rows_[random.below(static_cast<std::uint32_t>(rows_.size()))];
        const Conversion& conversion = row.conversion;
        std::uint32_t width = 0, height = 0;
        chooseSize(random, width, height);
        width = fitting(width, conversion.widthStep, conversion.smallest);
        height = fitting(height, conversion.heightStep, conversion.smallest);
        const std::uint32_t pattern = random.below(conversion.patterns);
        const bool inPlace = conversion.onlyInPlace || (conversion.inPlace && random.below(4) == 0);
        const Bytes source(noise_.take(random), conversion.sourceSize(width, height) + conversion.beyond);
        const Bytes prefill(noise_.take(random), conversion.destinationSize(width, height));
        return {row, width, height, pattern, inPlace, number % 2 == 0, source, prefill, random.next()};
    }

    void check(std::uint64_t number, const Case& of) {
        ++counts_.cases;
        if (of.againstDefinition) {
            define(of);
            ++counts_.againstDefinition;
        }
        bool known = of.againstDefinition; // what the destination and the source are to become
        for (const kel::Level level : kel::levels) {
            if (level > kel::highestLevel()) break;
            kel::limitLevel(level);
            kel::paceLoopsFrom(number % 4 < 2 ? 0 : UINTPTR_MAX);
            Random random(of.seed + static_cast<std::uint64_t>(level));
            std::uint8_t* source = source_.place(of.source, random.below(64), noise_.take(random));
            std::uint8_t* destination =
                of.inPlace ? source : destination_.place(of.prefill, random.below(64), noise_.take(random));
            const OrvErrorType result = of.row.conversion.convert(destination, source, of.width, of.height, of.pattern);
            ++counts_.conversions;
            if (result != OrvErrorSuccess) differences_.add(number, of, level, "refused: " + std::to_string(result));
            if (!source_.surroundingsIntact() || (!of.inPlace && !destination_.surroundingsIntact()))
                differences_.add(number, of, level, "bytes around the buffers changed");
            if (!known) keep(of);
            known = true;
            compare(number, of, level);
        }
    }

    // What the first level made is what the others are compared with. (A source that is to stay is known.)
    void keep(const Case& of) {
        const bool sourceChanges = of.inPlace || of.row.conversion.overwritesSource;
        const Bytes source = sourceChanges ? Bytes(source_.bytes()) : of.source;
        expectedSource_.assign(source.begin(), source.end());
        if (!of.inPlace) expected_.assign(destination_.bytes().begin(), destination_.bytes().end());
    }

    void define(const Case& of) {
        expectedSource_.assign(of.source.begin(), of.source.end());
        const Bytes prefill = of.inPlace ? of.source.first(of.prefill.size()) : of.prefill;
        expected_.assign(prefill.begin(), prefill.end());
        of.row.definition(
            {expected_.data(), expectedSource_.data(), of.width, of.height, of.pattern, catalogue::matrixInUse()});
        if (of.inPlace && !of.row.conversion.onlyInPlace)
            std::copy(expected_.begin(), expected_.end(), expectedSource_.begin());
    }

    void compare(std::uint64_t number, const Case& of, kel::Level level) {
        if (!same(expectedSource_, source_.bytes()))
            differences_.add(number, of, level, firstDifference("source", expectedSource_, source_.bytes()));
        if (!of.inPlace && !same(expected_, destination_.bytes()))
            differences_.add(number, of, level, firstDifference("destination", expected_, destination_.bytes()));
    }

    const std::vector<Row>& rows_;
    std::uint64_t seed_;
    Noise noise_;
    Differences differences_;
    Counts counts_;
    WatchedBuffer source_{longest}, destination_{longest};
    std::vector<std::uint8_t> expectedSource_, expected_;
};

struct Options {
    std::string state, commit = "unknown";
    double seconds = 1e18;
    std::uint64_t conversions = ~std::uint64_t{0}, batch = 0, onlyCase = ~std::uint64_t{0}, share = 0, shares = 1;
};

bool parse(int count, char** arguments, Options& options) {
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string name = arguments[i];
        const char* value = arguments[i + 1];
        if (name == "--state")
            options.state = value;
        else if (name == "--commit")
            options.commit = value;
        else if (name == "--seconds")
            options.seconds = std::atof(value);
        else if (name == "--conversions")
            options.conversions = std::strtoull(value, nullptr, 10);
        else if (name == "--batch")
            options.batch = std::strtoull(value, nullptr, 10);
        else if (name == "--case")
            options.onlyCase = std::strtoull(value, nullptr, 10);
        else if (name == "--share") {
            char* rest = nullptr;
            options.share = std::strtoull(value, &rest, 10);
            options.shares = *rest == '/' ? std::strtoull(rest + 1, nullptr, 10) : 0;
        } else
            return false;
    }
    return count % 2 == 1 && options.share < options.shares;
}

// The number that follows `key` in a line of the state.
std::uint64_t numberIn(const std::string& line, const std::string& key) {
    const auto at = line.find('"' + key + "\": ");
    return at == std::string::npos ? 0 : std::strtoull(line.c_str() + at + key.size() + 4, nullptr, 10);
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string levelNames() {
    std::string names;
    for (const kel::Level level : kel::levels)
        if (level <= kel::highestLevel()) names += std::string(names.empty() ? "" : " ") + kel::nameOf(level);
    return names;
}

// The state's line of a batch, which has been run.
std::string lineOf(const std::vector<Row>& rows, std::uint64_t number, const Options& options) {
    const auto start = std::chrono::steady_clock::now();
    const bool one = options.onlyCase < casesOfBatch;
    const Batch::Counts counts =
        Batch(rows, number).run(one ? options.onlyCase : 0, one ? options.onlyCase : casesOfBatch - 1);
    char line[512];
    std::snprintf(line, sizeof line,
                  "{\"batch\": %llu, \"commit\": \"%s\", \"levels\": \"%s\", \"cases\": %llu, \"conversions\": %llu, "
                  "\"definition\": %llu, \"differences\": %llu, \"seconds\": %.2f}\n",
                  static_cast<unsigned long long>(number), options.commit.c_str(), levelNames().c_str(),
                  static_cast<unsigned long long>(counts.cases), static_cast<unsigned long long>(counts.conversions),
                  static_cast<unsigned long long>(counts.againstDefinition),
                  static_cast<unsigned long long>(counts.differences), secondsSince(start));
    return line;
}

int run(const Options& options) {
    const std::vector<Row> all = rows();
    if (options.state.empty()) {
        const std::string line = lineOf(all, options.batch, options);
        std::fputs(line.c_str(), stdout);
        return numberIn(line, "differences") > 0;
    }

    std::set<std::uint64_t> finished;
    std::uint64_t conversions = 0, differences = 0;
    std::ifstream before(options.state);
    for (std::string line; std::getline(before, line);) {
        const std::uint64_t batch = numberIn(line, "batch");
        if (line.find("\"commit\": \"" + options.commit + '"') == std::string::npos) continue;
        if (batch % options.shares == options.share && finished.insert(batch).second)
            conversions += numberIn(line, "conversions");
    }
    const auto start = std::chrono::steady_clock::now();
    for (std::uint64_t batch = options.share;
         conversions < options.conversions / options.shares && secondsSince(start) < options.seconds;
         batch += options.shares) {
        if (finished.contains(batch)) continue;
        const std::string line = lineOf(all, batch, options);
        conversions += numberIn(line, "conversions");
        differences += numberIn(line, "differences");
        std::FILE* state = std::fopen(options.state.c_str(), "a");
        if (!state || std::fputs(line.c_str(), state) < 0 || std::fclose(state) != 0) {
            std::perror(options.state.c_str());
            return 2;
        }
    }
    return differences > 0;
}

} // namespace

} // namespace proof

int main(int count, char** arguments) {
    proof::Options options;
    if (!proof::parse(count, arguments, options)) {
        std::cerr << "orvella_differential [--state FILE] [--commit NAME] [--seconds S] [--conversions N] [--share K/N]"
                     " | [--batch B] [--case C]\n";
        return 2;
    }
    return proof::run(options);
}
