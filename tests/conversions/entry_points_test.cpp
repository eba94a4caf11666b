// Every exported function, called by many threads at once from the library's first call on: each thread has buffers of its
// own and gets what a thread alone gets.
#include <gtest/gtest.h>

#include <array>
#include <list>
#include <new>
#include <thread>
#include <tuple>
#include <type_traits>
#include <vector>

#include "entry_points.h"
#include "orvella/zeb.h"
#include "support/fill.h"
#include "support/start_line.h"

namespace {

// What a thread hands to the functions: in round k all sizes, counts and codes are k, all buffers large enough.
class Caller {
public:
    std::vector<std::intptr_t> answers;

    explicit Caller(std::uint32_t round) : round_(round) {
        support::Random random(round);
        for (support::Bytes& buffer : buffers_) buffer = support::filled(4096, support::Contents::noise, random);
        images_[0].Size = images_[1].Size = sizeof(OrvImage);
        OrvSetImageInfoFromPixelFormat(OrvPixelFormatBayerRG8, round, round, &images_[0]);
        OrvSetImageInfoOutput(OrvOutputBgr24, round, round, &images_[1]);
        images_[0].Data = buffers_[0].data(), images_[1].Data = buffers_[1].data();
        for (std::uint32_t i = 0; i < 16; ++i) OrvSetDebayerMode(round % 6, &options_[i]);
    }

    ~Caller() {
        for (const ColorCorrectionHandle handle : handles_) {
            OrvDestroyColorCorrection(handle);
            ::operator delete(handle);
        }
    }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    template <class Answer, class... Args> void call(Answer (*function)(Args...)) {
        pointers_ = 0;
        // In braces, arguments are taken from left to right.
        const std::tuple<Args...> arguments{argument<Args>()...};
        answers.push_back(static_cast<std::intptr_t>(std::apply(function, arguments)));
    }
    // The addresses of objects differ.
    bool operator==(const Caller& other) const { return answers == other.answers && buffers_ == other.buffers_; }

private:
    template <class T> T argument() {
        if constexpr (std::is_same_v<T, OrvImage*> || std::is_same_v<T, const OrvImage*>)
            return &images_[pointers_++ % 2];
        else if constexpr (std::is_same_v<T, OrvTransformInfo*> || std::is_same_v<T, const OrvTransformInfo*>)
            return options_;
        else if constexpr (std::is_same_v<T, const OrvShiftRecord*>)
            return &shift_;
        else if constexpr (std::is_same_v<T, ColorCorrectionHandle*>)
            return &handles_[handlesMade_++];
        else if constexpr (std::is_same_v<T, const char*>)
            return names_[round_ % 4];
        else if constexpr (std::is_pointer_v<T>)
            return reinterpret_cast<T>(buffers_[pointers_++ % 6].data());
        else
            return static_cast<T>(round_);
    }

    static constexpr const char* names_[] = {"BGR24", "PixelFormatMono12p", "OrvPixelFormatBayerRG8", "no such"};
    std::uint32_t round_;
    std::size_t pointers_ = 0;
    std::array<support::Bytes, 6> buffers_;
    OrvImage images_[2] = {};
    OrvTransformInfo options_[16] = {};
    OrvShiftRecord shift_{0, 1, 12, 0, 1};
    ColorCorrectionHandle handles_[4] = {};
    std::size_t handlesMade_ = 0;
};

using AllCalls = std::list<Caller>;
AllCalls callAll() {
    AllCalls rounds;
    for (std::uint32_t round = 0; round <= 16; ++round) {
        Caller& caller = rounds.emplace_back(round);
#define ORVELLA_CALL(function) caller.call(function);
        ORVELLA_ENTRY_POINTS(ORVELLA_CALL)
    }
    return rounds;
}

TEST(Threads, CallEveryEntryPointAtOnce) {
    constexpr std::size_t threadCount = 4;
    std::vector<AllCalls> made(threadCount);
    support::StartLine start(threadCount);
    std::vector<std::thread> threads;
    for (AllCalls& calls : made)
        threads.emplace_back([&] {
            start.wait();
            calls = callAll();
        });
    for (std::thread& thread : threads) thread.join();

    const AllCalls alone = callAll();
    std::size_t successes = 0;
    for (const Caller& caller : alone)
        for (const std::intptr_t answer : caller.answers) successes += answer == 0;
    EXPECT_GT(alone.front().answers.size(), 180U);
    EXPECT_GT(successes, 1000U);
    for (const AllCalls& calls : made) EXPECT_TRUE(calls == alone);
}

} // namespace
