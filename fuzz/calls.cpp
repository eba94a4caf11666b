#include "fuzz/calls.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>

#include "kernels/level.h"
#include "proof/noise.h"

namespace fuzz {

namespace {

const proof::Noise noise(1, 2 * longest);

// Memory that ends where it is to end; buffers lie in it at any alignment.
class Block {
public:
    Block(std::size_t size, std::size_t shift, proof::Random& random)
        : memory_(new std::uint8_t[shift + size]), contents_(noise.take(random), shift + size) {}

    std::uint8_t* data() const { return memory_.get(); }
    std::span<const std::uint8_t> bytes() const { return {memory_.get(), contents_.size()}; }
    void fill() const {
        if (!contents_.empty()) std::memcpy(memory_.get(), contents_.data(), contents_.size());
    }
    bool isUntouched() const { return isAs(contents_); }
    bool isAs(std::span<const std::uint8_t> other) const {
        return contents_.empty() || std::memcmp(memory_.get(), other.data(), contents_.size()) == 0;
    }

private:
    std::unique_ptr<std::uint8_t[]> memory_;
    std::span<const std::uint8_t> contents_;
};

class Memory {
public:
    Memory(const Job& job, Choices& choices) {
        proof::Random random(choices.ConsumeIntegral<std::uint16_t>());
        const std::uint32_t how = job.sizes.size() < 2 ? 0 : choices.below(job.mayOverlap ? 8 : job.inPlace ? 7 : 6);
        isDefined_ = how < 6 || (how == 6 && job.inPlace);
        sourceIsApart_ = how < 6;
        std::size_t first = 0;
        if (how >= 6) { // the first two overlap
            const std::size_t apart = how == 6 ? 0 : choices.below(80);
            const bool sourceFirst = choices.ConsumeBool();
            const std::size_t at[] = {sourceFirst ? apart : 0, sourceFirst ? 0 : apart};
            blocks_.emplace_back(std::max(at[0] + job.sizes[0], at[1] + job.sizes[1]), 0, random);
            for (const std::size_t offset : at) buffers_.push_back(blocks_.back().data() + offset);
            first = 2;
        }
        for (std::size_t i = first; i < job.sizes.size(); ++i) {
            const std::size_t shift = choices.below(16);
            blocks_.emplace_back(job.sizes[i], shift, random);
            buffers_.push_back(blocks_.back().data() + shift);
        }
        if (choices.once(8)) buffers_[choices.below(static_cast<std::uint32_t>(buffers_.size()))] = nullptr;
    }

    std::uint8_t* const* buffers() const { return buffers_.data(); }
    void fill() const {
        for (const Block& block : blocks_) block.fill();
    }
    bool isDefined() const { return isDefined_; } // what the call makes of buffers that lie so
    bool isUntouched() const {
        return std::ranges::all_of(blocks_, [](const Block& block) { return block.isUntouched(); });
    }
    bool sourceIsUntouched() const { return !sourceIsApart_ || blocks_.size() < 2 || blocks_[1].isUntouched(); }
    std::vector<std::uint8_t> bytes() const {
        std::vector<std::uint8_t> all;
        for (const Block& block : blocks_) all.insert(all.end(), block.bytes().begin(), block.bytes().end());
        return all;
    }

private:
    std::vector<Block> blocks_;
    std::vector<std::uint8_t*> buffers_;
    bool isDefined_, sourceIsApart_;
};

void require(bool holds, const Job& job, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s, at level %s: %s\n", job.name, kel::nameOf(kel::level()), what);
    std::abort();
}

bool isRefusal(std::uint32_t answer) { return static_cast<std::int32_t>(answer) < 0; } // of both faces

} // namespace

void run(const Job& job, Choices& choices) {
    const Memory memory(job, choices);
    std::optional<std::vector<std::uint8_t>> expected;
    for (const auto& face : job.faces) {
        std::optional<std::uint32_t> answer;
        for (const kel::Level level : kel::levels) {
            if (level > kel::highestLevel()) break;
            kel::limitLevel(level);
            memory.fill();
            const std::uint32_t found = face(memory.buffers());
            require(!answer || *answer == found, job, "another answer than at lower levels");
            answer = found;
            if (isRefusal(found)) require(memory.isUntouched(), job, "refused, and yet something is written");
            if (!job.changesSource) require(memory.sourceIsUntouched(), job, "the source has changed");
            if (isRefusal(found) || !memory.isDefined()) continue; // the faces do not refuse quite the same
            if (!expected) expected = memory.bytes();
            require(*expected == memory.bytes(), job, "other bytes than at lower levels, or by the other face");
        }
    }
}

} // namespace fuzz
