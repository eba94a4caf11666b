#include "adjustments.h"

#include <algorithm>
#include <vector>

#include "errors.h"
#include "numbers.h"

namespace tool {

namespace {

// Throws UsageError, which says what is expected.
std::vector<float> numbers(const std::string& option, const std::string& text, std::size_t count, float least,
                           float most, const std::string& expected) {
    const auto list = parseNumbers(text);
    const auto allowed = [&](float number) { return number >= least && number <= most; };
    if (list && list->size() == count && std::all_of(list->begin(), list->end(), allowed)) return *list;
    throw UsageError(option + " takes " + expected + ", not '" + text + "'");
}

// What a sample of such frames becomes among 16-bit ones.
float widened(float sample, const FrameFormat& frame) {
    return frame.pixels.bits == 8 ? sample * 257 : sample * static_cast<float>(1 << (16 - frame.pixels.bits));
}

} // namespace

Adjustments::Adjustments(const AdjustmentOptions& options, const FrameFormat& frame) {
    any_ = options.automatic || options.exposure || !options.black.empty() || !options.whiteBalance.empty() ||
           !options.gamma.empty() || !options.stretch.empty();
    // RGB and YUV frames have been developed by the camera: what is automatic is no more than the stretch there.
    const bool fromSensor = !isColour(frame.pixels.samples) || frame.pixels.samples == Samples::cygm;
    const auto choose = [&](const std::string& given, const char* automatic) {
        return given.empty() && options.automatic && fromSensor ? automatic : given;
    };
    setBlack(choose(options.black, "auto"), frame);
    setWhiteBalance(choose(options.whiteBalance, "auto"));
    exposure_ = options.exposure.value_or(1);
    setStretch(options.stretch.empty() && options.automatic ? "0,99.5" : options.stretch);
    setCurve(choose(options.gamma, "srgb"));
}

void Adjustments::setBlack(const std::string& text, const FrameFormat& frame) {
    if (text.empty()) return;
    black_.reset();
    if (text != "auto")
        black_ = widened(numbers("--black", text, 1, 0, 65535, "a sample's value, or auto").front(), frame);
}

void Adjustments::setWhiteBalance(const std::string& text) {
    if (text.empty()) return;
    whiteBalance_.reset();
    if (text == "auto") return;
    const auto list =
        numbers("--white-balance", text, 3, 0, 1000, "factors of red, green and blue, like 1.9,1,1.4, or auto");
    whiteBalance_ = {list[0], list[1], list[2]};
}

void Adjustments::setStretch(const std::string& text) {
    if (text.empty()) return;
    const auto list = numbers("--stretch", text, 2, 0, 100, "two percentages, like 0.5,99.5");
    if (list[0] >= list[1]) throw UsageError("--stretch takes the lower percentage first");
    stretch_ = {list[0], list[1]};
}

void Adjustments::setCurve(const std::string& text) {
    if (text.empty()) return;
    curve_ = {picture::Curve::srgb, 1};
    if (text != "srgb")
        curve_ = {picture::Curve::power, numbers("--gamma", text, 1, .1f, 10, "0.1 to 10, or srgb").front()};
}

picture::Settings Adjustments::settingsFor(const LinearImage& image, const std::optional<Matrix>& matrix) const {
    picture::Settings settings;
    std::vector<std::uint16_t> some;
    if (!black_ || !whiteBalance_ || stretch_) some = picture::somePixels(image.samples, image.channels);
    settings.black = black_ ? *black_ : picture::measureBlack(some);
    if (whiteBalance_)
        settings.whiteBalance = *whiteBalance_;
    else if (image.channels == 3)
        settings.whiteBalance = picture::measureWhiteBalance(some, settings.black);
    if (matrix) settings.matrix = *matrix;
    settings.exposure = exposure_;
    if (stretch_)
        picture::measureStretch(some, image.channels, stretch_->first / 100., stretch_->second / 100., settings);
    settings.curve = curve_;
    return settings;
}

void Adjustments::apply(LinearImage& image, const std::optional<Matrix>& matrix) const {
    picture::develop(image.samples, image.channels, settingsFor(image, matrix));
}

} // namespace tool
