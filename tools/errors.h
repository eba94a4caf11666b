#pragma once
#include <stdexcept>

namespace tool {

// Something outside the program is not as it should be: a file, a name, a conversion that is not offered. Exit code 1.
struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library refuses a conversion: other frames of the same format and size would fare no better.
struct Refusal : Error {
    using Error::Error;
};

// The command line makes no sense, whatever the files hold. Exit code 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tool
