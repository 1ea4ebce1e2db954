#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/text.h"
#include "base/workers.h"
#include "command/commands.h"
#include "draw/histogram_plot.h"
#include "io/inputs.h"
#include "io/output_file.h"
#include "model/image_stats.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kUsualBins = 256, kMaxBins = 65536;

struct StatsOptions {
  std::vector<std::string> inputs;
  std::string bins;
  std::string plot;
  bool json = false;
};

// Of one image.
struct ImageResult {
  std::string file;  // printable
  DaxiSize size{};
  int depth = 0, maxValue = 0;
  ImageStats stats{};
  std::string note;
  std::optional<Failure> failure;

  double share(uint64_t pixels) const {
    return static_cast<double>(pixels) / (static_cast<double>(size.width) * size.height);
  }
};

int binsOf(const StatsOptions& options) {
  if (options.bins.empty()) return kUsualBins;
  const auto bins = parseInteger(options.bins, 1, kMaxBins);
  if (!bins) reject("--bins: " + inQuotes(options.bins) + " is not an integer of 1 to 65536");
  return *bins;
}

void measureFile(const Job& job, int bins, ImageResult& result) {
  const Picture picture = readPicture(job.input);
  result.size = picture.grey.size;
  result.depth = picture.depth();
  result.maxValue = picture.maxValue;
  if (picture.pages > 1) result.note = "the first of " + std::to_string(picture.pages) + " pages";
  result.stats = measureStats(picture, bins);
  if (!job.overlay.empty()) writeFile(job.overlay, plotHistogram(result.stats, picture.maxValue));
}

ImageResult resultOf(const Job& job, int bins) {
  ImageResult result;
  result.file = printable(job.input.string());
  try {
    measureFile(job, bins, result);
  } catch (const Failure& failure) {
    const bool isNamed = failure.status() != ExitStatus::kRefused;
    result.failure = {failure.status(), isNamed ? failure.what() : result.file + ": " + failure.what()};
  } catch (const std::bad_alloc&) {
    result.failure = {ExitStatus::kInternal, result.file + ": out of memory"};
  }
  return result;
}

Json toJson(const ImageResult& result, bool withBins) {
  Json json{{"file", result.file}};
  if (result.failure) {
    json["error"] = result.failure->what();
    return json;
  }
  const ImageStats& stats = result.stats;
  json["width"] = result.size.width;
  json["height"] = result.size.height;
  json["depth"] = result.depth;
  if (!result.note.empty()) json["note"] = result.note;
  json["mean"] = stats.mean;
  json["standard_deviation"] = stats.stdDev;
  json["min"] = stats.min;
  json["min_at"] = {stats.minAt.x, stats.minAt.y};
  json["max"] = stats.max;
  json["max_at"] = {stats.maxAt.x, stats.maxAt.y};
  for (size_t i = 0; i < kShares.size(); ++i) {
    json["percentiles"][fixed(100 * kShares[i], 0)] = stats.percentiles[i];
  }
  json["black"] = result.share(stats.black);
  json["white"] = result.share(stats.white);
  if (withBins) json["histogram"] = {{"from", 0}, {"to", result.maxValue + 1}, {"counts", stats.counts}};
  return json;
}

void writeStatsJson(const std::vector<ImageResult>& results, bool withBins) {
  Json json = runJson();
  json["images"] = Json::array();
  for (const ImageResult& result : results) json["images"].push_back(toJson(result, withBins));
  std::cout << json.dump(2) << '\n';
}

std::string placeOf(DaxiPoint32s at) {
  return std::to_string(at.x) + ", " + std::to_string(at.y);
}

void writeStatsTable(const std::vector<ImageResult>& results) {
  std::vector<Fields> lines{{"image", "size", "bits", "mean", "deviation", "min", "at", "1 %", "median", "99 %", "max",
                             "at", "black %", "white %"}};
  for (const ImageResult& result : results) {
    if (result.failure) continue;
    const ImageStats& stats = result.stats;
    lines.push_back({result.file, std::to_string(result.size.width) + " x " + std::to_string(result.size.height),
                     std::to_string(result.depth), fixed(stats.mean, 2), fixed(stats.stdDev, 2),
                     std::to_string(stats.min), placeOf(stats.minAt), std::to_string(stats.percentiles.front()),
                     std::to_string(stats.median()), std::to_string(stats.percentiles.back()),
                     std::to_string(stats.max), placeOf(stats.maxAt), fixed(100 * result.share(stats.black), 2),
                     fixed(100 * result.share(stats.white), 2)});
  }
  if (lines.size() > 1) writeColumns(std::cout, lines);
}

ExitStatus run(const StatsOptions& options) {
  const int bins = binsOf(options);
  const std::vector<Job> jobs = planJobs(options.inputs, options.plot, {}, "--histogram");
  std::vector<ImageResult> results;
  {
    Progress progress(jobs.size(), "images");
    for (const Job& job : jobs) {
      results.push_back(resultOf(job, bins));
      progress.advance();
    }
  }
  if (options.json) {
    writeStatsJson(results, !options.bins.empty());
  } else {
    writeStatsTable(results);
  }
  finishOutput();
  for (const ImageResult& result : results) {
    if (result.failure) report(*result.failure);
    if (!result.note.empty()) std::cerr << "dax: " << result.file << ": " << result.note << '\n';
  }
  if (results.size() == 1 && results.front().failure) return results.front().failure->status();
  const bool failed = std::any_of(results.begin(), results.end(), [](const auto& r) { return r.failure.has_value(); });
  return failed ? ExitStatus::kSomeFailed : ExitStatus::kOk;
}

Command addStats(CLI::App& app) {
  CLI::App* command = app.add_subcommand("stats", "Mean, deviation, extremes, percentiles and histogram of images");
  auto options = std::make_shared<StatsOptions>();
  command
      ->add_option("IMAGE", options->inputs,
                   "images (PNG, JPEG, TIFF, BMP, PGM, PPM), or folders of them,\n"
                   "taken as grey")
      ->required()
      ->type_name("");
  command->add_flag("--json", options->json, "JSON instead of a table, with more percentiles");
  command
      ->add_option("--bins", options->bins,
                   "so many bins of the histogram, 1 to 65536, which the JSON then\n"
                   "has too [256]")
      ->type_name("N");
  command
      ->add_option("--histogram", options->plot,
                   "also plot the histogram, .png; of several images a folder, which\n"
                   "is made where it is missing")
      ->type_name("PICTURE");
  command->footer(
      "Values are those of the file: of 16 bits 0..65535. Extremes are followed by the first place,\n"
      "column, row, that has them. Black and white are the shares of pixels at 0 and at the greatest\n"
      "value that the file can hold: an overexposed picture has much of the latter.\n"
      "Examples:\n"
      "  dax stats parts.png --histogram levels.png\n"
      "  dax stats recordings/ --json --bins 64 > stats.json\n\n" +
      std::string(kExitStatusHelp));
  return {command, [options] { return run(*options); }};
}

const CommandRegistration statsRegistration("stats", addStats);

}  // namespace
}  // namespace dax::tool
