#include "tasks.h"

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

std::vector<fs::path> outputsFor(const fs::path& path, std::string_view planes) {
    if (planes.empty()) return {path};
    if (path == "-") throw UsageError("planes are several files; give the output a name");
    std::vector<fs::path> paths;
    for (const char plane : planes)
        paths.push_back(path.parent_path() / (path.stem().string() + "." + plane + path.extension().string()));
    return paths;
}

void requireFilesSurvive(const std::vector<Task>& tasks) {
    std::set<fs::path> inputs, outputs;
    for (const Task& task : tasks) inputs.insert(trueName(task.input));
    for (const Task& task : tasks) {
        for (const fs::path& output : task.outputs) {
            if (output != "-" && inputs.contains(trueName(output)))
                throw UsageError(output.string() + " is an input and would be overwritten");
            if (!outputs.insert(trueName(output)).second)
                throw UsageError("two pictures would both become " + output.string());
        }
    }
}

} // namespace

std::vector<Task> planTasks(const std::vector<fs::path>& files, const fs::path& directory, const std::string& ending,
                            std::string_view planes) {
    std::vector<Task> tasks;
    if (!directory.empty()) {
        for (const fs::path& file : files) {
            fs::path name = file == "-" ? fs::path("stdin") : file.filename();
            tasks.push_back({file, outputsFor(directory / name.replace_extension(ending), planes)});
        }
    } else {
        tasks.push_back({files.at(0), outputsFor(files.at(1), planes)});
    }
    requireFilesSurvive(tasks);
    return tasks;
}

} // namespace tool
