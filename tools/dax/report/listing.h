// Results as a table, JSON or CSV.
#pragma once

#include <optional>
#include <ostream>
#include <span>
#include <string>

#include "base/failure.h"
#include "command/inspect_options.h"
#include "model/blob_features.h"

namespace dax::tool {

// The result for one image.
struct Outcome {
  std::string file;  // printable
  Inspection inspection;
  StageTimes times;
  std::optional<Failure> failure;
};

struct Listing {
  std::span<const Outcome> outcomes;
  const InspectionSettings& settings;
  const TruthComparison* truth;  // null: none
};

void writeTable(std::ostream& out, const Listing& listing);
void writeJson(std::ostream& out, const Listing& listing);
void writeCsv(std::ostream& out, const Listing& listing);
void writeTimes(std::ostream& out, std::span<const Outcome> outcomes);

// "1200 x 900, threshold otsu 127, 40 of 88 regions"
std::string summary(const Inspection& inspection, const InspectionSettings& settings);

// "area 200..": the range that refused a region, as given.
std::string limitOf(std::string_view by, const InspectionSettings& settings);

// Columns of blob tables.
class TableColumns {
 public:
  TableColumns(const InspectionSettings& settings, bool scored);
  std::vector<std::string> titles() const;
  std::vector<std::string> fields(const BlobInfo& blob) const;

 private:
  const InspectionSettings& settings_;
  std::vector<Feature> features_;  // those of tables
  bool scored_;
};

}  // namespace dax::tool
