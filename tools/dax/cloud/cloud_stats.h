// Extent and density of a cloud.
#pragma once

#include <string>

#include "cloud/cloud_steps.h"

namespace dax::tool {

struct CloudStats {
  size_t points = 0;
  size_t dropped = 0;
  bool normals = false;
  Place origin{};  // that the points were shifted by
  Place low{};
  Place high{};
  Place centroid{};
  // Distances to the nearest other point: minimum, median, mean, maximum. All 0 for a single point.
  double spacing[4] = {};
};

CloudStats measureCloud(const Cloud& cloud, const Workers& workers);

std::string cloudStatsText(const CloudStats& stats);
std::string cloudStatsJson(const std::string& file, const CloudStats& stats);

}  // namespace dax::tool
