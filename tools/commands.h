// Each adds one command, which runs when the command line names it.
#pragma once
#include <CLI/CLI.hpp>

namespace tool {

void addConvertCommand(CLI::App& program);
void addFormatsCommand(CLI::App& program);
void addInfoCommand(CLI::App& program);
void addChartCommand(CLI::App& program);
void addGrabCommand(CLI::App& program);

} // namespace tool
