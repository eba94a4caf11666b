// What orvella_bench can measure. Every mode prints a Markdown table and writes JSON where it is asked to.
#pragma once
#include "bench/arguments.h"

namespace bench {

// Everybody's time for each conversion, as memcpy's time over theirs.
void table(const Arguments& arguments);

// What two threads with buffers of their own do in the time in which one thread does its work.
void scaling(const Arguments& arguments);

// Time per pixel from small to large images, and for narrow ones.
void linearity(const Arguments& arguments);

// What measures here: compiler, instruction-set level, clock rate.
void machine(const Arguments& arguments);

} // namespace bench
