// Colour-correction objects: what a handle points to, the set of live ones, and what outlives the library.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <limits>
#include <thread>
#include <vector>

#include "correction/registry.h"
#include "orvella/exceptions.hpp"
#include "orvella/orv.h"
#include "support/pages.h"
#include "support/start_line.h"

namespace {

constexpr float identity[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};

// The objects' memory is never freed. Kept in reach, they are no leaks.
std::vector<ColorCorrectionHandle>& kept() {
    static auto& handles = *new std::vector<ColorCorrectionHandle>;
    return handles;
}

constexpr int most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();

using Create = OrvErrorType (*)(const float*, ColorCorrectionHandle*);

ColorCorrectionHandle make(Create create, const float* matrix) {
    ColorCorrectionHandle handle = nullptr;
    EXPECT_EQ(create(matrix, &handle), OrvErrorSuccess);
    kept().push_back(handle);
    return handle;
}

using Words = std::array<std::int32_t, 10>;
Words wordsOf(ColorCorrectionHandle handle) {
    Words words{};
    std::memcpy(words.data(), handle, sizeof words);
    return words;
}

TEST(ColorCorrectionObjects, HoldTheKindAndTruncatedCoefficients) {
    const float matrix[] = {1, 1.0009765625F, 0.0009F, 0.9995F, -0.5005F, -0.0009F, 2097151.875F, -2097152, 0.25F};
    EXPECT_EQ(wordsOf(make(OrvCreateColorCorrectionMatrix_Int8, matrix)),
              (Words{2, 1024, 1025, 0, 1023, -512, 0, 2147483520, least, 256}));
    EXPECT_EQ(wordsOf(make(OrvCreateColorCorrectionMatrix_Int16, identity)),
              (Words{3, 1024, 0, 0, 0, 1024, 0, 0, 0, 1024}));
}

TEST(ColorCorrectionObjects, HoldTheNearestOfWhatDoesNotFit) {
    const float matrix[] = {2097152,    -2097153, 3e38F,         -3e38F,        HUGE_VALF,
                            -HUGE_VALF, 1e-40F,   std::nanf(""), -std::nanf("")};
    EXPECT_EQ(wordsOf(make(OrvCreateColorCorrectionMatrix_Int8, matrix)),
              (Words{2, most, least, most, least, most, least, 0, 0, 0}));
}

TEST(ColorCorrectionObjects, RefuseNull) {
    for (const Create create : {OrvCreateColorCorrectionMatrix_Int8, OrvCreateColorCorrectionMatrix_Int16}) {
        int target = 0;
        ColorCorrectionHandle handle = &target;
        EXPECT_EQ(create(nullptr, &handle), OrvErrorBadParameter);
        EXPECT_EQ(handle, &target);
        EXPECT_EQ(create(identity, nullptr), OrvErrorBadParameter);
        EXPECT_EQ(create(nullptr, nullptr), OrvErrorBadParameter);
    }
}

TEST(ColorCorrectionObjects, AreTakenOutOfTheSetOnce) {
    const std::size_t before = kel::registry().size();
    const ColorCorrectionHandle a = make(OrvCreateColorCorrectionMatrix_Int8, identity);
    const ColorCorrectionHandle b = make(OrvCreateColorCorrectionMatrix_Int16, identity);
    EXPECT_EQ(kel::registry().size(), before + 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(OrvDestroyColorCorrection(a), OrvErrorBadParameter);
        EXPECT_EQ(kel::registry().size(), before + 1);
    }
    EXPECT_EQ(wordsOf(a)[0], 2); // still readable
    EXPECT_EQ(OrvDestroyColorCorrection(b), OrvErrorBadParameter);
    EXPECT_EQ(kel::registry().size(), before);
}

TEST(ColorCorrectionObjects, AreNotReadWhenDestroyed) {
    const support::Pages page(support::Pages::size);
    EXPECT_EQ(OrvDestroyColorCorrection(page.data()), OrvErrorBadParameter);
    EXPECT_EQ(OrvDestroyColorCorrection(nullptr), OrvErrorBadParameter);
}

TEST(ColorCorrectionObjects, CanBeMadeAndDestroyedByManyThreads) {
    constexpr std::size_t threadCount = 4, rounds = 500;
    const std::size_t before = kel::registry().size();
    std::vector<std::vector<ColorCorrectionHandle>> handles(threadCount, std::vector<ColorCorrectionHandle>(rounds));
    support::StartLine start(threadCount);
    std::vector<std::thread> threads;
    for (auto& own : handles)
        threads.emplace_back([&start, &own] {
            start.wait();
            for (std::size_t i = 0; i < rounds; ++i) {
                OrvCreateColorCorrectionMatrix_Int8(identity, &own[i]);
                if (i % 2 == 1) OrvDestroyColorCorrection(own[i - 1]);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(kel::registry().size(), before + threadCount * rounds / 2);
    for (const auto& own : handles) kept().insert(kept().end(), own.begin(), own.end());
}

// After a fork, the thread that held the lock may be no more: the process must come to its end all the same.
TEST(ColorCorrectionObjects, AreNotWaitedForWhereAThreadHoldsTheLock) {
    kel::thread::Mutex mutex;
    const kel::thread::Guard guard(mutex);
    bool taken = true;
    std::thread([&] { taken = mutex.tryLock(); }).join();
    EXPECT_FALSE(taken);
}

// A thread that outlives main() goes on making and destroying objects while the process is taken down.
TEST(ColorCorrectionObjects, CanBeMadeWhileTheProcessExits) {
    const auto exitDuringAStorm = [] {
        const auto makeOne = [] {
            ColorCorrectionHandle handle = nullptr;
            OrvCreateColorCorrectionMatrix_Int8(identity, &handle);
            kept().push_back(handle);
        };
        for (int i = 0; i < 100'000; ++i) makeOne();
        std::thread([makeOne] {
            for (;;) makeOne(), OrvDestroyColorCorrection(kept().back());
        }).detach();
        std::exit(0);
    };
    for (int i = 0; i < 5; ++i) EXPECT_EXIT(exitDuringAStorm(), ::testing::ExitedWithCode(0), "");
}

#ifdef ORVELLA_LIBRARY
TEST(ColorCorrectionObjects, OutliveTheLibrary) {
    void* library = dlopen(ORVELLA_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(library) << dlerror();
    const auto create = reinterpret_cast<Create>(dlsym(library, "OrvCreateColorCorrectionMatrix_Int8"));
    ASSERT_TRUE(create);
    const ColorCorrectionHandle handle = make(create, identity);
    ASSERT_EQ(dlclose(library), 0);
    ASSERT_FALSE(dlopen(ORVELLA_LIBRARY, RTLD_NOW | RTLD_NOLOAD)) << "was not unloaded";
    EXPECT_EQ(wordsOf(handle), (Words{2, 1024, 0, 0, 0, 1024, 0, 0, 0, 1024}));
}
#endif

// The text is the standard library's.
TEST(Exceptions, AreStandardExceptions) {
    const kel::thread::KELThreadException thread;
    const kel::thread::pthread_exception attribute("message", "operation", 7);
    const kel::system::KELSystemException system;
    for (const std::exception* exception :
         {static_cast<const std::exception*>(&thread), static_cast<const std::exception*>(&attribute),
          static_cast<const std::exception*>(&system)})
        EXPECT_STREQ(exception->what(), std::exception().what());
}

} // namespace
