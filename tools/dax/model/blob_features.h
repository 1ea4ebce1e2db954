// The features of a blob in output order: one list for table, JSON and CSV.
#pragma once

#include <vector>

#include "model/inspection.h"

namespace dax::tool {

// Angles in degrees. Class, outside pixels and shape are included if the settings request them.
std::vector<Feature> features(const InspectionSettings& settings);

}  // namespace dax::tool
