// Orvella for C++20: headers only, on top of the C functions.
//
//     auto picture = orvella::convert({frame, orvella::PixelFormat::BayerRG12p, {2448, 2048}}, orvella::Output::Rgb24);
//
// Frame, Picture    where pixels lie: the caller's memory with any stride; a Picture may own its memory
// Options           demosaic method, colour matrix, bits used, alignment, byte order, the fourth byte
// crop, flipped     regions and mirror images of frames, with the phase that their mosaic has
// convert           throws Error; tryConvert returns a Result instead
// Converter         keeps scratch memory from frame to frame
//
// All sizes are checked against the given memory before anything is read or written; what is refused, and by which rule,
// is in the text. docs/faces.md tells more.
#pragma once
#include "orvella/cpp/converter.hpp"
#include "orvella/cpp/formats.hpp"
#include "orvella/cpp/frame.hpp"
#include "orvella/cpp/result.hpp"
