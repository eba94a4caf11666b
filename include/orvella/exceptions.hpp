// The exceptions of Orvella, for C++ applications. Catch them by reference.
//
// One of them leaves a call: KELThreadException, from OrvCreateColorCorrectionMatrix_Int8 and _Int16 and their twins of
// the legacy face.
#ifndef ORVELLA_EXCEPTIONS_HPP
#define ORVELLA_EXCEPTIONS_HPP

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include "orvella/orv.h"

namespace kel {
namespace thread {

// The library's mutex could not be initialised, locked or unlocked.
class ORV_API KELThreadException : public std::exception {
public:
    explicit KELThreadException(std::int32_t code = 0) noexcept : code_(code) {}

    std::int32_t code() const noexcept { return code_; } // 0 wherever the library raises it

private:
    std::int32_t code_;
};

// The attributes of the library's mutex could not be set. Only loading the library can raise it, no call.
class pthread_exception : public std::exception {
public:
    pthread_exception(std::string message, std::string operation, std::int32_t code)
        : message_(std::move(message)), operation_(std::move(operation)), code_(code) {}

    const std::string& message() const noexcept { return message_; }
    const std::string& operation() const noexcept { return operation_; } // "init" or "set"
    std::int32_t code() const noexcept { return code_; }                 // what the pthread call returned

private:
    std::string message_, operation_;
    std::int32_t code_;
};

} // namespace thread

namespace system {

// Declared to be caught; the library raises none.
class KELSystemException : public std::exception {};

} // namespace system
} // namespace kel

#endif
