#include "command/inspect_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <set>
#include <stdexcept>

#include "base/failure.h"
#include "command/number_option.h"
#include "command/picture_options.h"
#include "model/filters.h"

namespace dax::tool {
namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  dax inspect parts.png\n"
    "  dax inspect parts.png --area 200.. --overlay parts-blobs.png\n"
    "  dax inspect board.tif --dark --threshold 90 --circularity 0.8.. --sort x --order asc\n"
    "  dax inspect labels.png --classes --class-area 1=50..200 --class-area 2=300..\n"
    "  dax inspect parts.png --area 200.. --outside-limit 0 --rejected\n"
    "  dax inspect photos/ --threads 4 --csv --report reports/ > blobs.csv\n";

constexpr Feature kScore{"score", true, 3, 0, [](const Blob& b) { return b.score; }};

std::vector<std::string> sortKeyNames() {
  std::vector<std::string> names;
  for (const SortKey& key : sortKeys()) names.emplace_back(key.name);
  for (const ShapeFeature& each : shapeFeatures()) names.push_back(each.feature.option());
  names.emplace_back(kScore.name);
  return names;
}

// Names wrapped to the width of the help.
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

constexpr int kMaxArea = std::numeric_limits<int32_t>::max();

// A range "MIN..MAX" of whole areas; unlike others it may be inverted.
struct WholeRange {
  int min;
  int max;
};

std::optional<WholeRange> parseWholeRange(std::string_view text) {
  const size_t dots = text.find("..");
  if (dots == std::string_view::npos || text.size() == 2) return std::nullopt;
  const auto end = [](std::string_view part, int open) {
    return part.empty() ? open : parseInteger(part, 0, kMaxArea);
  };
  const auto min = end(text.substr(0, dots), 0);
  const auto max = end(text.substr(dots + 2), kMaxArea);
  if (!min || !max) return std::nullopt;
  return WholeRange{*min, *max};
}

// The range of --area for classes without one of their own.
WholeRange commonArea(const BlobSelectCfg& cfg) {
  if ((cfg.flags & DAXI_BLOB_BY_AREA) == 0) return {0, kMaxArea};
  const auto whole = [](float end) {
    if (end >= static_cast<float>(kMaxArea)) return kMaxArea;
    if (end != std::floor(end)) throw std::invalid_argument("--area takes whole numbers beside --class-area");
    return static_cast<int>(end);
  };
  return {whole(cfg.area.min), whole(cfg.area.max)};
}

uint32_t sortOrder(const std::string& name) {
  if (name == "none") return DAXI_BLOB_UNSORTED;
  return name == "asc" ? DAXI_BLOB_ASCENDING : DAXI_BLOB_DESCENDING;
}

}  // namespace

InspectCommandLine::InspectCommandLine(CLI::App& app) {
  options_.settings.select.common.maxCount = DAXI_BLOB_MAX_COUNT;
  app.add_option("IN", options_.inputs, "images (PNG, JPEG, TIFF, BMP, PGM, PPM), or folders of them")
      ->required()
      ->type_name("");
  addObjects(app);
  addFilters(app);
  addOutputs(app);
  addChecks(app);
  app.footer(thresholdHelp() + "\n\n" + kExamples + "\n" + kExitStatusHelp +
             "\nA single image that fails gives the status of its cause.");
}

