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
    mosaic2x2(d, s, width, height, phase, MosaicReader<S>(), Corrected<Rule, W>(m));
}

template <class Rule, class S, class W>
void correctedShiftedMosaic(u8* d, const u8* s, size_t width, size_t height, unsigned phase, int shift,
                            const Matrix& m) {
    mosaic2x2(d, s, width, height, phase, MosaicReader<S>(shift), Corrected<Rule, W>(m));
}

template <class R> constexpr ByOutput<CorrectedRun> correctedRuns() {
    return tableOf<CorrectedRun>(colour8, []<u32 output>() { return correctedRun<R, WriterOf<output>>; });
}

// Both lumas of a corrected mosaic are BT.601.

constexpr ByOutput<CorrectedMosaic> correctedRaw8() {
    ByOutput<CorrectedMosaic> table;
    table.set(OrvOutputMono8, correctedMosaic<ByteRule, Raw8Samples, WriterOf<OrvOutputMono8>>);
    table.set(OrvOutputMono8Rec709, table[OrvOutputMono8]);
    table.set(OrvOutputBgr24, correctedMosaic<ByteRule, Raw8Samples, WriterOf<OrvOutputBgr24>>);
    table.set(OrvOutputRgb24, correctedMosaic<ByteRule, Raw8Samples, WriterOf<OrvOutputRgb24>>);
    return table;
}

constexpr ByOutput<CorrectedMosaic> correctedRaw12() {
    ByOutput<CorrectedMosaic> table;
    table.set(OrvOutputBgr24, correctedMosaic<WrapRule, Top12Packed, WriterOf<OrvOutputBgr24>>);
    table.set(OrvOutputBgr48, correctedMosaic<WordRule, Samples12Packed, WriterOf<OrvOutputBgr48>>);
    return table;
}

template <Endian endian> constexpr ByOutput<CorrectedShiftedMosaic> correctedRaw16() {
    ByOutput<CorrectedShiftedMosaic> table;
    table.set(OrvOutputMono16, correctedShiftedMosaic<WordRule, Raw16Samples<endian>, WriterOf<OrvOutputMono16>>);
    table.set(OrvOutputMono16Rec709, table[OrvOutputMono16]);
    table.set(OrvOutputBgr48, correctedShiftedMosaic<WordRule, Raw16Samples<endian>, WriterOf<OrvOutputBgr48>>);
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
    .raw12ToBgr24 = correctedMosaic<ByteRule, Top12Packed, WriterOf<OrvOutputBgr24>>,
};

} // namespace KEL_LEVEL
} // namespace kel
