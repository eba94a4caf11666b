// A deep frame into an Eigen array, to calculate with, and from a block of another one.
#include <orvella/orvella.hpp>

#include <Eigen/Core>
#include <cstdint>
#include <cstdio>
#include <vector>

using Words = Eigen::Array<std::uint16_t, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

int main() {
    const std::vector<unsigned char> frame(640 * 480 * 3 / 2, 0x11); // Mono12p from your camera: every sample is 0x111
    Words grey(480, 640);
    orvella::convert(
        {frame, "Mono12p", {640, 480}},
        {std::span(grey.data(), static_cast<std::size_t>(grey.size())), orvella::Output::Mono16, {640, 480}});

    // A region of what it holds, as Mono16, to 8 bits: lines are as far apart as those of the whole.
    const auto region = grey.block(100, 200, 32, 64);
    const std::span from(region.data(), static_cast<std::size_t>(31 * grey.cols() + 64));
    const auto bytes = orvella::convert({from, "Mono16", {64, 32}, grey.cols() * 2}, orvella::Output::Mono8);

    std::printf("mean %g of 65535, %d of 255\n", grey.cast<double>().mean(), std::to_integer<int>(bytes.bytes()[0]));
    return grey.minCoeff() == 0x1110 && grey.maxCoeff() == 0x1110 && bytes.bytes()[0] == std::byte{0x11} ? 0 : 1;
}
