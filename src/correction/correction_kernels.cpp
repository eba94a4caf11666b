// Compiled once per instruction-set level.
#include "correction/correction_kernels.h"

#include "bayer/bayer_readers.h"
#include "color/rgb_readers.h"
#include "correction/correction_rules.h"
#include "kernels/packed_samples.h"

namespace kel {
namespace {

template <class R, class W> void correctedRun(u8* d, const u8* s, size_t n, const Matrix& m) {
    run(d, s, n, R(), Corrected<ByteRule, W>(m));
}

template <class Rule, class S, class W>
void correctedMosaic(u8* d, const u8* s, size_t width, size_t height, unsigned phase, const Matrix& m) {
    mosaic2x2(d, s, width, height, phase, S(), Corrected<Rule, W>(m));
}

template <class Rule, class S, class W>
void correctedShiftedMosaic(u8* d, const u8* s, size_t width, size_t height, unsigned phase, int shift,
                            const Matrix& m) {
    mosaic2x2(d, s, width, height, phase, S(shift), Corrected<Rule, W>(m));
}

template <class R> constexpr ByOutput<CorrectedRun> correctedRuns() {
    return tableOf<CorrectedRun, 1, 2, 3, 4>([]<int output>() { return correctedRun<R, WriterOf<output>>; });
}

// Both lumas of a corrected mosaic are BT.601.

constexpr ByOutput<CorrectedMosaic> correctedRaw8() {
    ByOutput<CorrectedMosaic> table;
    table.set(0, correctedMosaic<ByteRule, Raw8Samples, WriterOf<0>>);
    table.set(5, table[0]);
    table.set(1, correctedMosaic<ByteRule, Raw8Samples, WriterOf<1>>);
    table.set(3, correctedMosaic<ByteRule, Raw8Samples, WriterOf<3>>);
    return table;
}

constexpr ByOutput<CorrectedMosaic> correctedRaw12() {
    ByOutput<CorrectedMosaic> table;
    table.set(1, correctedMosaic<WrapRule, Top12, WriterOf<1>>);
    table.set(9, correctedMosaic<WordRule, Whole12, WriterOf<9>>);
    return table;
}

template <Endian endian> constexpr ByOutput<CorrectedShiftedMosaic> correctedRaw16() {
    ByOutput<CorrectedShiftedMosaic> table;
    table.set(7, correctedShiftedMosaic<WordRule, Raw16Samples<endian>, WriterOf<7>>);
    table.set(8, table[7]);
    table.set(9, correctedShiftedMosaic<WordRule, Raw16Samples<endian>, WriterOf<9>>);
    return table;
}

} // namespace

namespace KEL_LEVEL {

extern const CorrectionKernels correctionKernels;
constexpr CorrectionKernels correctionKernels{
    .rgb8 = correctedRuns<Rgb24Reader<Order::rgb>>(),
    .bgr8 = correctedRuns<Rgb24Reader<Order::bgr>>(),
    .rgba8 = correctedRuns<Rgb32Reader<Order::rgb>>(),
    .bgra8 = correctedRuns<Rgb32Reader<Order::bgr>>(),
    .raw8 = correctedRaw8(),
    .raw12 = correctedRaw12(),
    .raw16Shifted = {correctedRaw16<Endian::little>(), correctedRaw16<Endian::big>()},
    .raw12ToBgr24 = correctedMosaic<ByteRule, Top12, WriterOf<1>>,
};

} // namespace KEL_LEVEL
} // namespace kel
