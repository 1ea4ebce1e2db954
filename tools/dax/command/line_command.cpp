#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <map>
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
#include "report/line_listing.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

struct LineOptions {
  std::string input;
  std::optional<Levels> levels;
  CaliperSettings calipers;
  LineSettings line;
  CaliperOutputs outputs;
};

constexpr double kMaxCoordinate = 1e6;

void addPoint(CLI::App& app, const std::string& name, Point& point, const char* help) {
  app.add_option_function<std::string>(
         name,
         [name, &point](const std::string& text) {
           const auto parts = splitPair(text, ',');
           const auto x = parts ? parseNumber(parts->first) : std::nullopt;
           const auto y = parts ? parseNumber(parts->second) : std::nullopt;
           if (!x || !y || std::fabs(*x) > kMaxCoordinate || std::fabs(*y) > kMaxCoordinate) {
             throw CLI::ValidationError(name, inQuotes(text) + " is not X,Y");
           }
           point = {static_cast<float>(*x), static_cast<float>(*y)};
         },
         help)
      ->type_name("X,Y")
      ->required()
      ->group("Calipers");
}

template <class Target>
void addNumber(CLI::App& app, const std::string& name, const char* type, Target& target, double low, double high,
               const char* help, const char* group) {
  app.add_option(name, target, help)->check(numberOf(low, high))->type_name(type)->group(group);
}

void addRow(CLI::App& app, LineSettings& line) {
  addPoint(app, "--from", line.from, "one end of the line as it is expected");
  addPoint(app, "--to", line.to,
           "the other; calipers search from the left to the right of\nwho walks from one to the other");
  app.add_option("--calipers", line.calipers, "how many, side by side, 2..1000 [20]")
      ->check(CLI::Range(2, 1000))
      ->type_name("N")
      ->group("Calipers");
  addNumber(app, "--length", "L", line.length, 1, 1e4, "of each caliper, across the line, pixels [40]", "Calipers");
  addNumber(app, "--breadth", "B", line.breadth, 1, 1e4,
            "of each along the line, averaged [up to its neighbours,\nat most 15]", "Calipers");
}

void addName(CLI::App& app, const char* name, const std::map<std::string, int32_t>& names, int32_t& target,
             const char* help) {
  app.add_option_function<std::string>(
         name, [&target, names](const std::string& text) { target = names.at(text); }, help)
      ->check(CLI::IsMember(names))
      ->type_name("NAME")
      ->group("Line");
}

void addFit(CLI::App& app, LineSettings& line) {
  app.add_option_function<int32_t>(
         "--reject", [&line](const int32_t& count) { line.rejected = count; }, "worst edges that do not count [0]")
      ->check(CLI::Range(0, 1000))
      ->type_name("K")
      ->group("Line");
  addNumber(app, "--distance", "D", line.distance, 1e-6, 1e6, "edges farther from the line never count, pixels [3]",
            "Line");
  addName(
      app, "--weights",
      {{"least-squares", DAXI_LINE_LEAST_SQUARES}, {"huber", DAXI_LINE_HUBER}, {"tukey", DAXI_LINE_TUKEY}},
      line.weights,
      "of the others by their distance: least-squares (all alike),\nhuber or tukey (least for the farthest) [huber]");
  addName(app, "--start",
          {{"least-squares", DAXI_LINE_INIT_LEAST_SQUARES},
           {"all-pairs", DAXI_LINE_INIT_ALL_PAIRS},
           {"some-pairs", DAXI_LINE_INIT_SOME_PAIRS}},
          line.init,
          "first line: least-squares over all, or the best one through\nall-pairs or some-pairs of edges [some-pairs]");
  addNumber(app, "--tolerance", "DEGREES", line.tolerance, 0, 180,
            "refuse lines that are turned by more from the expected one", "Line");
}

