// The features of a blob in output order: one list for table, JSON and CSV.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/inspection.h"

namespace dax::tool {

struct Feature {
  std::string_view name;  // "long_axis" in JSON and CSV; the table says "long axis", options --long-axis
  bool isInTable;
  int decimals;   // in the table
  int dimension;  // 1: a length, 2: an area, 0: neither
  float (*value)(const BlobInfo& blob);

  std::string title() const;
};

// The value in pixels or, with a scale in the settings, in millimetres.
float valueOf(const Feature& feature, const BlobInfo& blob, const InspectionSettings& settings);

// Angles in degrees. Class and outside pixels are included if the settings request them.
std::vector<Feature> features(const InspectionSettings& settings);

// Degrees from the library's radians.
float degrees(float radians);

}  // namespace dax::tool
