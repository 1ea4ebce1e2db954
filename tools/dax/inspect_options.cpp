#include "inspect_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <stdexcept>

#include "failure.h"
#include "filters.h"

namespace dax::tool {
namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  dax inspect parts.png\n"
    "  dax inspect parts.png --area 200.. --overlay parts-blobs.png\n"
    "  dax inspect board.tif --dark --threshold 90 --circularity 0.8.. --sort x --order asc\n"
    "  dax inspect photos/ --threads 4 --csv --report reports/ > blobs.csv\n";

std::vector<std::string> sortKeyNames() {
  std::vector<std::string> names;
  for (const SortKey& key : sortKeys()) names.emplace_back(key.name);
  return names;
}

// Names in lines that fit the help.
std::string joined(const std::vector<std::string>& names) {
  std::string result;
  size_t line = 0;
  for (const std::string& name : names) {
    const bool full = result.size() - line > 45;
    if (full) line = result.size();
    result += (result.empty() ? "" : full ? ",\n" : ", ") + name;
  }
  return result;
}

void setRange(BlobSelectCfg& cfg, const Filter& filter, const std::string& text) {
  const auto range = parseRange(text);
  if (range && activate(cfg, filter, *range)) return;
  throw CLI::ValidationError("--" + std::string(filter.name),
                             inQuotes(text) + " is not a range MIN..MAX (" + filter.help + ")");
}

uint32_t sortOrder(const std::string& name) {
  if (name == "none") return DAXI_BLOB_UNSORTED;
  return name == "asc" ? DAXI_BLOB_ASCENDING : DAXI_BLOB_DESCENDING;
}

}  // namespace

InspectCommandLine::InspectCommandLine(CLI::App& app) {
  options_.settings.select.maxCount = DAXI_BLOB_MAX_COUNT;
  app.add_option("IN", options_.inputs, "images (PNG, JPEG, TIFF, BMP, PGM, PPM), or folders of them")
      ->required()
      ->type_name("");
  addObjects(app);
  addFilters(app);
  addOutputs(app);
  addChecks(app);
  app.footer(std::string(kThresholdHelp) + "\n\n" + kExamples + "\n" + kExitStatusHelp +
             "\nA single image that fails gives the status of its cause.");
}

void InspectCommandLine::addObjects(CLI::App& app) {
  const std::string group = "Finding objects";
  app.add_option("--threshold", threshold_, "otsu, N, N..M, mask, soft:... or relative:..., see below [otsu]")
      ->type_name("T")
      ->group(group);
  auto* bright = app.add_flag("--bright", bright_, "objects are what the threshold sets [the default]")->group(group);
  app.add_flag("--dark,--invert", dark_, "objects are what it leaves out")->group(group)->excludes(bright);
  app.add_option("--connectivity", options_.settings.connectivity, "4: along edges, 8: corners too [8]")
      ->check(CLI::IsMember({4, 8}))
      ->type_name("4|8")
      ->group(group);
  app.add_flag("--gray-weighted", grayWeighted_, "area and centroid weighted by grey value / 255")->group(group);
}

void InspectCommandLine::addFilters(CLI::App& app) {
  const std::string group = "Keeping objects (ranges include their ends; either end may be left out)";
  for (const Filter& filter : filters()) {
    app.add_option_function<std::string>(
           "--" + std::string(filter.name),
           [this, &filter](const std::string& text) { setRange(options_.settings.select, filter, text); }, filter.help)
        ->type_name("MIN..MAX")
        ->group(group);
  }
  app.add_option("--count", options_.settings.select.maxCount, "most objects kept, 1..20000 [20000]")
      ->check(CLI::Range(1, DAXI_BLOB_MAX_COUNT))
      ->type_name("N")
      ->group(group);

  const std::string order = "Order and score";
  app.add_option("--sort", sort_, "[area] " + joined(sortKeyNames()))
      ->check(CLI::IsMember(sortKeyNames()))
      ->type_name("KEY")
      ->group(order);
  app.add_option("--order", order_, "asc, desc, or none for the order of finding [desc]")
      ->check(CLI::IsMember({"asc", "desc", "none"}))
      ->type_name("ORDER")
      ->group(order);
  app.add_option("--weight", weights_,
                 "share 0..1 of a range in the score, which is 1 in the middle of\nall ranges; may be repeated. "
                 "[1; 0 for ranges without upper end]")
      ->type_name("RANGE=W")
      ->allow_extra_args(false)
      ->group(order);
}

