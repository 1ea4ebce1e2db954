#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "command/commands.h"
#include "draw/fit_plot.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "model/curve_fit.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

namespace fs = std::filesystem;

struct FitOptions {
  std::string input;
  std::string model;
  std::string columns = "1,2";
  std::string start;
  std::string plot;
  bool json = false;
};

std::string formatted(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

std::string counted(size_t count, const char* one, const char* many) {
  return std::to_string(count) + (count == 1 ? one : many);
}

// The command line, checked before any file is opened.
struct Request {
  explicit Request(const FitOptions& options) : model(parseModel(options.model)) {
    if (!model) reject("--model: " + inQuotes(options.model) + " is not one of " + kModelNames);
    const auto columns = parseIntegerPair(options.columns, ',', 1, 1000);
    if (!columns) reject("--columns: " + inQuotes(options.columns) + " is not X,Y with numbers from 1 on");
    xColumn = columns->first, yColumn = columns->second;
    if (!options.start.empty()) parseStart(options.start);
    requireEnding("--plot", options.plot, {".svg"});
    requireOther("--plot", options.plot, {{"the input", options.input}});
  }

  std::unique_ptr<CurveModel> model;
  int xColumn = 1, yColumn = 2;
  std::optional<Values> start;

 private:
  void parseStart(const std::string& text) {
    start.emplace();
    for (const std::string_view part : split(text, ',')) {
      const std::optional<double> value = parseNumber(part);
      if (!value) reject("--start: " + inQuotes(part) + " is not a finite number");
      start->push_back(*value);
    }
    if (start->size() == model->count()) return;
    std::string names;
    for (const std::string& name : model->parameters) names += (names.empty() ? "" : ",") + name;
    reject("--start: " + model->name + " wants " + std::to_string(model->count()) + " values: " + names);
  }
};

void writeFitTable(std::ostream& out, const CurveModel& model, const CurveFit& fit) {
  const size_t points = fit.residuals.size(), n = model.count();
  out << model.name << ": " << model.formula << "\n\n";
  char line[128];
  std::snprintf(line, sizeof line, "%-12s %18s %16s\n", "parameter", "value", "standard error");
  out << line;
  for (size_t i = 0; i < n; ++i) {
    std::snprintf(line, sizeof line, "%-12s %18.10g %16.3g\n", model.parameters[i].c_str(), fit.parameters[i],
                  fit.standardErrors[i]);
    out << line;
  }
  out << "\n"
      << points << " points, " << counted(points - n, " degree", " degrees") << " of freedom, "
      << counted(fit.iterations, " iteration", " iterations") << "\n"
      << "standard deviation of the residuals " << formatted("%.6g", fit.deviation);
  if (fit.rSquared) out << ", R^2 " << formatted("%.6f", *fit.rSquared);
  out << '\n';
}

void writeFitJson(std::ostream& out, const CurveModel& model, const CurveFit& fit) {
  Json json = runJson("of the points");
  json.update(Json{{"model", model.name}, {"formula", model.formula}, {"parameters", Json::array()}});
  for (size_t i = 0; i < model.count(); ++i) {
    json["parameters"].push_back(
        {{"name", model.parameters[i]}, {"value", fit.parameters[i]}, {"standard_error", fit.standardErrors[i]}});
  }
  json["points"] = fit.residuals.size();
  json["degrees_of_freedom"] = fit.residuals.size() - model.count();
  json["deviation"] = fit.deviation;
  json["r_squared"] = fit.rSquared ? Json(*fit.rSquared) : Json();
  json["iterations"] = fit.iterations;
  json["residuals"] = fit.residuals;
  out << json.dump(2) << '\n';
}

CurveFit fitFile(const FitOptions& options, const Request& request, Points& points) {
  points = readPoints(options.input, request.xColumn, request.yColumn);
  try {
    return fitCurve(*request.model, points, request.start);
  } catch (const Failure& failure) {
    throw Failure(failure.status(), printable(options.input) + ": " + failure.what());
  }
}

ExitStatus run(const FitOptions& options) {
  const Request request(options);
  Points points;
  const CurveFit fit = fitFile(options, request, points);
  if (!options.plot.empty()) {
    const std::string name = fs::path(options.input).filename().string();
    writeFile(options.plot, drawFit(*request.model, points, fit, name + ", " + request.model->formula));
  }
  (options.json ? writeFitJson : writeFitTable)(std::cout, *request.model, fit);
  finishOutput();
  return ExitStatus::kOk;
}

Command addFit(CLI::App& app) {
  CLI::App* command = app.add_subcommand("fit", "Fit a curve to points, with standard errors and a plot");
  auto options = std::make_shared<FitOptions>();
  command
      ->add_option("IN", options->input,
                   "text with columns of numbers, parted by commas, semicolons,\n"
                   "tabs or blanks; a line of titles and lines with # are passed over")
      ->required()
      ->type_name("");
  command
      ->add_option("--model", options->model,
                   "one of\n"
                   "line           y = intercept + slope x\n"
                   "polynomial:N   y = c0 + c1 x + ... + cN x^N, N up to 9\n"
                   "exponential    y = amplitude exp(rate x) + offset\n"
                   "gaussian       y = height exp(-(x - centre)^2 / (2 sigma^2)) + offset\n"
                   "sine           y = amplitude sin(2 pi frequency x + phase) + offset\n"
                   "circle         (x - centre_x)^2 + (y - centre_y)^2 = radius^2, by\n"
                   "               the distances from the circle")
      ->required()
      ->type_name("MODEL");
  command->add_option("--columns", options->columns, "which columns are x and y; default 1,2")->type_name("X,Y");
  command
      ->add_option("--start", options->start,
                   "where to start, all parameters in the order of the table;\n"
                   "default: found from the points")
      ->type_name("A,B,...");
  command->add_flag("--json", options->json, "JSON instead of a table, with the residuals");
  command->add_option("--plot", options->plot, "also draw points, curve and residuals, .svg")->type_name("PICTURE");
  command->footer(
      "Examples:\n"
      "  dax fit decay.csv --model exponential --plot decay.svg\n"
      "  dax fit rim.csv --model circle --columns 2,3\n"
      "  dax fit swing.csv --model sine --start 1,0.5,0,0 --json\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration fitRegistration("fit", addFit);

}  // namespace
}  // namespace dax::tool
