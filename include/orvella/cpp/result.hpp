// How the C++ face says that something went wrong.
#pragma once
#include <array>
#include <cstdarg>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "orvella/orv.h"

namespace orvella {

// What the non-throwing calls return: a code of orv.h and a sentence that names the rule.
class [[nodiscard]] Result {
public:
    Result() = default;
    explicit Result(OrvErrorType code) : code_(code) {
        if (!*this) OrvGetErrorInfo(code, text_.data(), static_cast<std::uint32_t>(text_.size() - 1));
    }

    OrvErrorType code() const { return code_; }
    std::string_view text() const { return text_.data(); } // empty on success
    explicit operator bool() const { return code_ == OrvErrorSuccess; }

    [[gnu::format(printf, 2, 3)]] static Result refused(OrvErrorType code, const char* format, ...) {
        Result result;
        result.code_ = code;
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(result.text_.data(), result.text_.size(), format, arguments);
        va_end(arguments);
        return result;
    }

private:
    OrvErrorType code_ = OrvErrorSuccess;
    std::array<char, 240> text_{}; // no memory is asked for to report that there is none
};

class Error : public std::runtime_error {
public:
    explicit Error(const Result& result) : std::runtime_error(std::string(result.text())), code_(result.code()) {}
    OrvErrorType code() const { return code_; }

private:
    OrvErrorType code_;
};

namespace detail {

inline void orThrow(const Result& result) {
    if (!result) throw Error(result);
}

} // namespace detail

} // namespace orvella
