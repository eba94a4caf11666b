// The options that describe a frame, shared by the commands that read or write one.
#pragma once
#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "frame.h"

namespace tool {

struct FrameOptions {
    std::string format;
    std::string size;
    std::optional<unsigned> bitsUsed;
    bool msbAligned = false;
    bool bigEndian = false;

    void addTo(CLI::App& command);
    FrameFormat frame() const; // throws Error, UsageError
};

} // namespace tool
