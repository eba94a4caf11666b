#include <cstring>

#include "reference/families.h"

namespace reference {

namespace {

Colour grey(int value, int bits) { return {value, value, value, bits, true}; }

bool isMono16(Output output) { return output == Output::mono16 || output == Output::mono16Rec709; }
bool isDeep(Output output) { return isMono16(output) || output == Output::bgr48 || output == Output::rgb48; }

// A grey value is copied to Mono8; the weights sum to 256 and change nothing.
void putGrey(const Job& job, std::size_t i, int value16) {
    put(job.destination, i, job.output, isDeep(job.output) ? grey(value16, 16) : grey(value16 >> 8, 8));
}

// Full depth: bits 6 and 7 of the fraction raise blue and red by one step.
void fullDepth(const Job& job, std::size_t mainOffset, std::size_t fractionOffset) {
    if (isMono16(job.output)) {
        std::memcpy(job.destination, job.source, 2 * job.pixels());
        return;
    }
    const bool needsFraction = job.output != Output::mono8 && job.output != Output::mono8Rec709;
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const int main = job.source[2 * i + mainOffset];
        const int fraction = needsFraction ? job.source[2 * i + fractionOffset] : 0xFF;
        const int blue = fraction & 0x40 && main < 255 ? main + 1 : main;
        const int red = fraction & 0x80 && main < 255 ? main + 1 : main;
        put(job.destination, i, job.output, {red, main, blue});
    }
}

} // namespace

int sample10p(const Byte* row, std::size_t i) {
    const int word = littleEndian(row + i * 10 / 8);
    switch (i % 4) {
    case 0: return word * 64 & 0xFFFF;
    case 1: return word * 16 & 0xFFC0;
    case 2: return word * 4 & 0xFFC0;
    default: return word & 0xFFC0;
    }
}

int sample12p(const Byte* row, std::size_t i) {
    const int word = littleEndian(row + i * 12 / 8);
    return i % 2 == 0 ? word * 16 & 0xFFFF : word & 0xFFF0;
}

int sample12Packed(const Byte* row, std::size_t i) {
    const Byte* group = row + i / 2 * 3;
    const int value = i % 2 == 0 ? group[0] << 4 | (group[1] & 0x0F) : group[2] << 4 | group[1] >> 4;
    return value << 4;
}

void mono8(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) put(job.destination, i, job.output, grey(job.source[i], 8));
}

void mono16(const Job& job) { fullDepth(job, 1, 2); }
void mono16BigEndian(const Job& job) { fullDepth(job, 0, 1); }

template <int bitsUsed, bool isBigEndian> void monoShifted(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* at = job.source + 2 * i;
        putGrey(job, i, (isBigEndian ? bigEndian(at) : littleEndian(at)) << (16 - bitsUsed) & 0xFFFF);
    }
}
template void monoShifted<10, false>(const Job&);
template void monoShifted<12, false>(const Job&);
template void monoShifted<12, true>(const Job&);
template void monoShifted<14, false>(const Job&);

void mono12Packed(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i)
        put(job.destination, i, job.output, grey(job.source[i / 2 * 3 + (i % 2 == 0 ? 0 : 2)], 8));
}

void mono10p(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) putGrey(job, i, sample10p(job.source, i));
}
void mono12p(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) putGrey(job, i, sample12p(job.source, i));
}

// A sample in the low bits of its word: rounded by the bit below its top eight, tinted by the two bits below.
template <int bits, bool isBigEndian> void monoRounded(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const int word = isBigEndian ? bigEndian(job.source + 2 * i) : littleEndian(job.source + 2 * i);
        const int value = word >> (bits - 8) & 0xFF;
        job.destination[i] = static_cast<Byte>(value < 255 && word & 1 << (bits - 9) ? value + 1 : value);
    }
}
template void monoRounded<16, true>(const Job&);
template void monoRounded<16, false>(const Job&);
template void monoRounded<12, false>(const Job&);
template void monoRounded<9, true>(const Job&);

template <int bits, bool isBigEndian> void monoTinted(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const int word = isBigEndian ? bigEndian(job.source + 2 * i) : littleEndian(job.source + 2 * i);
        const int green = word >> (bits - 8) & 0xFF;
        const bool blueUp = word & 1 << (bits - 10), redUp = word & 1 << (bits - 9);
        put(job.destination, i, job.output,
            {green < 255 && redUp ? green + 1 : green, green, green < 255 && blueUp ? green + 1 : green});
    }
}
template void monoTinted<16, true>(const Job&);
template void monoTinted<16, false>(const Job&);
template void monoTinted<12, false>(const Job&);
template void monoTinted<10, true>(const Job&);

void mono12PackedWhole(const Job& job) {
    for (std::size_t i = 0; i < job.pixels(); ++i) {
        const Byte* group = job.source + i / 2 * 3;
        const int sample = i % 2 == 0 ? group[0] << 4 | (group[1] & 15) : group[2] << 4 | group[1] >> 4;
        put(job.destination, i, job.output, grey(sample << 4, 16));
    }
}

} // namespace reference
