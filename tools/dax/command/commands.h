// The commands of the program. Each adds its subcommand; `run` is called when it is selected.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <map>
#include <string>

#include "base/failure.h"

namespace dax::tool {

struct Command {
  CLI::App* app;
  std::function<ExitStatus()> run;
};

// Adds a command to the program before main() starts; each *_command.cpp has one. Help lists them by name.
class CommandRegistration {
 public:
  CommandRegistration(const char* name, Command (*add)(CLI::App& app)) { all().insert({name, add}); }
  static std::map<std::string, Command (*)(CLI::App& app)>& all();
};

// One line on standard error.
void report(const Failure& failure);

// "dax: FILE: what" on standard error.
void say(const std::string& file, const std::string& what);

// Throws Failure(kUsage): the command line is wrong.
[[noreturn]] void reject(const std::string& message);

// Flushes standard output. Throws Failure(kCannotWrite) if that fails.
void finishOutput();

// Writes to standard output, and finishes it.
void print(const std::string& text);

}  // namespace dax::tool
