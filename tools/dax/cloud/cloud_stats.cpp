#include "cloud/cloud_stats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numeric>

#include "base/text.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

constexpr std::array kSpacingNames = {"min", "median", "mean", "max"};

void measureSpacing(const Cloud& cloud, const Workers& workers, double* spacing) {
  std::vector<double> nearest;
  nearest.reserve(cloud.size());
  forNeighbours(cloud, 2, workers, [&](const Neighbours& block) {
    for (size_t i = 1; i < block.distances.size(); i += 2) nearest.push_back(std::sqrt(double{block.distances[i]}));
  });
  const auto middle = nearest.begin() + static_cast<ptrdiff_t>(nearest.size() / 2);
  std::nth_element(nearest.begin(), middle, nearest.end());
  const auto [min, max] = std::minmax_element(nearest.begin(), nearest.end());
  spacing[0] = *min;
  spacing[1] = *middle;
  spacing[2] = std::accumulate(nearest.begin(), nearest.end(), 0.0) / static_cast<double>(nearest.size());
  spacing[3] = *max;
}

}  // namespace

CloudStats measureCloud(const Cloud& cloud, const Workers& workers) {
  CloudStats stats;
  stats.points = cloud.size();
  stats.dropped = cloud.dropped;
  stats.normals = !cloud.normals.empty();
  stats.origin = cloud.origin;
  const Box box = boxOf(cloud);
  for (size_t i = 0; i < cloud.points.size(); ++i) stats.centroid[i % 3] += cloud.points[i];
  for (size_t axis = 0; axis < 3; ++axis) {
    stats.low[axis] = cloud.origin[axis] + box.low[axis];
    stats.high[axis] = cloud.origin[axis] + box.high[axis];
    stats.centroid[axis] = cloud.origin[axis] + stats.centroid[axis] / static_cast<double>(cloud.size());
  }
  if (cloud.size() > 1) measureSpacing(cloud, workers, stats.spacing);
  return stats;
}

std::string cloudStatsText(const CloudStats& stats) {
  const auto real = [](double v) { return shortest(static_cast<float>(v)); };
  const bool isShifted = !isZero(stats.origin);
  const auto triple = [&](const Place& v) {
    return isShifted ? placeText(v) : real(v[0]) + ", " + real(v[1]) + ", " + real(v[2]);
  };
  std::string text = "points    " + std::to_string(stats.points) + (stats.normals ? ", with normals" : "");
  if (stats.dropped > 0) text += "; " + std::to_string(stats.dropped) + " without finite coordinates left out";
  if (isShifted) text += "\norigin    " + placeText(stats.origin) + ", from which was computed";
  text += "\nmin       " + triple(stats.low) + "\nmax       " + triple(stats.high);
  text += "\ncentroid  " + triple(stats.centroid) + "\nspacing  ";
  for (size_t i = 0; i < kSpacingNames.size(); ++i)
    text += std::string(" ") + kSpacingNames[i] + " " + real(stats.spacing[i]);
  return text + "\n";
}

std::string cloudStatsJson(const std::string& file, const CloudStats& stats) {
  using Json = nlohmann::ordered_json;
  Json json = runJson("of the coordinates");
  json["file"] = file;
  json.update(Json{{"points", stats.points},
                   {"dropped", stats.dropped},
                   {"normals", stats.normals},
                   {"origin", stats.origin},
                   {"min", stats.low},
                   {"max", stats.high},
                   {"centroid", stats.centroid}});
  for (size_t i = 0; i < kSpacingNames.size(); ++i) json["spacing"][kSpacingNames[i]] = stats.spacing[i];
  return json.dump(2) + "\n";
}

}  // namespace dax::tool