void InspectCommandLine::addObjects(CLI::App& app) {
  const std::string group = "Finding objects";
  auto* threshold =
      app.add_option("--threshold", threshold_, "otsu, N, N..M, mask, sauvola:31,0.2 and others, see below\n[otsu]")
          ->type_name("T")
          ->group(group);
  auto* bright = app.add_flag("--bright", bright_, "objects are what the threshold sets [the default]")->group(group);
  auto* dark = app.add_flag("--dark,--invert", dark_, "objects are what it leaves out")->group(group)->excludes(bright);
  app.add_option("--roi", roi_, "only this part of the picture; places are those in the picture")
      ->type_name("X,Y,WIDTH,HEIGHT")
      ->group(group);
  app.add_option("--mm-per-pixel", mmPerPixel_, "lengths and areas, of ranges too, in millimetres [pixels]")
      ->check(numberOf(1e-9, 1e9))
      ->type_name("F")
      ->group(group);
  auto* levels = addLevels(app, options_.settings.levels, group);
  app.add_option("--connectivity", options_.settings.connectivity, "4: along edges, 8: corners too [8]")
      ->check(CLI::IsMember({4, 8}))
      ->type_name("4|8")
      ->group(group);
  auto* weighted =
      app.add_flag("--gray-weighted", grayWeighted_, "area and centroid weighted by grey value / 255")->group(group);
  app.add_flag(
         "--classes", options_.settings.byClass,
         "the image is a label image: its grey values are classes, 0 is\nbackground; objects are regions of one class")
      ->group(group)
      ->excludes(threshold)
      ->excludes(bright)
      ->excludes(dark)
      ->excludes(levels)
      ->excludes(weighted);
}

void InspectCommandLine::addFilters(CLI::App& app) {
  const std::string group = "Keeping objects (ranges include their ends; either end may be left out)";
  for (const Filter& filter : filters()) {
    app.add_option_function<std::string>(
           "--" + std::string(filter.name), [this, &filter](const std::string& text) { addRange(filter, text); },
           filter.help)
        ->type_name("MIN..MAX")
        ->group(group);
  }
  addShape(app);
  addClassAndOutside(app, group);
  app.add_option("--count", options_.settings.select.common.maxCount, "keep at most N objects, 1..20000 [20000]")
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

void InspectCommandLine::addShape(CLI::App& app) {
  const std::string group =
      "Keeping objects by shape and grey values (after all other ranges, without share in the score)";
  for (const ShapeFeature& each : shapeFeatures()) {
    app.add_option_function<std::string>(
           "--" + each.feature.option(), [this, &each](const std::string& text) { addShapeRange(each, text); },
           each.help)
        ->type_name("MIN..MAX")
        ->group(group);
  }
  app.add_flag(
         "--shape", options_.settings.shape,
         "list these features of every object; one of these ranges, or to\nsort by one of them, lists all of them")
      ->group(group);
}

void InspectCommandLine::addClassAndOutside(CLI::App& app, const std::string& group) {
  app.add_option("--class-area", classAreas_,
                 "area of the objects of class K, 1..255; may be repeated.\n"
                 "With MIN above MAX those between are refused, the ends too.\n"
                 "Other classes take --area. Counts in the score where\n--weight area=W says so")
      ->needs("--classes")
      ->type_name("K=MIN..MAX")
      ->allow_extra_args(false)
      ->group(group);
  auto* limit = app.add_option_function<int32_t>(
                       "--outside-pixels,--outside-limit",
                       [this](int32_t max) {
                         BlobSelectCfg& cfg = options_.settings.select.common;
                         cfg.flags |= DAXI_BLOB_BY_OUTSIDE_PIXELS;
                         cfg.outsideLimit = max;
                         options_.settings.limits["outside-pixels"] = ".." + std::to_string(max);
                       },
                       "outside pixels that an object may have: those on the border of the\n"
                       "image, or those that the mask leaves out")
                    ->check(CLI::Range(0, std::numeric_limits<int32_t>::max()))
                    ->type_name("N")
                    ->group(group);
  app.add_option("--outside-mask", options_.outsideMask, "an image of the same size: pixels where it is 0 are outside")
      ->needs(limit)
      ->type_name("FILE")
      ->group(group);
}

void InspectCommandLine::addOutputs(CLI::App& app) {
  app.add_option("--expect", expected_, "objects that there must be; with another number the exit status is 8")
      ->type_name("N|MIN..MAX")
      ->group("Checks");
  const std::string group = "Output (to standard output; --overlay and --report name a folder for several images)";
  auto* json = app.add_flag("--json", json_, "JSON instead of a table: more features, angles in degrees")->group(group);
  app.add_flag("--csv", csv_, "CSV instead of a table, one line an object")->group(group)->excludes(json);
  app.add_flag(
         "--rejected", options_.settings.rejected,
         "list the other objects too, each with the first range that refused it,\nor with count where better ones "
         "took all places; in reports too")
      ->group(group);
  app.add_option("--overlay", options_.overlay, "annotated picture")->type_name("OUT.png")->group(group);
  app.add_option("--overlay-scale", options_.overlayScale, "its magnification, 0.1..8 [1, small pictures are enlarged]")
      ->check(numberOf(0.1, 8))
      ->type_name("F")
      ->group(group);
  app.add_option("--report", options_.report, "self-contained page: picture and table")
      ->type_name("OUT.html")
      ->group(group);
  app.add_option("--threads", options_.threads,
                 "images inspected at a time, of a single image threads that share\n"
                 "its objects; at most one a processor, 0: as many [1]")
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
    app.add_option(name, value, help)->check(numberOf(0, 1e9))->type_name("E")->needs(truth)->group(group);
  };
  add("--max-centre-error", options_.tolerances.centre, "pixels [0.5]");
  add("--max-area-error", options_.tolerances.area, "per cent [3]");
  add("--max-angle-error", options_.tolerances.angle, "degrees [3]");
}

