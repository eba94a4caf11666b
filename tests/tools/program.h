// Runs the built program in a directory of its own.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

struct Outcome {
    int code = 0; // exit code, or -1 if the program did not end by itself
    std::string out, err;
};

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& content);

class ProgramTest : public ::testing::Test {
protected:
    ProgramTest();
    ~ProgramTest() override;

    // Arguments are parted by blanks; '' is an empty one.
    Outcome run(const std::string& arguments, const std::string& input = "") const;
    // Expects exit code 0 and no messages.
    Outcome succeed(const std::string& arguments, const std::string& input = "") const;

    // Signals the program as soon as it has a temporary file. Whether the signal ended it.
    bool interrupt(const std::string& arguments, int signal) const;

    std::filesystem::path path(const std::string& name) const { return directory_ / name; }
    std::vector<std::string> files() const; // sorted, hidden ones too

private:
    pid_t start(const std::string& arguments, const std::string& input) const;

    std::filesystem::path scratch_, directory_;
};
