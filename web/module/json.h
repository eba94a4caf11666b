// Text for the other side of the module: JSON, put together piece by piece.
#pragma once
#include <string>
#include <string_view>

namespace web {

inline std::string json(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c == '\n' ? ' ' : c;
    }
    return quoted + '"';
}
inline std::string json(const std::string& text) { return json(std::string_view(text)); }
inline std::string json(const char* text) { return json(std::string_view(text)); }
inline std::string json(bool value) { return value ? "true" : "false"; }
template <class Number> std::string json(Number value) { return std::to_string(value); }

// "[1,2]" of any list.
template <class List> std::string jsonList(const List& list) {
    std::string text;
    for (const auto& item : list) text.append(text.empty() ? "" : ",").append(json(item));
    return "[" + text + "]";
}

class JsonObject {
public:
    template <class Value> JsonObject& add(std::string_view name, const Value& value) {
        return addText(name, json(value));
    }
    // JSON already.
    JsonObject& addText(std::string_view name, const std::string& value) {
        text_.append(text_.empty() ? "" : ",").append(json(name)).append(":").append(value);
        return *this;
    }
    std::string text() const { return "{" + text_ + "}"; }

private:
    std::string text_;
};

} // namespace web
