#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "commands.h"
#include "errors.h"
#include "help.h"
#include "names.h"
#include "orvella/version.h"

namespace {

constexpr int failure = 1, usage = 2;

int complain(const char* message, int code) {
    std::fprintf(stderr, "orvella: %s\n", message);
    return code;
}

// The parser would only say that a command is missing.
void requireCommand(const CLI::App& program, const std::string& first) {
    std::vector<std::string> names;
    for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
    if (first.empty() || first.starts_with('-') || std::ranges::count(names, first) > 0) return;
    const std::vector<std::string_view> known(names.begin(), names.end());
    throw tool::UsageError("unknown command '" + first + "'; " + tool::suggestion(first, known) +
                           "'orvella --help' lists them");
}

} // namespace

int main(int argc, char** argv) {
    try {
        CLI::App program("Turns the raw frames of industrial cameras into pictures.", "orvella");
        tool::setUsage(program, "Usage: orvella COMMAND [OPTIONS] ...");
        program.set_version_flag("--version", "orvella " ORVELLA_VERSION_STRING, "Print the version and exit");
        program.require_subcommand(1);
        tool::addConvertCommand(program);
        tool::addFormatsCommand(program);
        tool::addInfoCommand(program);
        tool::addChartCommand(program);
        tool::addGrabCommand(program);
        program.footer("A first picture, without a camera:\n"
                       "  orvella chart   -f BayerRG8 -s 640x480 frame.raw\n"
                       "  orvella convert -f BayerRG8 -s 640x480 frame.raw frame.png\n"
                       "\n"
                       "'orvella COMMAND --help' explains a command and shows examples.\n"
                       "Exit code: 0 done, 1 failed, 2 the command line makes no sense.");
        requireCommand(program, argc > 1 ? argv[1] : "");
        try {
            program.parse(argc, argv);
        } catch (const CLI::ParseError& result) {
            if (result.get_exit_code() == 0) return program.exit(result); // --help, --version
            return complain((std::string(result.what()) + " (--help explains)").c_str(), usage);
        }
        return 0;
    } catch (const tool::UsageError& error) {
        return complain(error.what(), usage);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", failure);
    } catch (const std::exception& error) {
        return complain(error.what(), failure);
    }
}