void InspectCommandLine::addRange(const Filter& filter, const std::string& text) {
  const auto range = parseRange(text);
  BlobSelectCfg unused{};
  if (!range || !activate(unused, filter, *range)) {
    throw CLI::ValidationError("--" + std::string(filter.name),
                               inQuotes(text) + " is not MIN..MAX, MIN.. or ..MAX (" + filter.help + ")");
  }
  ranges_[&filter] = *range;
  options_.settings.limits[std::string(filter.name)] = text;
}

void InspectCommandLine::addShapeRange(const ShapeFeature& feature, const std::string& text) {
  const auto range = parseRange(text);
  const std::string name = feature.feature.option();
  if (!range || !isPossible(feature, *range)) {
    throw CLI::ValidationError("--" + name, inQuotes(text) + " is not MIN..MAX, MIN.. or ..MAX (" + feature.help + ")");
  }
  options_.settings.shape = true;
  options_.settings.shapeRanges[&feature] = *range;
  options_.settings.limits[name] = text;
}

void InspectCommandLine::applyRanges() {
  const double pixelsPerUnit = mmPerPixel_ > 0 ? 1 / mmPerPixel_ : 1;
  for (const auto& [filter, range] : ranges_) {
    activate(options_.settings.select.common, *filter, range, pixelsPerUnit);
  }
}

// Region of interest, scale, expected number.
void InspectCommandLine::applyScale() {
  InspectionSettings& settings = options_.settings;
  if (mmPerPixel_ > 0) settings.mmPerPixel = mmPerPixel_;
  if (mmPerPixel_ > 0 && !classAreas_.empty()) {
    throw std::invalid_argument("--class-area counts pixels: it does not go with --mm-per-pixel");
  }
  if (!roi_.empty()) {
    const std::vector<std::string_view> parts = split(roi_, ',');
    std::vector<int> numbers;
    for (size_t i = 0; i < parts.size(); ++i) {
      const auto number = parseInteger(parts[i], i < 2 ? 0 : 1, DAXI_BLOB_MAX_SIDE);
      if (number) numbers.push_back(*number);
    }
    if (parts.size() != 4 || numbers.size() != 4) {
      throw std::invalid_argument("--roi: " + inQuotes(roi_) + " is not X,Y,WIDTH,HEIGHT in whole pixels");
    }
    settings.roi = DaxiRect{numbers[0], numbers[1], numbers[2], numbers[3]};
  }
  if (expected_.empty()) return;
  const auto number = parseInteger(expected_, 0, DAXI_BLOB_MAX_COUNT);
  settings.expected = number ? OpenRange{*number, *number} : parseRange(expected_);
  if (!settings.expected) throw std::invalid_argument("--expect: " + inQuotes(expected_) + " is not N or MIN..MAX");
}

