// dax warp: the steps of tools/dax/warp, one after the other, between reading and writing.
#include <CLI/CLI.hpp>
#include <memory>
#include <utility>

#include "base/text.h"
#include "command/commands.h"
#include "command/samples/samples_output.h"
#include "io/inputs.h"
#include "warp/warp_step.h"

namespace dax::tool {
namespace {

struct WarpOptions : SamplesOptions {
  std::string interpolation = "linear";
  std::string border;
  bool plain = false;
  std::vector<std::pair<const WarpOption*, std::string>> given;  // as on the command line
};

template <class Value>
std::optional<Value> valueNamed(const std::string& name, std::initializer_list<std::pair<const char*, Value>> all) {
  for (const auto& [each, value] : all) {
    if (name == each) return value;
  }
  return std::nullopt;
}

Sampling samplingOf(const WarpOptions& options) {
  Sampling sampling;
  const auto interpolation = valueNamed<int32_t>(options.interpolation, {{"nearest", DAXI_INTERPOLATION_NEAREST},
                                                                         {"linear", DAXI_INTERPOLATION_LINEAR},
                                                                         {"cubic", DAXI_INTERPOLATION_CUBIC},
                                                                         {"lanczos", DAXI_INTERPOLATION_LANCZOS3},
                                                                         {"area", DAXI_INTERPOLATION_AREA}});
  if (!interpolation) {
    reject("--interpolation: " + inQuotes(options.interpolation) + " is none of nearest, linear, cubic, lanczos, area");
  }
  sampling.interpolation = *interpolation;
  sampling.antialias = !options.plain;
  if (options.border.empty()) return sampling;
  sampling.border = valueNamed<int32_t>(options.border, {{"replicate", DAXI_BORDER_REPLICATE},
                                                         {"mirror", DAXI_BORDER_MIRROR},
                                                         {"symmetric", DAXI_BORDER_SYMMETRIC},
                                                         {"circular", DAXI_BORDER_CIRCULAR}});
  if (sampling.border) return sampling;
  const auto value = parseNumber(options.border);
  if (!value) {
    reject("--border: " + inQuotes(options.border) +
           " is neither replicate, mirror, symmetric or circular, nor a number, the value outside");
  }
  sampling.border = DAXI_BORDER_CONSTANT, sampling.value = *value;
  return sampling;
}

// In the order of the command line.
std::vector<ConvertStep> warpStepsOf(const WarpOptions& options) {
  if (options.given.empty()) reject("warp: how? (dax warp --help tells the steps)");
  const Sampling sampling = samplingOf(options);
  std::vector<ConvertStep> steps;
  for (const auto& [option, value] : options.given) {
    ConvertStep step = option->parse(value, sampling);
    if (!step) reject(std::string(option->name) + ": " + inQuotes(value) + " is not " + option->form);
    steps.push_back(std::move(step));
  }
  return steps;
}

ExitStatus runWarp(const WarpOptions& options) {
  const DaxiImageWriteCfg cfg = writeCfg(options, areSeveral(options.inputs));
  const std::vector<ConvertStep> steps = warpStepsOf(options);
  return convertAll(options, steps, [&](const std::filesystem::path& path, Samples& samples) {
    writeSamples(path, samples, cfg, "dax convert ");
  });
}

void addSampling(CLI::App& command, WarpOptions& options) {
  command
      .add_option("--interpolation", options.interpolation,
                  "of values between pixels: nearest, linear, cubic (Keys), lanczos\n"
                  "(3 lobes), or of --resize area, exact means [linear]. Cubic keeps\n"
                  "edges sharper, nearest makes no new values: for masks")
      ->type_name("KIND")
      ->group("How");
  command
      .add_option("--border", options.border,
                  "what lies outside the image: a value, or the image goes on by\n"
                  "replicate, mirror, symmetric or circular [0; of --resize replicate]")
      ->type_name("RULE")
      ->group("How");
  command
      .add_flag("--no-antialias", options.plain,
                "--resize reads only the pixels around each position, also where\n"
                "it shrinks: faster, but fine patterns turn into others")
      ->group("How");
}

Command addWarp(CLI::App& app) {
  CLI::App* command = app.add_subcommand("warp", "Resize, turn, mirror, straighten, unroll and align images");
  auto options = std::make_shared<WarpOptions>();
  addNames(*command, *options);
  for (const WarpOption* option : warpOptions()) {
    const auto add = [&given = options->given, option](const std::string& value) { given.emplace_back(option, value); };
    command->add_option_function<std::string>(option->name, add, option->help)
        ->type_name(option->valueName)
        ->trigger_on_parse()
        ->group("Steps");
  }
  addSampling(*command, *options);
  addFileOptions(*command, *options);
  command->footer(
      "Steps work one after the other, in the order given; each may come several times. Coordinates\n"
      "are pixels, x to the right and y down, and whole numbers are the centres of pixels: the upper\n"
      "left one is 0,0. Positions are exact to 1/60000 of a pixel, so that what is warped can be measured\n"
      "afterwards. Each step rounds to the bits of the file; dax convert --read-as 32f keeps all.\n\n"
      "Examples:\n"
      "  dax warp photo.jpg small.jpg --resize 640x\n"
      "  dax warp scan.png large.png --resize 2.5 --interpolation cubic\n"
      "  dax warp labels.png labels-small.png --resize 0.5 --interpolation nearest\n"
      "  dax warp photo.jpg upright.jpg --rotate 90\n"
      "  dax warp part.png straight.png --rotate=-3.7:keep --border replicate\n"
      "  dax warp desk.jpg page.png --perspective 155,15,360,95,260,130,65,40:300x50\n"
      "  dax warp cap.png text.png --polar 320,240,150,190\n"
      "  dax warp text.png cap.png --polar-back 320,240,150,190:640x480\n"
      "  dax warp part.png moved.png --shift 0.25,-3\n"
      "  dax warp now.png laid-upon.png --align before.png --interpolation lanczos\n"
      "  dax warp recordings/ small/ --format png --resize 0.5 --interpolation area\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runWarp(*options); }};
}

const CommandRegistration warpRegistration("warp", addWarp);

}  // namespace
}  // namespace dax::tool
