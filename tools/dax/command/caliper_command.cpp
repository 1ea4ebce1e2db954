#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>

#include "base/text.h"
#include "command/caliper_options.h"
#include "command/commands.h"
#include "command/number_option.h"
#include "command/picture_options.h"
#include "draw/caliper_overlay.h"
#include "draw/profile_plot.h"
#include "io/output_file.h"
#include "io/picture.h"
#include "model/caliper_search.h"
#include "model/caliper_warnings.h"
#include "report/caliper_listing.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

struct CaliperOptions {
  std::string input;
  std::optional<Levels> levels;
  std::vector<std::string> boxes;
  std::vector<std::string> rhomboids;
  std::vector<std::string> annuli;
  std::string repeat;
  CaliperSettings settings;
  CaliperOutputs outputs;
};

template <class R>
void parseRegions(const std::vector<std::string>& texts, std::vector<Region>& regions) {
  for (const std::string& text : texts) regions.push_back(*parseRegion<R>(text));
}

// Checked during parsing: otherwise the error would be reported for the arguments after "--box 120 80".
template <class R>
void addRegion(CLI::App& app, const char* name, std::vector<std::string>& texts, const char* form, const char* help) {
  app.add_option(name, texts, help)
      ->check([form](const std::string& text) {
        return parseRegion<R>(text) ? std::string() : inQuotes(text) + " is not " + form;
      })
      ->type_name(form)
      ->allow_extra_args(false)
      ->group("Regions, numbered in this order");
}

constexpr const char* kBoxForm = "X,Y,WIDTH,HEIGHT,ANGLE";
constexpr const char* kRhomboidForm = "X,Y,WIDTH,HEIGHT,ANGLE,SIDE";
constexpr const char* kAnnulusForm = "X,Y,INNER,OUTER,START,SWEEP";
constexpr int kMaxRepeats = 10000;
constexpr double kMaxStep = 1e5;

// Each region and, side by side, its copies.
std::vector<Region> repeated(const std::vector<Region>& regions, const std::string& text) {
  if (text.empty()) return regions;
  const std::vector<std::string_view> parts = split(text, ',');
  const auto count = parts.size() == 3 ? parseInteger(parts[0], 1, kMaxRepeats) : std::nullopt;
  const auto dx = count ? parseNumber(parts[1]) : std::nullopt, dy = count ? parseNumber(parts[2]) : std::nullopt;
  if (!dx || !dy || std::fabs(*dx) > kMaxStep || std::fabs(*dy) > kMaxStep) {
    reject("--repeat: " + inQuotes(text) + " is not N,DX,DY with N of 1.." + std::to_string(kMaxRepeats));
  }
  std::vector<Region> result;
  for (const Region& region : regions) {
    for (int i = 0; i < *count; ++i) result.push_back(moved(region, i * *dx, i * *dy));
  }
  return result;
}

std::vector<Region> regionsOf(const CaliperOptions& options) {
  std::vector<Region> regions;
  parseRegions<CaliperBox>(options.boxes, regions);
  parseRegions<CaliperRhomboid>(options.rhomboids, regions);
  parseRegions<CaliperAnnulus>(options.annuli, regions);
  if (regions.empty()) reject("caliper: where? (--box " + std::string(kBoxForm) + ", or dax caliper --help)");
  return repeated(regions, options.repeat);
}

void writeJson(std::ostream& out, const CaliperOptions& options, const Picture& picture,
               const std::vector<Caliper>& calipers) {
  auto json = pictureJson(printable(options.input), picture);
  json["warnings"] = warningsOf(picture.grey.size, calipers, options.settings);
  auto& list = json["calipers"] = nlohmann::ordered_json::array();
  for (const Caliper& caliper : calipers) {
    list.push_back(toJson(caliper, options.settings, options.outputs.profiles));
  }
  const WidthSpread spread = spreadOf(calipers);
  if (spread.count > 0) {
    json["widths"] = {{"count", spread.count},
                      {"mean", decimal(static_cast<float>(spread.mean))},
                      {"standard_deviation", decimal(static_cast<float>(spread.deviation))},
                      {"min", decimal(static_cast<float>(spread.min))},
                      {"max", decimal(static_cast<float>(spread.max))}};
  }
  out << json.dump(2) << '\n';
}

void writeTable(std::ostream& out, const CaliperOptions& options, const Picture& picture,
                const std::vector<Caliper>& calipers) {
  out << imageTitle(printable(options.input), picture.grey.size) << ", ";
  (options.settings.pairs ? writePairs : writeEdges)(out, calipers);
}

