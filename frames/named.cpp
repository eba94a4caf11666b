#include "frames/named.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "frames/names.h"

namespace frames {

namespace {

std::vector<std::string> partsOf(std::string_view name) {
    std::vector<std::string> parts(1);
    for (const char c : name) {
        if (c == '_' || c == '-' || c == '.' || c == ' ')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

// A pixel format's name begins with a letter; "lsb" behind it is what words are anyway.
std::optional<PixelFormat> formatIn(std::string text) {
    if (text.empty() || !std::isalpha(static_cast<unsigned char>(text[0]))) return {};
    if (text.size() > 3 && sameName(text.substr(text.size() - 3), "lsb")) text.resize(text.size() - 3);
    return findPixelFormat(text);
}

} // namespace

Named named(std::string_view stem) {
    const std::vector<std::string> parts = partsOf(stem);
    Named result;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!result.size) result.size = parseSize(parts[i]);
        std::string joined; // the longest: YUV422_8_UYVY has three parts
        std::optional<PixelFormat> format;
        for (std::size_t j = i; j < std::min(i + 3, parts.size()); ++j) {
            joined += (joined.empty() ? "" : "_") + parts[j];
            if (const auto found = formatIn(joined)) format = found;
        }
        if (!result.format) result.format = format;
    }
    return result;
}

} // namespace frames
