#pragma once
#include <cstddef>
#include <string>

namespace tool {

// A bar on standard error, if that is a terminal and there is more than one step; otherwise silent.
class Progress {
public:
    explicit Progress(std::size_t steps);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    void show(std::size_t done, const std::string& current) const;
    void clear() const; // before a message is written

private:
    std::size_t steps_;
    bool visible_;
};

} // namespace tool
