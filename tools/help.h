#pragma once
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <utility>

namespace tool {

// Help that shows the usage line given, and of an option no more than its argument.
class Help : public CLI::Formatter {
public:
    explicit Help(std::string usage) : usage_(std::move(usage)) { column_width(32); }

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        std::string help = CLI::Formatter::make_help(app, std::move(name), mode);
        for (std::size_t at; (at = help.find("\n\n\n")) != std::string::npos;) help.erase(at, 1);
        return help;
    }
    std::string make_usage(const CLI::App*, std::string) const override { return "\n" + usage_ + "\n"; }
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string& argument = option->get_option_text();
        return argument.empty() ? "" : " " + argument;
    }

private:
    std::string usage_;
};

inline void setUsage(CLI::App& command, std::string usage) {
    command.formatter(std::make_shared<Help>(std::move(usage)));
}

} // namespace tool
