// dax: machine vision from the command line.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <new>
#include <vector>

#include "base/run_info.h"
#include "base/text.h"
#include "command/commands.h"
#include "dax.h"

namespace dax::tool {

std::map<std::string, Command (*)(CLI::App& app)>& CommandRegistration::all() {
  static std::map<std::string, Command (*)(CLI::App & app)> commands;
  return commands;
}

void report(const Failure& failure) {
  std::cerr << "dax: " << failure.what() << '\n';
}

void say(const std::string& file, const std::string& what) {
  std::cerr << "dax: " << printable(file) << ": " << what << '\n';
}

void reject(const std::string& message) {
  throw Failure(ExitStatus::kUsage, message);
}

void finishOutput() {
  std::cout.flush();
  if (!std::cout) throw Failure(ExitStatus::kCannotWrite, "standard output: cannot be written");
}

void print(const std::string& text) {
  std::cout << text;
  finishOutput();
}

namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  dax render-scene parts.png\n"
    "  dax inspect parts.png --area 200.. --report parts.html\n"
    "  dax filter parts.png clean.png --median3 --compare specks.png\n"
    "  dax compare parts.png clean.png --out difference.png\n"
    "  dax convert clean.png view.jpg --normalise 1..99 --quality 90\n"
    "  dax warp view.jpg upright.jpg --rotate 90 --resize 640x\n"
    "  dax caliper parts.png --box 368,217,90,24,34 --pair --plot profile.png\n"
    "  dax line parts.png --from 63,333 --to 97,394 --overlay line.png\n"
    "  dax chessboard left/ --size 9x6 --json\n"
    "  dax fit decay.csv --model exponential --plot decay.svg\n"
    "  dax range scene parts.range\n"
    "  dax cloud normals parts.range normals.ply --picture normals.png\n\n"
    "dax COMMAND --help tells all of a command.\n\n";

// Help that names the type of a value and leaves the rest to the description.
class Help : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    const std::string type = option->get_type_size() == 0 ? "" : option->get_type_name();
    return type.empty() ? "" : " " + type.substr(0, type.find(':'));
  }
};

// The innermost subcommand parsed.
CLI::App& reached(CLI::App& app) {
  CLI::App* at = &app;
  while (!at->get_subcommands().empty()) at = at->get_subcommands().front();
  return *at;
}

// "dax cloud normals"
std::string fullName(const CLI::App& app) {
  return (app.get_parent() ? fullName(*app.get_parent()) + " " : "") + app.get_name();
}

// Describes a command-line error in terms of the line, not of the parser.
std::string explain(const CLI::App& app, const CLI::App& at, const CLI::ParseError& error) {
  const std::vector<std::string> left = app.remaining(true);
  const std::vector<const CLI::App*> commands = at.get_subcommands([](const CLI::App*) { return true; });
  std::string text;
  if (!commands.empty()) {
    const char* const kind = !left.empty() && left.front().rfind('-', 0) == 0 ? " is no option" : " is no command";
    for (const CLI::App* command : commands) text += (text.empty() ? "" : ", ") + command->get_name();
    text = (left.empty() ? "which command?" : inQuotes(left.front()) + kind) + " (" + text + ")";
  } else if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
    for (const std::string& each : left) text += " " + printable(each);
    text = "not expected:" + text;
  } else {
    text = printable(error.what());
  }
  return text + " (" + fullName(at) + " --help tells more)";
}

ExitStatus dispatch(int argc, char** argv) {
  CLI::App app("Filters and measures images, range images and point clouds, fits curves to points.", "dax");
  app.formatter(std::make_shared<Help>());
  app.get_formatter()->column_width(30);
  app.set_version_flag("--version", std::string("dax ") + DAX_GetVersion(), "show the version");
  app.set_help_flag("-h,--help", "show this help");
  app.require_subcommand(1);
  app.footer(std::string(kFooter) + kExitStatusHelp);
  std::vector<Command> commands;
  for (const auto& [name, add] : CommandRegistration::all()) commands.push_back(add(app));
  // An empty argument of a script is usually an unset variable.
  if (std::any_of(argv + std::min(argc, 1), argv + argc, [](const char* argument) { return *argument == '\0'; })) {
    reject("an argument is empty (dax --help tells more)");
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      app.exit(error);
      finishOutput();
      return ExitStatus::kOk;
    }
    throw Failure(ExitStatus::kUsage, explain(app, reached(app), error));
  }
  for (const Command& command : commands) {
    if (command.app->parsed()) return command.run();
  }
  return ExitStatus::kUsage;
}

ExitStatus runProgram(int argc, char** argv) {
  try {
    setRunInfo(argc, argv);
    return dispatch(argc, argv);
  } catch (const Failure& failure) {
    report(failure);
    return failure.status();
  } catch (const std::bad_alloc&) {
    report({ExitStatus::kInternal, "out of memory"});
  } catch (const std::exception& error) {
    report({ExitStatus::kInternal, printable(error.what())});
  }
  return ExitStatus::kInternal;
}

}  // namespace
}  // namespace dax::tool

int main(int argc, char** argv) {
  return static_cast<int>(dax::tool::runProgram(argc, argv));
}
