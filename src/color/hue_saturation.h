// Hue and saturation of YUV colours: a library-wide state that stays at its initial values, hue 0 and saturation 1,
// because no exported function sets it. In that state every conversion takes the plain products of yuv_readers.h; only
// in another one would it take the tables below.
#pragma once
#include "support/integers.h"

namespace kel {

// What chroma adds to luma, by the chroma byte: R = Y + uToR[U] + vToR[V], and so on, clamped to 0..255.
struct ChromaTables {
    i16 uToR[256], uToG[256], uToB[256];
    i16 vToR[256], vToG[256], vToB[256];
};

// Each entry is truncated toward zero, then clamped to -128..127. The saturation scales the cosine terms only.
constexpr ChromaTables chromaTables(double sine, double cosine, double saturation) {
    const auto entry = [](double value) {
        return static_cast<i16>(value < -128 ? -128 : value > 127 ? 127 : static_cast<int>(value));
    };
    ChromaTables tables{};
    for (int k = 0; k < 256; ++k) {
        const double q = k - 128;
        tables.uToR[k] = entry(q * sine * 1.4022);
        tables.uToG[k] = entry(q * (-0.3457 * saturation * cosine - 0.7144 * sine));
        tables.uToB[k] = entry(q * 1.771 * saturation * cosine);
        tables.vToR[k] = entry(q * 1.4022 * saturation * cosine);
        tables.vToG[k] = entry(q * (0.3457 * sine - 0.7144 * saturation * cosine));
        tables.vToB[k] = entry(q * -1.771 * sine);
    }
    return tables;
}

struct HueSaturation {
    float hue = 0; // radians
    float saturation = 1;
    ChromaTables tables = chromaTables(0, 1, 1);

    // Rebuilds the tables if a value is new.
    void use(float newHue, float newSaturation);
};

extern HueSaturation hueSaturation; // the library's

} // namespace kel
