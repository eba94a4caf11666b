// A packed Bayer frame becomes RGB24, as display code wants it.
#include <orvella/orvella.hpp>

#include <cstdio>
#include <vector>

int main() {
    const std::vector<unsigned char> frame(640 * 480 * 3 / 2, 128); // from your camera

    auto picture = orvella::convert({frame, orvella::PixelFormat::BayerRG12p, {640, 480}}, orvella::Output::Rgb24);

    const auto line = picture.line(0);
    std::printf("first pixel R %d G %d B %d\n", line[0], line[1], line[2]);
}