void InspectCommandLine::applyClassAreas() {
  if (classAreas_.empty()) return;
  options_.settings.limits["class-area"] = "of --class-area";
  BlobSelectV4Cfg& cfg = options_.settings.select;
  const WholeRange common = commonArea(cfg.common);
  std::fill(std::begin(cfg.classAreaMin), std::end(cfg.classAreaMin), common.min);
  std::fill(std::begin(cfg.classAreaMax), std::end(cfg.classAreaMax), common.max);
  std::set<int> named;
  for (const std::string& text : classAreas_) {
    const auto pair = splitPair(text, '=');
    const auto cls = pair ? parseInteger(pair->first, 1, 255) : std::nullopt;
    const auto range = pair ? parseWholeRange(pair->second) : std::nullopt;
    if (!cls || !range) {
      throw std::invalid_argument("--class-area: " + inQuotes(text) + " is not K=MIN..MAX with K in 1..255");
    }
    if (!named.insert(*cls).second) {
      throw std::invalid_argument("--class-area names class " + std::to_string(*cls) + " twice");
    }
    cfg.classAreaMin[*cls] = range->min;
    cfg.classAreaMax[*cls] = range->max;
  }
  cfg.perClass = 1;
  cfg.common.flags |= DAXI_BLOB_BY_AREA;
  cfg.common.areaWeight = 0;  // the middle of the range differs by class; open and inverted ranges have none
}

void InspectCommandLine::applyWeights() {
  BlobSelectCfg& cfg = options_.settings.select.common;
  for (const std::string& text : weights_) {
    const auto pair = splitPair(text, '=');
    if (pair && findShapeFeature(pair->first)) {
      throw std::invalid_argument("--weight: ranges of shape and grey values, such as --" + std::string(pair->first) +
                                  ", have no share in the score");
    }
    const Filter* filter = pair ? findFilter(pair->first) : nullptr;
    const auto weight = pair ? parseNumber(pair->second) : std::nullopt;
    if (!filter || !weight || *weight < 0 || *weight > 1) {
      throw std::invalid_argument("--weight: " + inQuotes(text) + " is not RANGE=W, such as area=0.5, with W in 0..1");
    }
    const std::string name(filter->name);
    if ((cfg.flags & filter->flag) == 0) throw std::invalid_argument("--weight needs a range of --" + name);
    filter->weight(cfg) = static_cast<float>(*weight);
  }
}

void InspectCommandLine::applySort() {
  BlobSelectCfg& cfg = options_.settings.select.common;
  const auto keys = sortKeys();
  const auto key = std::find_if(keys.begin(), keys.end(), [&](const SortKey& each) { return each.name == sort_; });
  cfg.sortOrder = sortOrder(order_);
  cfg.sortKey = key == keys.end() ? static_cast<uint32_t>(DAXI_BLOB_KEY_AREA) : key->key;
  if (key != keys.end()) return;
  const ShapeFeature* shape = findShapeFeature(sort_);
  options_.settings.ranking = shape ? &shape->feature : &kScore;
  if (shape) {
    options_.settings.shape = true;
  } else if (!isScored(cfg)) {
    throw std::invalid_argument("--sort score needs a range with an upper end, such as --circularity 0.8..1");
  }
}

InspectOptions InspectCommandLine::finish() try {
  try {
    options_.settings.threshold = parseThreshold(threshold_, dark_);
    options_.settings.thresholdText = threshold_ + (dark_ ? ", dark" : "");
  } catch (const std::invalid_argument& error) {
    throw std::invalid_argument(std::string("--threshold: ") + error.what());
  }
  applyRanges();
  applyScale();
  applyClassAreas();
  applyWeights();
  applySort();
  // Without any filter the library would keep the first objects, not the best.
  BlobSelectCfg& cfg = options_.settings.select.common;
  if (cfg.flags == 0) activate(cfg, *findFilter("area"), {});
  cfg.grayMode = grayWeighted_ ? 1 : 0;
  options_.settings.limits["count"] = ".." + std::to_string(cfg.maxCount);
  options_.settings.contours = !options_.overlay.empty() || !options_.report.empty();
  options_.format = json_ ? ListingFormat::kJson : csv_ ? ListingFormat::kCsv : ListingFormat::kTable;
  return options_;
} catch (const std::invalid_argument& error) {
  throw Failure(ExitStatus::kUsage, error.what());
}

}  // namespace dax::tool
