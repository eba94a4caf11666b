// Sample readers of the mosaics of whole bytes. (Bit-packed ones: kernels/packed_samples.h.)
#pragma once
#include "kernels/mosaic2x2.h"

namespace kel {
namespace {

struct Raw8Samples : Reader<8> {
    static constexpr int group = 2;
    template <int from> static INLINE Bytes samples(const u8* s) { return load(s + from); }
};

} // namespace
} // namespace kel
