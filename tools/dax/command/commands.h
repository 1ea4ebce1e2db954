// The commands of the program. Each adds its subcommand; `run` is called when it is selected.
#pragma once

#include <CLI/App.hpp>
#include <functional>

#include "base/failure.h"

namespace dax::tool {

struct Command {
  CLI::App* app;
  std::function<ExitStatus()> run;
};

Command addInspect(CLI::App& app);
Command addFilter(CLI::App& app);
Command addCaliper(CLI::App& app);
Command addLine(CLI::App& app);
Command addFit(CLI::App& app);
Command addChessboard(CLI::App& app);
Command addRenderScene(CLI::App& app);
Command addRange(CLI::App& app);
Command addCloud(CLI::App& app);

// One line on standard error.
void report(const Failure& failure);

// Throws Failure(kUsage): the command line is wrong.
[[noreturn]] void reject(const std::string& message);

// Flushes standard output. Throws Failure(kCannotWrite) if that fails.
void finishOutput();

// Writes to standard output, and finishes it.
void print(const std::string& text);

}  // namespace dax::tool
