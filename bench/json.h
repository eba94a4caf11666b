// Writes the figures of a run: a JSON array of flat objects, one a line.
#pragma once
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bench {

using Field = std::pair<std::string, std::variant<double, std::string>>;

// Names and values have no characters that JSON would want escaped. An empty file name: writes nothing.
inline void writeJson(const std::string& file, const std::vector<std::vector<Field>>& rows) {
    if (file.empty()) return;
    std::ofstream out(file);
    const char* separator = "[\n";
    for (const std::vector<Field>& row : rows) {
        out << separator;
        const char* comma = "{";
        for (const auto& [name, value] : row) {
            out << comma << '"' << name << "\": ";
            if (const auto* number = std::get_if<double>(&value))
                out << *number;
            else
                out << '"' << std::get<std::string>(value) << '"';
            comma = ", ";
        }
        out << "}";
        separator = ",\n";
    }
    out << "\n]\n";
    if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

} // namespace bench
