#include "color/hue_saturation.h"

#include <cmath>

namespace kel {

constinit HueSaturation hueSaturation;

void HueSaturation::use(float newHue, float newSaturation) {
    if (newHue == hue && newSaturation == saturation) return;
    hue = newHue;
    saturation = newSaturation;
    tables = chromaTables(std::sin(hue), std::cos(hue), saturation);
}

} // namespace kel
