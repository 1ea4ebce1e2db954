#include "command/caliper_options.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

#include "base/failure.h"
#include "base/text.h"
#include "command/number_option.h"
#include "io/output_name.h"

namespace dax::tool {

void addEdgeOptions(CLI::App& app, CaliperSettings& settings, const char* polarityHelp) {
  const std::string group = "Edges";
  const std::map<std::string, uint32_t> polarities = {{"dark-to-light", DAXI_CALIPER_DARK_TO_LIGHT},
                                                      {"light-to-dark", DAXI_CALIPER_LIGHT_TO_DARK},
                                                      {"any", DAXI_CALIPER_ANY}};
  app.add_option_function<std::string>(
         "--polarity", [&settings, polarities](const std::string& name) { settings.polarity = polarities.at(name); },
         polarityHelp)
      ->check(CLI::IsMember(polarities))
      ->type_name("P")
      ->group(group);
  app.add_option("--half-width", settings.halfWidth,
                 "half the width of the smoothing kernel, 1..50: wider ones\nstand more noise and need more room [3]")
      ->check(CLI::Range(1, 50))
      ->type_name("H")
      ->group(group);
  app.add_option(
         "--threshold", settings.threshold,
         "minimum response of an edge. Up to half width 5 it is the\nheight of a sharp step, wider kernels respond "
         "with "
         "less:\n"
         "0.19 of it at 6, 0.02 at 50 [that of 20 grey levels]")
      ->check(numberOf(0, 65535))
      ->type_name("T")
      ->group(group);
  app.add_option("--choose", settings.choice,
                 "only the K-th along the profile (or the last), not the best;\nits score is 1")
      ->check(CLI::Range(1, 1000000))
      ->type_name("K")
      ->group(group);
  app.add_flag("--fine", settings.fine,
               "the mean of two samplings half a pixel apart: takes most of\nthe error of blurred edges away")
      ->group(group);
}

void sayWarnings(const std::string& file, const std::vector<std::string>& warnings) {
  for (const std::string& warning : warnings) std::cerr << "dax: " << printable(file) << ": " << warning << '\n';
}

void addOutputOptions(CLI::App& app, CaliperOutputs& outputs) {
  const std::string group = "Results";
  app.add_flag("--json", outputs.json, "JSON instead of a table")->group(group);
  app.add_flag("--profiles", outputs.profiles, "in the JSON, profiles and responses too")->group(group);
  app.add_option("--overlay", outputs.overlay, "picture of the image with regions and results, .png")
      ->type_name("PNG")
      ->group(group);
  app.add_option("--overlay-scale", outputs.overlayScale, "size of that picture, 0.1..8 [small images enlarged]")
      ->check(numberOf(0.1, 8))
      ->type_name("S")
      ->group(group);
  app.add_option("--plot", outputs.plot, "plot of profile, response and threshold of the first 24\ncalipers, .png")
      ->type_name("PNG")
      ->group(group);
}

void requireUsable(const CaliperOutputs& outputs, const std::filesystem::path& input) {
  if (outputs.profiles && !outputs.json) throw Failure(ExitStatus::kUsage, "--profiles needs --json");
  requireEnding("--overlay", outputs.overlay, {".png"});
  requireEnding("--plot", outputs.plot, {".png"});
  requireOther("--overlay", outputs.overlay, {{"the input", input}});
  requireOther("--plot", outputs.plot, {{"the input", input}, {"the overlay", outputs.overlay}});
}

}  // namespace dax::tool
