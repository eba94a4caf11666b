// Reads pictures back, each kind with the library of others where there is one.
#pragma once
#include <cstdint>
#include <filesystem>
#include <vector>

struct Picture {
    unsigned width = 0, height = 0, channels = 0, bits = 0;
    std::vector<std::uint16_t> samples;

    std::uint16_t at(unsigned x, unsigned y, unsigned channel) const {
        return samples[(std::size_t{y} * width + x) * channels + channel];
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

// An empty picture if the file cannot be read.
Picture readPng(const std::filesystem::path& path);
Picture readTiff(const std::filesystem::path& path);
Picture readPnm(const std::filesystem::path& path);
