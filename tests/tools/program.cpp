#include "program.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& content) { std::ofstream(path, std::ios::binary) << content; }

namespace {

// ORVELLA_PROGRAM, if set, is another one, in an emulator for example: "wine orvella.exe".
const char* programToTest() {
    const char* const other = std::getenv("ORVELLA_PROGRAM");
    return other ? other : ORVELLA_PROGRAM;
}

// Text, whose lines end in one character everywhere, or bytes as they are.
std::string withPlainLines(std::string out) {
    const auto inText = [](char c) { return c == '\r' || c == '\n' || (c >= ' ' && c <= '~'); };
    if (std::ranges::all_of(out, inText)) std::erase(out, '\r');
    return out;
}

} // namespace

ProgramTest::ProgramTest() {
    std::string name = (fs::temp_directory_path() / "orvella-test-XXXXXX").string();
    scratch_ = ::mkdtemp(name.data());
    directory_ = scratch_ / "files";
    fs::create_directory(directory_);
}

ProgramTest::~ProgramTest() { fs::remove_all(scratch_); }

pid_t ProgramTest::start(const std::string& arguments, const std::string& input) const {
    std::istringstream stream(programToTest() + (' ' + arguments));
    std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
    std::ranges::replace(words, "''", std::string());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    const std::string in = scratch_ / "in", out = scratch_ / "out", err = scratch_ / "err";
    writeFile(in, input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addchdir_np(&actions, directory_.c_str());
    pid_t child = 0;
    const int spawned = ::posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(spawned, 0) << "cannot start " << argv[0];
    return child;
}

Outcome ProgramTest::run(const std::string& arguments, const std::string& input) const {
    const pid_t child = start(arguments, input);
    int status = -1;
    if (child != 0) ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, withPlainLines(readFile(scratch_ / "out")),
            withPlainLines(readFile(scratch_ / "err"))};
}

bool ProgramTest::interrupt(const std::string& arguments, int signal) const {
    const pid_t child = start(arguments, "");
    const auto isTemporary = [](const std::string& name) { return name.starts_with('.'); };
    int status = 0;
    while (!std::ranges::any_of(files(), isTemporary)) {
        if (::waitpid(child, &status, WNOHANG) != 0) return false;
        ::usleep(1000);
    }
    ::kill(child, signal);
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == signal;
}

Outcome ProgramTest::succeed(const std::string& arguments, const std::string& input) const {
    Outcome outcome = run(arguments, input);
    EXPECT_EQ(outcome.code, 0) << arguments;
    EXPECT_EQ(outcome.err, "") << arguments;
    return outcome;
}

std::vector<std::string> ProgramTest::files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory_)) {
        if (!entry.is_directory()) names.push_back(fs::relative(entry.path(), directory_).string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
