// How pictures are made to look right, as the user says it.
#pragma once
#include <optional>
#include <string>
#include <utility>

#include "linear.h"
#include "picture/develop.h"

namespace tool {

struct AdjustmentOptions { // empty: not given
    std::string black, whiteBalance, gamma, stretch;
    std::optional<float> exposure;
    bool automatic = false;
};

class Adjustments {
public:
    Adjustments() = default;
    Adjustments(const AdjustmentOptions& options, const FrameFormat& frame); // throws UsageError

    bool any() const { return any_; }

    // All that is asked for, measured where it is to be, and the matrix, if any, between white balance and exposure.
    picture::Settings settingsFor(const LinearImage& image, const std::optional<Matrix>& matrix) const;
    void apply(LinearImage& image, const std::optional<Matrix>& matrix) const;

private:
    void setBlack(const std::string& text, const FrameFormat& frame);
    void setWhiteBalance(const std::string& text);
    void setStretch(const std::string& text);
    void setCurve(const std::string& text);

    bool any_ = false;
    std::optional<float> black_ = 0.f;                                     // nothing: measured
    std::optional<std::array<float, 3>> whiteBalance_ = {{1.f, 1.f, 1.f}}; // nothing: measured
    float exposure_ = 1;
    std::optional<std::pair<float, float>> stretch_; // percentages
    picture::Curve curve_;
};

} // namespace tool
