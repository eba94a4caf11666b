#include "options.h"

#include <charconv>

#include "errors.h"
#include "numbers.h"

namespace web {

namespace {

std::string* textNamed(Options& options, std::string_view name) {
    auto& [frame, recipe, stride] = options;
    if (name == "format") return &frame.format;
    if (name == "size") return &frame.size;
    if (name == "to") return &recipe.output;
    if (name == "debayer") return &recipe.debayer;
    if (name == "matrix") return &recipe.matrix;
    if (name == "flip") return &recipe.flip;
    if (name == "black") return &recipe.adjustments.black;
    if (name == "white-balance") return &recipe.adjustments.whiteBalance;
    if (name == "gamma") return &recipe.adjustments.gamma;
    if (name == "stretch") return &recipe.adjustments.stretch;
    return nullptr;
}

bool* switchNamed(Options& options, std::string_view name) {
    if (name == "msb-aligned") return &options.frame.msbAligned;
    if (name == "big-endian") return &options.frame.bigEndian;
    if (name == "auto") return &options.recipe.adjustments.automatic;
    if (name == "half") return &options.recipe.half;
    if (name == "deinterlace") return &options.recipe.deinterlace;
    return nullptr;
}

std::uint64_t wholeNumber(std::string_view name, std::string_view text, std::uint64_t least, std::uint64_t most) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc{} && end == text.data() + text.size() && number >= least && number <= most) return number;
    throw tool::UsageError(std::string(name) + " takes a number from " + std::to_string(least) + " to " +
                           std::to_string(most) + ", not '" + std::string(text) + "'");
}

float exposureOf(std::string_view text) {
    const auto list = tool::parseNumbers(text);
    if (list && list->size() == 1 && list->front() >= 0 && list->front() <= 1e6f) return list->front();
    throw tool::UsageError("exposure takes a factor, not '" + std::string(text) + "'");
}

void set(Options& options, std::string_view name, std::string_view value) {
    if (std::string* const text = textNamed(options, name))
        *text = value;
    else if (bool* const flag = switchNamed(options, name))
        *flag = value == "true";
    else if (name == "bits-used")
        options.frame.bitsUsed = static_cast<unsigned>(wholeNumber(name, value, 1, 16));
    else if (name == "stride")
        options.stride = wholeNumber(name, value, 0, 0xFFFFFFFF);
    else if (name == "exposure")
        options.recipe.adjustments.exposure = exposureOf(value);
    else
        throw tool::UsageError("unknown option '" + std::string(name) + "'");
}

} // namespace

Options parseOptions(std::string_view lines) {
    Options options;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        const std::size_t equals = line.find('=');
        if (equals == line.npos) throw tool::UsageError("not an option: '" + std::string(line) + "'");
        set(options, line.substr(0, equals), line.substr(equals + 1));
    }
    return options;
}

} // namespace web
