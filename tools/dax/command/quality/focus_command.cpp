// dax focus: which of several images is the sharpest.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/columns.h"
#include "base/text.h"
#include "command/commands.h"
#include "draw/series_plot.h"
#include "io/inputs.h"
#include "io/output_file.h"
#include "io/output_name.h"
#include "quality/focus.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

struct FocusOptions {
  std::vector<std::string> inputs;
  std::string measure = kFocusMeasures[0];
  std::string plot;
  bool json = false;
};

struct FocusResult {
  std::string file;  // printable
  DaxiSize size{};
  int maxValue = 0;
  Focus focus{};
  std::optional<Failure> failure;
};

FocusResult focusOfFile(const std::filesystem::path& file) {
  FocusResult result;
  result.file = printable(file.string());
  try {
    const Picture picture = readPicture(file);
    result.size = picture.grey.size;
    result.maxValue = picture.maxValue;
    result.focus = measureFocus(picture);
  } catch (const Failure& failure) {
    const bool isNamed = failure.status() != ExitStatus::kRefused;
    result.failure = {failure.status(), isNamed ? failure.what() : result.file + ": " + failure.what()};
  }
  return result;
}

// Numbers of other sizes and ranges do not compare.
void refuseOthers(std::vector<FocusResult>& results) {
  const auto first = std::find_if(results.begin(), results.end(), [](const auto& each) { return !each.failure; });
  for (auto each = first; each != results.end(); ++each) {
    const bool isAlike = each->size.width == first->size.width && each->size.height == first->size.height &&
                         each->maxValue == first->maxValue;
    if (each->failure || isAlike) continue;
    each->failure = {ExitStatus::kRefused,
                     each->file + ": of another size or range of values than " + first->file + ": not compared"};
  }
}

// The sharpest, the first of several; none where all have failed.
const FocusResult* bestOf(const std::vector<FocusResult>& results, size_t measure) {
  const FocusResult* best = nullptr;
  for (const FocusResult& each : results) {
    if (!each.failure && (!best || each.focus[measure] > best->focus[measure])) best = &each;
  }
  return best;
}

void writeFocusJson(const std::vector<FocusResult>& results, const FocusResult* best, const std::string& measure) {
  nlohmann::ordered_json json = runJson();
  json["measure"] = measure;
  if (best) {
    json["best"] = best->file;
  } else {
    json["best"] = nullptr;
  }
  json["images"] = nlohmann::ordered_json::array();
  for (const FocusResult& each : results) {
    nlohmann::ordered_json image{{"file", each.file}};
    if (each.failure) image["error"] = each.failure->what();
    for (size_t i = 0; !each.failure && i < kFocusMeasures.size(); ++i) image[kFocusMeasures[i]] = each.focus[i];
    json["images"].push_back(image);
  }
  std::cout << json.dump(2) << '\n';
}

void writeFocusTable(const std::vector<FocusResult>& results, const FocusResult* best) {
  std::vector<Fields> lines{{"image"}};
  lines.front().insert(lines.front().end(), kFocusMeasures.begin(), kFocusMeasures.end());
  for (const FocusResult& each : results) {
    if (each.failure) continue;
    Fields line{each.file};
    for (const double value : each.focus) line.push_back(fixed(value, 2));
    lines.push_back(line);
  }
  if (!best) return;
  writeColumns(std::cout, lines);
  std::cout << "best: " << best->file << '\n';
}

// Each measure as a share of its largest value, by the number of the image.
std::string plotFocus(const std::vector<FocusResult>& results) {
  std::vector<Series> series;
  for (size_t i = 0; i < kFocusMeasures.size(); ++i) {
    Series one{kFocusMeasures[i], {}, {}, true, true};
    const FocusResult* const best = bestOf(results, i);
    for (size_t k = 0; k < results.size(); ++k) {
      if (results[k].failure) continue;
      one.x.push_back(static_cast<double>(k + 1));
      one.y.push_back(best->focus[i] > 0 ? results[k].focus[i] / best->focus[i] : 0);
    }
    series.push_back(one);
  }
  return drawSeries({"sharpness", "number of the image", "share of the sharpest"}, series);
}

ExitStatus runFocus(const FocusOptions& options) {
  const auto known = std::find(kFocusMeasures.begin(), kFocusMeasures.end(), options.measure);
  if (known == kFocusMeasures.end()) {
    reject("--measure: " + inQuotes(options.measure) + " is not one of tenengrad, laplacian, brenner");
  }
  requireEnding("--plot", options.plot, {".svg"});
  std::vector<FocusResult> results;
  for (const Job& job : planJobs(options.inputs, {}, {})) results.push_back(focusOfFile(job.input));
  refuseOthers(results);
  const FocusResult* const best = bestOf(results, static_cast<size_t>(known - kFocusMeasures.begin()));
  if (best && !options.plot.empty()) writeFile(options.plot, plotFocus(results));
  if (options.json) {
    writeFocusJson(results, best, options.measure);
  } else {
    writeFocusTable(results, best);
  }
  finishOutput();
  for (const FocusResult& each : results) {
    if (each.failure) report(*each.failure);
  }
  if (results.size() == 1 && results.front().failure) return results.front().failure->status();
  const bool failed = std::any_of(results.begin(), results.end(), [](const auto& r) { return r.failure.has_value(); });
  return failed ? ExitStatus::kSomeFailed : ExitStatus::kOk;
}

Command addFocus(CLI::App& app) {
  CLI::App* command = app.add_subcommand("focus", "Which of several images of a scene is the sharpest");
  auto options = std::make_shared<FocusOptions>();
  command
      ->add_option("IMAGE", options->inputs,
                   "images of one scene and one size (PNG, JPEG, TIFF, BMP, PGM,\n"
                   "PPM), or folders of them, taken as grey")
      ->required()
      ->type_name("");
  command
      ->add_option("--measure", options->measure,
                   "what is the best: one of\n"
                   "tenengrad  mean square of Sobel's gradient\n"
                   "laplacian  variance of the Laplace operator: finer detail\n"
                   "brenner    mean square of differences along rows")
      ->type_name("M")
      ->default_str(options->measure);
  command->add_flag("--json", options->json, "JSON instead of a table");
  command->add_option("--plot", options->plot, "also draw all three measures by image, .svg")->type_name("PICTURE");
  command->footer(
      "Greater is sharper. Numbers compare between images of one scene, taken with one exposure; noise adds\n"
      "to them all, to laplacian most.\n"
      "Examples:\n"
      "  dax focus stack/ --plot focus.svg\n"
      "  dax focus near.png middle.png far.png --measure laplacian --json\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return runFocus(*options); }};
}

const CommandRegistration focusRegistration("focus", addFocus);

}  // namespace
}  // namespace dax::tool
