#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "command/commands.h"
#include "command/picture_options.h"
#include "draw/mask_sheet.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "io/picture.h"
#include "io/picture_file.h"
#include "model/threshold_method.h"

namespace dax::tool {
namespace {

struct ThresholdOptions {
  std::string input;
  std::string output;
  std::string method;
  std::optional<Levels> levels;
  bool all = false;
  bool dark = false;
};

std::string titleOf(const ThresholdMethod& method, const MethodMask& result) {
  std::string title = method.name;
  for (const int level : result.levels) title += " " + std::to_string(level);
  if (method.local >= 0)
    title += " " + std::to_string(method.window.width) + " x " + std::to_string(method.window.height);
  return title;
}

void drawAll(const ThresholdOptions& options, const Picture& picture) {
  std::vector<TitledImage> images = {{"picture", picture.grey}};
  std::string lines;
  for (const ThresholdMethod& method : allThresholdMethods()) {
    MethodMask result = applyThresholdMethod(method, picture, options.dark);
    const std::string title = titleOf(method, result);
    lines += title + (result.note.empty() ? "" : ": " + result.note) + "\n";
    images.push_back({title, std::move(result.mask)});
  }
  writeFile(options.output, drawSheet(images));
  print(lines);
}

void applyOne(const ThresholdOptions& options, const ThresholdMethod& method, const Picture& picture) {
  const MethodMask result = applyThresholdMethod(method, picture, options.dark);
  writePicture(options.output, result.mask);
  if (!result.note.empty()) say(options.input, result.note);
  print(titleOf(method, result) + "\n");
}

std::optional<ThresholdMethod> methodOf(const ThresholdOptions& options) {
  if (options.all) return std::nullopt;
  std::optional<ThresholdMethod> method;
  try {
    method = parseThresholdMethod(options.method);
  } catch (const std::invalid_argument& error) {
    reject("--method: " + std::string(error.what()));
  }
  if (!method) reject("--method: " + inQuotes(options.method) + " is none (dax threshold --help tells them)");
  return method;
}

ExitStatus run(const ThresholdOptions& options) {
  const std::optional<ThresholdMethod> method = methodOf(options);
  if (options.all) {
    requireEnding("OUT", options.output, {".png"});
  } else {
    requirePictureName("OUT", options.output);
  }
  const Picture picture = readPicture(options.input, options.levels);
  sayNote(options.input, picture);
  if (method) {
    applyOne(options, *method, picture);
  } else {
    drawAll(options, picture);
  }
  return ExitStatus::kOk;
}

Command addThreshold(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("threshold", "Make a mask by a threshold that is found, or compare all methods");
  auto options = std::make_shared<ThresholdOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as grey")
      ->required()
      ->type_name("");
  command->add_option("OUT", options->output, "the mask, .png or .pgm; with --all .png")->required()->type_name("");
  auto* all = command->add_flag("--all", options->all, "one picture of the masks of all methods, with their levels");
  command->add_option("--method", options->method, "of those below [otsu]")
      ->type_name("M")
      ->default_str("otsu")
      ->excludes(all);
  command->add_flag("--dark", options->dark, "set what is dark");
  addLevels(*command, options->levels, "Options");
  options->method = "otsu";
  command->footer("Methods:\n  otsu              the level that parts dark and bright best\n" +
                  std::string(kMethodHelp) +
                  "\n\nExamples:\n"
                  "  dax threshold page.png ink.png --method sauvola:31,0.2 --dark\n"
                  "  dax threshold photo.png methods.png --all\n\n" +
                  std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration thresholdRegistration("threshold", addThreshold);

}  // namespace
}  // namespace dax::tool