ExitStatus run(const CaliperOptions& options) {
  const std::vector<Region> regions = regionsOf(options);
  if (options.settings.expectedWidth && !options.settings.pairs) reject("--width needs --pair");
  if (options.settings.staircase && !options.settings.pairs) reject("--staircase needs --pair");
  requireUsable(options.outputs, options.input);
  const Picture picture = readPicture(options.input, options.levels);
  const GreyImage& image = picture.grey;
  sayNote(options.input, picture);
  const std::vector<Caliper> calipers = measureAll(image, regions, options.settings);
  const CaliperOutputs& outputs = options.outputs;
  if (!outputs.overlay.empty()) {
    AnnotatedPicture drawn(image, outputs.overlayScale);
    drawCalipers(drawn, calipers, options.settings.alongHeight);
    writeFile(outputs.overlay, drawn.png());
  }
  if (!outputs.plot.empty()) writeFile(outputs.plot, plotProfiles(calipers, options.settings));
  (outputs.json ? writeJson : writeTable)(std::cout, options, picture, calipers);
  finishOutput();
  sayWarnings(options.input, warningsOf(image.size, calipers, options.settings));
  const bool isFound = std::none_of(calipers.begin(), calipers.end(),
                                    [](const Caliper& c) { return c.edges.empty() && c.pairs.empty(); });
  return isFound ? ExitStatus::kOk : ExitStatus::kNotFound;
}

void addRegions(CLI::App& app, CaliperOptions& options) {
  const std::string group = "Regions, numbered in this order";
  addRegion<CaliperBox>(app, "--box", options.boxes, kBoxForm,
                        "around X,Y; WIDTH at ANGLE is searched, HEIGHT averaged.\nMay be given again");
  addRegion<CaliperRhomboid>(app, "--rhomboid", options.rhomboids, kRhomboidForm,
                             "the same with HEIGHT at an angle of its own, SIDE");
  addRegion<CaliperAnnulus>(
      app, "--annulus", options.annuli, kAnnulusForm,
      "part of a ring around X,Y between two radii, SWEEP degrees\nfrom START on; searched outwards");
  app.add_option("--repeat", options.repeat, "N of each region, every next one moved by DX,DY")
      ->type_name("N,DX,DY")
      ->group(group);
  app.add_flag("--along-height", options.settings.alongHeight,
               "search along the height and average along the width; in a\nring, search along the arc")
      ->group(group);
}

void addPairs(CLI::App& app, CaliperOptions& options) {
  app.add_flag("--pair", options.settings.pairs, "pairs of opposite edges and their distance, for widths")
      ->group("Edges");
  app.add_flag("--staircase", options.settings.staircase,
               "with --pair and --polarity any: pairs of any two edges, those\nof one polarity too")
      ->group("Edges");
  app.add_option("--width", options.settings.expectedWidth, "expected width of pairs, pixels: the nearer the better")
      ->check(numberOf(1e-3, 1e6))
      ->type_name("W")
      ->group("Edges");
  app.add_option("--count", options.settings.count, "keep N edges or pairs of a caliper, the best first, 1..1000 [10]")
      ->check(CLI::Range(1, 1000))
      ->type_name("N")
      ->group("Edges");
}

Command addCaliper(CLI::App& app) {
  CLI::App* command = app.add_subcommand("caliper", "Measure edges and widths to a fraction of a pixel");
  auto options = std::make_shared<CaliperOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as 8-bit grey")
      ->required()
      ->type_name("");
  addLevels(*command, options->levels, "Results");
  addRegions(*command, *options);
  addEdgeOptions(*command, options->settings,
                 "dark-to-light, light-to-dark or any, along the search\ndirection; of a pair its first edge [any]");
  addPairs(*command, *options);
  addOutputOptions(*command, options->outputs);
  command->footer(std::string(kCaliperHelp) +
                  "\n\nContrasts are responses; scores are contrasts as part of a step from black to white (of a\n"
                  "pair, two), with --width times its nearness, as a geometric mean.\n\n"
                  "Examples:\n"
                  "  dax caliper part.png --box 120,80,60,16,0 --overlay part-edges.png --plot profile.png\n"
                  "  dax caliper part.png --box 120,80,60,16,30 --pair --polarity dark-to-light --count 1\n"
                  "  dax caliper blade.png --box 60,40,80,6,90 --repeat 40,10,0 --pair --width 31 --count 1\n"
                  "  dax caliper ring.png --annulus 200,150,60,90,0,45 --polarity light-to-dark\n\n" +
                  std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration caliperRegistration("caliper", addCaliper);

}  // namespace
}  // namespace dax::tool
