// The command line of `dax inspect`.
#pragma once

#include <CLI/App.hpp>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "io/truth.h"
#include "model/filters.h"
#include "model/inspection.h"

namespace dax::tool {

enum class ListingFormat { kTable, kJson, kCsv };

struct InspectOptions {
  std::vector<std::string> inputs;
  InspectionSettings settings;
  ListingFormat format = ListingFormat::kTable;
  std::filesystem::path overlay;  // a file, of several images a folder; empty: none
  std::filesystem::path report;
  double overlayScale = 0;            // 0: chosen by the size of the image
  std::filesystem::path outsideMask;  // empty: none
  std::filesystem::path truth;
  Tolerances tolerances;
  uint32_t threads = 1;
  bool time = false;
};

// Options as text from the command line; finish() interprets them when all are known.
class InspectCommandLine {
 public:
  explicit InspectCommandLine(CLI::App& app);

  // Throws Failure(kUsage).
  InspectOptions finish();

 private:
  void addObjects(CLI::App& app);
  void addFilters(CLI::App& app);
  void addClassAndOutside(CLI::App& app, const std::string& group);
  void addOutputs(CLI::App& app);
  void addChecks(CLI::App& app);
  void addShape(CLI::App& app);
  void addRange(const Filter& filter, const std::string& text);
  void addShapeRange(const ShapeFeature& feature, const std::string& text);
  void applyRanges();
  void applyScale();
  void applyClassAreas();
  void applyWeights();
  void applySort();

  InspectOptions options_;
  std::map<const Filter*, OpenRange> ranges_;
  std::string roi_;
  std::string expected_;
  double mmPerPixel_ = 0;
  std::string threshold_ = "otsu";
  bool bright_ = false;
  bool dark_ = false;
  std::vector<std::string> classAreas_;
  std::vector<std::string> weights_;
  std::string sort_ = "area";
  std::string order_ = "desc";
  bool grayWeighted_ = false;
  bool json_ = false;
  bool csv_ = false;
};

}  // namespace dax::tool
