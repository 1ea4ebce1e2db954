#include "cloud/cloud.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace dax::tool {
namespace {

constexpr double kFar = 4;  // in sizes of the cloud

// The multiple of the power of ten below the size; where all points coincide, the coordinate itself.
double roundBelow(double low, double size) {
  if (!(size > 0)) return low;
  const double unit = std::pow(10, std::floor(std::log10(size)));
  const double origin = std::floor(low / unit) * unit;
  return std::isfinite(origin) ? origin : low;
}

bool isFloat(double value) {
  return static_cast<double>(static_cast<float>(value)) == value;
}

}  // namespace

void setPoints(Cloud& cloud, const std::vector<double>& coordinates) {
  Place low, high;
  std::copy_n(coordinates.begin(), 3, low.begin());
  high = low;
  for (size_t i = 3; i < coordinates.size(); ++i) {
    low[i % 3] = std::min(low[i % 3], coordinates[i]);
    high[i % 3] = std::max(high[i % 3], coordinates[i]);
  }
  const double size = std::max({high[0] - low[0], high[1] - low[1], high[2] - low[2]});
  const bool exact = std::all_of(coordinates.begin(), coordinates.end(), isFloat);
  for (size_t axis = 0; axis < 3; ++axis) {
    const double distance = std::max(std::abs(low[axis]), std::abs(high[axis]));
    const bool isFar = size > 0 ? distance > kFar * size : !exact;
    cloud.origin[axis] = isFar ? roundBelow(low[axis], size) : 0;
  }
  cloud.isWide = !exact || cloud.isShifted();
  cloud.points.resize(coordinates.size());
  for (size_t i = 0; i < coordinates.size(); ++i) {
    cloud.points[i] = static_cast<float>(coordinates[i] - cloud.origin[i % 3]);
  }
}

std::string placeText(const Place& place) {
  char text[96];
  std::snprintf(text, sizeof text, "%.12g, %.12g, %.12g", place[0], place[1], place[2]);
  return text;
}

}  // namespace dax::tool