void InspectCommandLine::addOutputs(CLI::App& app) {
  const std::string group = "Output (to standard output; --overlay and --report name a folder for several images)";
  auto* json = app.add_flag("--json", json_, "JSON instead of a table: every feature, angles in degrees")->group(group);
  app.add_flag("--csv", csv_, "CSV instead of a table, one line an object")->group(group)->excludes(json);
  app.add_option("--overlay", options_.overlay, "annotated picture")->type_name("OUT.png")->group(group);
  app.add_option("--overlay-scale", options_.overlayScale, "its magnification, 0.1..8 [1, small pictures are enlarged]")
      ->check(CLI::Range(0.1, 8.0))
      ->type_name("F")
      ->group(group);
  app.add_option("--report", options_.report, "self-contained page: picture and table")
      ->type_name("OUT.html")
      ->group(group);
  app.add_option("--threads", options_.threads, "images inspected at a time, at most one a processor; 0: as many [1]")
      ->check(CLI::Range(0, 1024))
      ->type_name("N")
      ->group(group);
  app.add_flag("--time", options_.time, "time of each stage, on standard error")->group(group);
}

void InspectCommandLine::addChecks(CLI::App& app) {
  const std::string group = "Checking against the truth of a scene";
  auto* truth = app.add_option("--truth", options_.truth, "truth of the one image, from dax render-scene")
                    ->type_name("FILE")
                    ->group(group);
  const auto add = [&](const char* name, double& value, const char* help) {
    app.add_option(name, value, help)->check(CLI::Range(0.0, 1e9))->type_name("E")->needs(truth)->group(group);
  };
  add("--max-centre-error", options_.tolerances.centre, "pixels [0.5]");
  add("--max-area-error", options_.tolerances.area, "per cent [3]");
  add("--max-angle-error", options_.tolerances.angle, "degrees [3]");
}

void InspectCommandLine::applyWeights() {
  BlobSelectCfg& cfg = options_.settings.select;
  for (const std::string& text : weights_) {
    const auto pair = splitPair(text, '=');
    const Filter* filter = pair ? findFilter(pair->first) : nullptr;
    const auto weight = pair ? parseNumber(pair->second) : std::nullopt;
    if (!filter || !weight || *weight < 0 || *weight > 1) {
      throw std::invalid_argument("--weight: " + inQuotes(text) + " is not RANGE=W with W in 0..1");
    }
    const std::string name(filter->name);
    if ((cfg.flags & filter->flag) == 0) throw std::invalid_argument("--weight needs a range of --" + name);
    filter->weight(cfg) = static_cast<float>(*weight);
  }
}

void InspectCommandLine::applySort() {
  BlobSelectCfg& cfg = options_.settings.select;
  const auto keys = sortKeys();
  cfg.sortKey = std::find_if(keys.begin(), keys.end(), [&](const SortKey& key) { return key.name == sort_; })->key;
  cfg.sortOrder = sortOrder(order_);
}

InspectOptions InspectCommandLine::finish() try {
  try {
    options_.settings.threshold = parseThreshold(threshold_, dark_);
  } catch (const std::invalid_argument& error) {
    throw std::invalid_argument(std::string("--threshold: ") + error.what());
  }
  applyWeights();
  applySort();
  // Without any filter the library would keep the first objects, not the best.
  if (options_.settings.select.flags == 0) activate(options_.settings.select, *findFilter("area"), {});
  options_.settings.select.grayMode = grayWeighted_ ? 1 : 0;
  options_.settings.contours = !options_.overlay.empty() || !options_.report.empty();
  options_.format = json_ ? ListingFormat::kJson : csv_ ? ListingFormat::kCsv : ListingFormat::kTable;
  return options_;
} catch (const std::invalid_argument& error) {
  throw Failure(ExitStatus::kUsage, error.what());
}

}  // namespace dax::tool
