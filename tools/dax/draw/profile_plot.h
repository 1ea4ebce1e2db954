// Plots of caliper profiles.
#pragma once

#include <string>
#include <vector>

#include "model/calipers.h"

namespace dax::tool {

// A PNG with a panel for each of the first 24 calipers: the profile above; the response, the threshold on both sides
// and the edges below.
std::string plotProfiles(const std::vector<Caliper>& calipers, const CaliperSettings& settings);

}  // namespace dax::tool
