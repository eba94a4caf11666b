// The conversions, by family.
#pragma once
#include "reference/reference.h"

namespace reference {

inline int littleEndian(const Byte* at) { return at[0] | at[1] << 8; }
inline int bigEndian(const Byte* at) { return at[0] << 8 | at[1]; }

// Mono
void mono8(const Job& job);
void mono16(const Job& job);
void mono16BigEndian(const Job& job);
template <int bitsUsed, bool isBigEndian> void monoShifted(const Job& job);
void mono12Packed(const Job& job);
void mono10p(const Job& job);
void mono12p(const Job& job);
template <int bits, bool isBigEndian> void monoRounded(const Job& job);
template <int bits, bool isBigEndian> void monoTinted(const Job& job);
void mono12PackedWhole(const Job& job);

// Colour
void rgb8(const Job& job);
void bgr8(const Job& job);
void rgba8(const Job& job);
void bgra8(const Job& job);
void yuv411(const Job& job);
void yuv422(const Job& job);
void yuv444(const Job& job);
void rgb8ByDoublePrecision(const Job& job);
void rgb8Planes(const Job& job);
void yuv411Planes(const Job& job);
void yuv422Planes(const Job& job);
void yuv444Planes(const Job& job);
Colour yuvColour(int y, int u, int v);

// Bayer
void bayer8(const Job& job);
void bayer8By3x3(const Job& job);
void bayer8ByLcaa(const Job& job);
void bayer8ByLcaav(const Job& job);
void bayer8ByYuv422(const Job& job);
template <int bitsUsed, bool isBigEndian> void bayer16(const Job& job);
void bayer16FirstByte(const Job& job);
void bayer12Packed(const Job& job);
void bayer10p(const Job& job);
void bayer12p(const Job& job);
void bayer8Grey(const Job& job);
void bayer12PackedWhole(const Job& job);
void bayer16Whole(const Job& job);

// Geometry
void flipHorizontal(const Job& job);
void flipVertical(const Job& job);
void turn(const Job& job);
void weave(const Job& job);
void stretchNearest(const Job& job); // by 3 / 2
void stretchLinear(const Job& job);

// Complementary colours
void cygm8(const Job& job);
void cygm8By3x3(const Job& job);
void cygm8Binned(const Job& job);

// Sample i of a row of packed samples, MSB-aligned in 16 bits.
int sample12Packed(const Byte* row, std::size_t i);
int sample10p(const Byte* row, std::size_t i);
int sample12p(const Byte* row, std::size_t i);

} // namespace reference
