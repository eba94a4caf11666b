// A Converter's loop asks for no memory after the first frame of a kind.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <vector>

#include "orvella/orvella.hpp"

namespace {
std::size_t allocations = 0;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace {

using namespace orvella;

TEST(CppConverter, AllocatesForTheFirstFrameOnly) {
    const std::vector<std::uint8_t> memory(64 * 64 * 2, 50);
    const Frame frame(memory, PixelFormat::BayerRG8, {64, 64});
    const auto inTurn = [](std::size_t n, const Job& job) {
        for (std::size_t i = 0; i < n; ++i) job(i);
    };
    Picture picture(Output::Rgba32, {64, 64}), region(Output::Rgba32, {32, 32});
    Converter converter;
    const auto frames = [&] {
        for (const Debayer debayer : {Debayer::Mode2x2, Debayer::Mode3x3, Debayer::LCAA}) {
            const Options options{.debayer = debayer};
            converter.convert(frame, picture, options);
            converter.convert(crop(frame, 5, 3, 32, 32), region, options);
            converter.convert(flipped(frame, Flip::Both), picture, options);
            if (debayer != Debayer::LCAA) converter.convert(frame, picture, options, inTurn);
        }
    };
    frames();
    const std::size_t before = allocations;
    for (int i = 0; i < 100; ++i) frames();
    EXPECT_EQ(allocations, before);
    EXPECT_GT(before, 0u);
}

} // namespace
