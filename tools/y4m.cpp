#include <algorithm>

#include "picture.h"

namespace tool {

namespace {

constexpr std::uint8_t limited(int scaled) { return static_cast<std::uint8_t>((scaled + (1 << 15)) >> 16); }

} // namespace

// Planes of ITU-R BT.601 in its limited range, as video has it: Y 16 to 235, Cb and Cr 16 to 240. Grey as it is: ffmpeg takes
// that for the full range, whatever the header says.
Bytes encodeY4mFrame(const Picture& picture) {
    constexpr std::string_view begin = "FRAME\n";
    const std::size_t pixels = picture.size.pixels();
    Bytes frame(begin.size() + pixels * picture.channels);
    std::copy(begin.begin(), begin.end(), frame.begin());
    std::uint8_t *const y = frame.data() + begin.size(), *const cb = y + pixels, *const cr = cb + pixels;
    if (picture.channels == 1) {
        std::copy(picture.bytes.begin(), picture.bytes.end(), y);
        return frame;
    }
    const std::uint8_t* from = picture.bytes.data();
    for (std::size_t i = 0; i < pixels; ++i, from += 3) {
        const int red = from[0], green = from[1], blue = from[2];
        y[i] = limited((16 << 16) + 16829 * red + 33039 * green + 6416 * blue);
        cb[i] = limited((128 << 16) - 9714 * red - 19071 * green + 28785 * blue);
        cr[i] = limited((128 << 16) + 28785 * red - 24103 * green - 4682 * blue);
    }
    return frame;
}

} // namespace tool