void writeJson(std::ostream& out, const LineOptions& options, const Picture& picture,
               const std::vector<Caliper>& calipers, const FittedLine* fitted) {
  auto json = pictureJson(printable(options.input), picture);
  json["warnings"] = warningsOf(picture.grey.size, calipers, options.calipers);
  json["line"] = fitted ? toJson(*fitted) : nlohmann::ordered_json();
  auto& list = json["calipers"] = nlohmann::ordered_json::array();
  for (const Caliper& caliper : calipers) list.push_back(toJson(caliper, options.calipers, options.outputs.profiles));
  out << json.dump(2) << '\n';
}

// Without a line the calipers, which tell why there is none.
void draw(const CaliperOutputs& outputs, const GreyImage& image, const std::vector<Caliper>& calipers,
          const FittedLine* fitted) {
  if (outputs.overlay.empty()) return;
  AnnotatedPicture drawn(image, outputs.overlayScale);
  drawCalipers(drawn, calipers, false);
  if (fitted) drawLine(drawn, *fitted, image.size);
  writeFile(outputs.overlay, drawn.png());
}

ExitStatus run(LineOptions options) {
  const LineSettings& line = options.line;
  if (std::hypot(line.to.x - line.from.x, line.to.y - line.from.y) < 1) {
    reject("--from and --to are less than a pixel apart");
  }
  requireUsable(options.outputs, options.input);
  options.calipers.count = 1;
  const Picture picture = readPicture(options.input, options.levels);
  const GreyImage& image = picture.grey;
  sayNote(options.input, picture);
  const std::vector<Caliper> calipers = measureAll(image, rowOfCalipers(line), options.calipers);
  const CaliperOutputs& outputs = options.outputs;
  if (!outputs.plot.empty()) writeFile(outputs.plot, plotProfiles(calipers, options.calipers));
  sayWarnings(options.input, warningsOf(image.size, calipers, options.calipers));
  FittedLine fitted{};
  try {
    fitted = fitLine(calipers, line);
  } catch (const Failure& failure) {
    if (failure.status() != ExitStatus::kNotFound) throw;
    draw(outputs, image, calipers, nullptr);
    if (outputs.json) writeJson(std::cout, options, picture, calipers, nullptr);
    finishOutput();
    throw;
  }
  draw(outputs, image, calipers, &fitted);
  if (outputs.json) {
    writeJson(std::cout, options, picture, calipers, &fitted);
  } else {
    std::cout << imageTitle(printable(options.input), image.size) << ", ";
    writeLine(std::cout, fitted, calipers.size());
  }
  finishOutput();
  return ExitStatus::kOk;
}

Command addLine(CLI::App& app) {
  CLI::App* command = app.add_subcommand("line", "Fit a line through the edges of a row of calipers");
  auto options = std::make_shared<LineOptions>();
  command->add_option("IN", options->input, "image (PNG, JPEG, TIFF, BMP, PGM, PPM), taken as 8-bit grey")
      ->required()
      ->type_name("");
  addLevels(*command, options->levels, "Results");
  addRow(*command, options->line);
  addEdgeOptions(*command, options->calipers, "dark-to-light, light-to-dark or any, along the search\ndirection [any]");
  addFit(*command, options->line);
  addOutputOptions(*command, options->outputs);
  command->footer(std::string(kCaliperHelp) +
                  "\n\nThe best edge of each caliper takes part. The line is a x + b y + c = 0 with (a, b) of length\n"
                  "1; distances from it have a sign. With noise, dirt or a second contour, narrow --polarity or\n"
                  "raise --reject to the share of edges that may be wrong.\n\n"
                  "Examples:\n"
                  "  dax line part.png --from 40,200 --to 360,210\n"
                  "  dax line part.png --from 40,200 --to 360,210 --calipers 40 --polarity dark-to-light\n"
                  "  dax line part.png --from 40,200 --to 360,210 --reject 6 --overlay line.png --plot edges.png\n\n" +
                  std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration lineRegistration("line", addLine);

}  // namespace
}  // namespace dax::tool
