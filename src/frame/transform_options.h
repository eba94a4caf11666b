// The option records of OrvImageTransform.
#pragma once
#include <span>

#include "orvella/orv.h"

namespace kel {

// The first record of a type; null if there is none.
inline const OrvTransformInfo* findOption(std::span<const OrvTransformInfo> options, OrvTransformType type) {
    for (const OrvTransformInfo& option : options)
        if (option.TransformType == type) return &option;
    return nullptr;
}

} // namespace kel
