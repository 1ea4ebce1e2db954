// The features of a blob in output order: one list for table, JSON and CSV.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/inspection.h"

namespace dax::tool {

struct Feature {
  std::string_view name;   // as in JSON and CSV
  std::string_view title;  // column of the table; empty: not in the table
  int decimals;            // in the table
  float (*value)(const BlobInfo& blob);
};

// Lengths in pixels, angles in degrees. Class and outside pixels are included if the settings request them.
std::vector<Feature> features(const InspectionSettings& settings);

// Degrees from the library's radians.
float degrees(float radians);

}  // namespace dax::tool
