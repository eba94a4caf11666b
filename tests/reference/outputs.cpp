#include "reference/outputs.h"

#include <cstring>
#include <stdexcept>

namespace reference {

namespace {

int top8(int value, int bits) { return value >> (bits - 8); }
Byte byte(int value) { return static_cast<Byte>(value); }

void putWord(Byte* at, long value) {
    at[0] = static_cast<Byte>(value & 0xFF);
    at[1] = static_cast<Byte>(value >> 8 & 0xFF);
}

long rec601(const Colour& c) { return 77L * c.r + 150L * c.g + 29L * c.b; }
long rec709(const Colour& c) { return 54L * c.r + 184L * c.g + 18L * c.b + 128; }

// 8-bit channels give their sum unshifted, 16-bit ones the upper 16 bits of 24; a grey value is kept as it is.
void putMono16(Byte* at, long sum, const Colour& c) {
    if (c.grey)
        putWord(at, c.g);
    else
        putWord(at, c.bits == 16 ? sum >> 8 : sum);
}
void putMono8(Byte* at, long sum, const Colour& c) { *at = static_cast<Byte>(sum >> c.bits); }

void putUyvy(Byte* image, std::size_t index, const Colour& c) {
    Byte* pair = image + index / 2 * 4;
    const bool second = index % 2 == 1;
    if (c.grey) {
        image[2 * index] = 0;
        image[2 * index + 1] = byte(c.g);
        return;
    }
    const int y = ((66 * c.r + 129 * c.g + 25 * c.b + 128) >> 8) + 16;
    const int u = ((-38 * c.r - 74 * c.g + 112 * c.b + 128) >> 8) + 128;
    const int v = ((112 * c.r - 94 * c.g - 18 * c.b + 128) >> 8) + 128;
    pair[second ? 3 : 1] = byte(y);
    pair[0] = byte(second ? (pair[0] + u) >> 1 : u);
    pair[2] = byte(second ? (pair[2] + v) >> 1 : v);
}

} // namespace

std::size_t bytesPerPixel(Output output) {
    constexpr std::size_t bytes[] = {1, 3, 4, 3, 4, 1, 2, 2, 2, 6, 6, 3, 4, 2};
    return bytes[static_cast<int>(output)];
}

void put(Byte* image, std::size_t index, Output output, const Colour& c) {
    Byte* at = image + index * bytesPerPixel(output);
    const Byte r = byte(top8(c.r, c.bits)), g = byte(top8(c.g, c.bits)), b = byte(top8(c.b, c.bits));
    switch (output) {
    case Output::mono8: return putMono8(at, rec601(c), c);
    case Output::mono8Rec709: return putMono8(at, rec709(c), c);
    case Output::bgr24:
    case Output::bgra32: at[0] = b, at[1] = g, at[2] = r; return;
    case Output::rgb24:
    case Output::rgba32: at[0] = r, at[1] = g, at[2] = b; return;
    case Output::uyvy: return putUyvy(image, index, c);
    case Output::mono16: return putMono16(at, rec601(c), c);
    case Output::mono16Rec709: return putMono16(at, rec709(c), c);
    case Output::bgr48: putWord(at, c.b), putWord(at + 2, c.g), putWord(at + 4, c.r); return;
    case Output::rgb48: putWord(at, c.r), putWord(at + 2, c.g), putWord(at + 4, c.b); return;
    case Output::mono16BigEndian:
        at[0] = byte(c.g >> 8);
        at[1] = byte(c.g & 0xFF);
        return;
    case Output::planes:
    case Output::planesWithLuma: throw std::logic_error("planes are not written pixel by pixel");
    }
}

void copyColour(Byte* image, std::size_t to, std::size_t from, Output output) {
    const std::size_t pitch = bytesPerPixel(output);
    std::memcpy(image + to * pitch, image + from * pitch, pitch == 4 ? 3 : pitch);
}

void copyPixel(Byte* image, std::size_t to, std::size_t from, Output output) {
    const std::size_t pitch = bytesPerPixel(output);
    std::memcpy(image + to * pitch, image + from * pitch, pitch);
}

} // namespace reference
