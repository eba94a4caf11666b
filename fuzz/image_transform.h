#pragma once
#include "fuzz/choices.h"

namespace fuzz {

void callImageTransform(Choices& choices);

} // namespace fuzz
