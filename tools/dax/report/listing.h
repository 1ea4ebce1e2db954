// Results as a table, JSON or CSV.
#pragma once

#include <optional>
#include <ostream>
#include <span>
#include <string>

#include "base/columns.h"
#include "base/failure.h"
#include "command/inspect_options.h"

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

// Tables for people: the titles, and a line for each blob, which begins with its number.
std::vector<Fields> blobTable(const Inspection& inspection, const InspectionSettings& settings);
// Lines that begin with the range that refused the blob.
std::vector<Fields> rejectedTable(const Inspection& inspection, const InspectionSettings& settings);

}  // namespace dax::tool
