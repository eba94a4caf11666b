// What the other side of the module asks for, in the words of the command line.
#pragma once
#include <string_view>

#include "frame_options.h"
#include "recipe.h"

namespace web {

struct Options {
    tool::FrameOptions frame;
    tool::RecipeOptions recipe;
    std::uint64_t stride = 0;
};

// Lines like "white-balance=auto"; switches like "auto=true". Throws UsageError.
Options parseOptions(std::string_view lines);

} // namespace web
