#pragma once
#include "fuzz/choices.h"

namespace fuzz {

std::uint32_t knownFormat(Choices& choices); // mostly one that the library names
void callFunction(Choices& choices);         // one of both faces, but OrvImageTransform, that takes buffers

} // namespace fuzz
