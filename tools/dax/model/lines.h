// Lines through the edges of a row of calipers.
#pragma once

#include <optional>
#include <vector>

#include "daxi/line_fit.h"
#include "model/calipers.h"

namespace dax::tool {

struct LineSettings {
  Point from = {0, 0};
  Point to = {0, 0};
  int32_t calipers = 20;
  double length = 40;               // of each caliper, across the line
  std::optional<double> breadth;    // along it; none: the distance between them, at most 15
  int32_t rejected = 0;             // worst edges that do not count
  std::optional<double> tolerance;  // degrees
  float distance = 3;
  int32_t init = DAXI_LINE_INIT_SOME_PAIRS;
  int32_t weights = DAXI_LINE_HUBER;
};

// Adjacent boxes whose search direction crosses the expected line from left to right, as seen on the screen in the
// direction from `from` to `to`.
std::vector<Region> rowOfCalipers(const LineSettings& settings);

struct LinePoint {
  size_t caliper;
  DaxiPoint32f point;
  double distance;  // signed
  float weight;
  bool inlier;
};

struct FittedLine {
  DaxiLine line;
  double rms;       // of the distances of the points on it; the library's own value includes the weights
  double rmsOfAll;  // of the distances of all points
  double degrees;   // its direction, of the two the one nearer to that from `from` to `to`
  std::vector<LinePoint> points;
};

// Through the best edge of each caliper. Throws Failure: kNotFound without a line, kRefused.
FittedLine fitLine(const std::vector<Caliper>& calipers, const LineSettings& settings);

}  // namespace dax::tool
