// Pixels in a row, each on its own: the image is one run of width x height pixels.
#pragma once
#include "definition/samples.h"
#include "definition/tables.h"

namespace definition {
namespace {

template <class Source, OrvOutputCode output> void convertRun(u8* __restrict d, const u8* s, size_t n) {
    forEachPixel<Source>(s, n, [=](size_t i, auto pixel) { put<output>(d + outputs[output].bytes * i, pixel); });
}
template <class Source, OrvOutputCode output> void run(const Job& job) {
    convertRun<Source, output>(job.destination, job.source, job.pixels());
}

// Bytes as they are.
template <int bytes> void copy(const Job& job) { std::memmove(job.destination, job.source, job.pixels() * bytes); }

template <class Source, OrvOutputCode... output> void addRuns(Table& table, const std::string& source) {
    (table.add(source, output, run<Source, output>), ...);
}

} // namespace
} // namespace definition
