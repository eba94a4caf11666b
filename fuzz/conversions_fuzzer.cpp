// Every function of both faces that takes buffers, at every level.
#include "fuzz/functions.h"
#include "fuzz/image_transform.h"

extern "C" int __lsan_is_turned_off() { return 1; } // objects stay

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Choices choices(data, size);
    if (choices.below(4) == 0)
        fuzz::callImageTransform(choices);
    else
        fuzz::callFunction(choices);
    return 0;
}
