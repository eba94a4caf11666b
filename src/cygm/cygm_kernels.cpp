// Compiled once per instruction-set level.
#include "cygm/cygm_kernels.h"

#include "bayer/bayer_readers.h"
#include "cygm/cygm_rule.h"

namespace kel {
namespace {

// The frame comes as two fields: first the odd lines, then the even ones.
struct Fields {
    const u8* s;
    size_t width, height;

    INLINE const u8* line(size_t l) const { return s + (l % 2 ? l / 2 : (height + l) / 2) * width; }
};

template <class W> void cygmKernel(u8* d, const u8* s, size_t width, size_t height) {
    const Fields fields{s, width, height};
    const size_t pitch = width * W::bytes;
    for (size_t y = 0; y + 1 < height; ++y, d += pitch)
        row2x2({fields.line(y), fields.line(y + 1)}, width, Raw8Samples(), PackedRow<W>{d, W()}, CygmRule(y));
    std::memcpy(d, d - pitch, pitch);
}

template <int... outputs> constexpr ByOutput<CygmMosaic> cygmKernelsFor() {
    ByOutput<CygmMosaic> table;
    (table.set(outputs, cygmKernel<WriterOf<outputs>>), ...);
    return table;
}

} // namespace

namespace KEL_LEVEL {

extern const CygmKernels cygmKernels;
constexpr CygmKernels cygmKernels{
    .cygm8 = cygmKernelsFor<0, 1, 2, 3, 4, 5, 6>(),
};

} // namespace KEL_LEVEL
} // namespace kel
