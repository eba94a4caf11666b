// Transforms of mosaics. What differs between the sources and the methods is data.
#pragma once
#include "bayer/bayer_kernels.h"
#include "support/refusal.h"

namespace kel {

struct MosaicFamily {
    Mosaic (*kernel)(const BayerKernels&, u32 output); // null: not offered
    u32 borders = 0;                                   // columns that are copies of their neighbours
};
struct FilteredFamily { // overwrites the source
    FilteredMosaic (*kernel)(const BayerKernels&, u32 output);
};

template <class Source> struct MosaicArguments {
    void* destination;
    Source* source;
    u32 width, height;
    u32 output;
    i32 pattern;
};
using MosaicCall = MosaicArguments<const void>;
using FilteredCall = MosaicArguments<void>;

Refusal convert(const MosaicFamily& family, const MosaicCall& call);

// Without memory for a few lines it succeeds and writes nothing.
Refusal convert(const FilteredFamily& family, const FilteredCall& call);

// What all mosaics have in common. The pattern -1 is let through: it means 3.
template <class Source> Refusal checkMosaic(const MosaicArguments<Source>& call) {
    const auto isEven = [](u32 size) { return size > 0 && size % 2 == 0; };
    return firstRefusal({{call.destination, Refusal::destination},
                         {call.source, Refusal::source},
                         {isEven(call.width), Refusal::width},
                         {isEven(call.height), Refusal::height},
                         {call.pattern >= -1 && call.pattern <= 3, Refusal::pattern}});
}

} // namespace kel
