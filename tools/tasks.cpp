#include "tasks.h"

#include <cstdio>
#include <set>

#include "errors.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

// Without links, so that two names of a file are the same.
fs::path trueName(const fs::path& path) {
    std::error_code error;
    fs::path name = fs::weakly_canonical(path, error);
    return error ? path : name;
}

// "picture.png" with "-0001" is "picture-0001.png".
fs::path beforeEnding(const fs::path& path, const std::string& what) {
    fs::path name = path.stem();
    name += what;
    name += path.extension();
    return path.parent_path() / name;
}

std::vector<fs::path> outputsFor(const fs::path& path, std::string_view planes) {
    if (planes.empty()) return {path};
    if (path == "-") throw UsageError("planes are several files; give the output a name");
    std::vector<fs::path> paths;
    for (const char plane : planes) paths.push_back(beforeEnding(path, {'.', plane}));
    return paths;
}

void requireFilesSurvive(const std::vector<Task>& tasks, bool sequence) {
    std::set<fs::path> inputs, outputs;
    for (const Task& task : tasks) inputs.insert(trueName(task.input));
    for (const Task& task : tasks) {
        for (const fs::path& output : task.outputs) {
            if (output != "-" && inputs.contains(trueName(output)))
                throw UsageError(output.string() + " is an input and would be overwritten");
            if (!outputs.insert(trueName(output)).second && !sequence)
                throw UsageError("two pictures would both become " + output.string());
        }
    }
}

} // namespace

std::vector<Task> planTasks(const std::vector<fs::path>& files, const fs::path& directory, const std::string& ending,
                            std::string_view planes, bool sequence) {
    std::vector<Task> tasks;
    if (!directory.empty()) {
        for (const fs::path& file : files) {
            fs::path name = file == "-" ? fs::path("stdin") : file.filename();
            tasks.push_back({file, outputsFor(directory / name.replace_extension(ending), planes)});
        }
    } else {
        for (auto input = files.begin(); input + 1 != files.end(); ++input)
            tasks.push_back({*input, outputsFor(files.back(), planes)});
    }
    requireFilesSurvive(tasks, sequence);
    return tasks;
}

fs::path numbered(const fs::path& path, unsigned number) {
    if (path == "-") return path;
    char digits[16];
    std::snprintf(digits, sizeof digits, "-%04u", number);
    return beforeEnding(path, digits);
}

} // namespace tool
