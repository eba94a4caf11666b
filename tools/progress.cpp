#include "progress.h"

#include <algorithm>
#include <cstdio>

#include "system.h"

namespace tool {

Progress::Progress(std::size_t steps) : steps_(steps), visible_(steps > 1 && errorsAreOnTerminal()) {}

void Progress::show(std::size_t done, const std::string& current) const {
    if (!visible_) return;
    constexpr std::size_t width = 30;
    std::string bar(width, ' ');
    const std::size_t filled = width * std::min(done, steps_) / steps_; // of streams, more may come than was known
    bar.replace(0, filled, filled, '#');
    clear();
    std::fprintf(stderr, "[%s] %zu/%zu %.40s", bar.c_str(), done, steps_, current.c_str());
    std::fflush(stderr);
}

void Progress::clear() const {
    if (visible_) std::fputs("\r\x1b[K", stderr);
}

} // namespace tool
