#include "model/lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "base/library_call.h"

namespace dax::tool {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int32_t kMaxRounds = 100;

double directionOf(const LineSettings& settings) {
  return std::atan2(double{settings.to.y} - settings.from.y, double{settings.to.x} - settings.from.x);
}

LineFitCfg cfgFor(const LineSettings& settings) {
  LineFitCfg cfg = {};
  cfg.initMethod = settings.init;
  cfg.weightFunction = settings.weights;
  cfg.maxIterations = kMaxRounds;
  cfg.maxRejected = settings.rejected;
  cfg.distanceThreshold = settings.distance;
  cfg.angleConstraint = settings.tolerance ? 1 : 0;
  cfg.expectedAngle = static_cast<float>(directionOf(settings));
  cfg.angleTolerance = static_cast<float>(settings.tolerance.value_or(0) * kPi / 180);
  return cfg;
}

// The direction of the line that is nearer to a given one.
double directionNear(const DaxiLine& line, double direction) {
  const double angle = std::atan2(-double{line.a}, double{line.b});
  return angle + kPi * std::round((direction - angle) / kPi);
}

}  // namespace

std::vector<Region> rowOfCalipers(const LineSettings& settings) {
  const double dx = double{settings.to.x} - settings.from.x, dy = double{settings.to.y} - settings.from.y;
  const double spacing = std::hypot(dx, dy) / settings.calipers;
  const double breadth = settings.breadth.value_or(std::clamp(std::floor(spacing), 1.0, 15.0));
  const double across = std::remainder(directionOf(settings) + kPi / 2, 2 * kPi);
  std::vector<Region> regions;
  for (int32_t i = 0; i < settings.calipers; ++i) {
    const double part = (i + 0.5) / settings.calipers;
    regions.push_back(CaliperBox{static_cast<float>(settings.from.x + part * dx),
                                 static_cast<float>(settings.from.y + part * dy), static_cast<float>(settings.length),
                                 static_cast<float>(breadth), static_cast<float>(across)});
  }
  return regions;
}

FittedLine fitLine(const std::vector<Caliper>& calipers, const LineSettings& settings) {
  FittedLine fitted{};
  std::vector<DaxiPoint32f> points;
  for (size_t i = 0; i < calipers.size(); ++i) {
    if (calipers[i].edges.empty()) continue;
    points.push_back(calipers[i].edges.front().point);
    fitted.points.push_back({i, points.back(), 0, 0, false});
  }
  if (points.size() < 2) {
    throw Failure(ExitStatus::kNotFound,
                  "line: edges in " + std::to_string(points.size()) + " of " + std::to_string(calipers.size()) +
                      " calipers, which make no line (try a lower --threshold or a greater --length)");
  }
  const auto n = static_cast<int32_t>(points.size());
  const LineFitCfg cfg = cfgFor(settings);
  if (cfg.maxRejected > n - 2) {
    throw Failure(ExitStatus::kRefused, "line: --reject " + std::to_string(cfg.maxRejected) +
                                            " leaves less than 2 of " + std::to_string(n) + " edges");
  }
  uint64_t bytes = 0;
  check(DAXI_LineFitRegreBufferSize_32f(n, &bytes), "line fit");
  const Memory buffer(bytes);
  std::vector<uint8_t> inliers(points.size());
  std::vector<float> weights(points.size());
  float rms;
  const DaxStatus status =
      DAXI_LineFitRegre_32f(points.data(), n, &cfg, &fitted.line, inliers.data(), weights.data(), &rms, buffer.get());
  if (status == DAX_STS_LEAST_SQUARES) {
    throw Failure(ExitStatus::kNotFound,
                  std::string("line: none through the edges") + (settings.tolerance ? " within --tolerance" : ""));
  }
  check(status, "line fit");
  fitted.degrees = directionNear(fitted.line, directionOf(settings)) * 180 / kPi;
  const DaxiLine& line = fitted.line;
  double squares = 0, allSquares = 0;
  int inlierCount = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    LinePoint& to = fitted.points[i];
    to.distance = double{line.a} * to.point.x + double{line.b} * to.point.y + line.c;
    to.weight = weights[i];
    to.inlier = inliers[i] != 0;
    allSquares += to.distance * to.distance;
    squares += to.inlier ? to.distance * to.distance : 0;
    inlierCount += to.inlier;
  }
  fitted.rmsOfAll = std::sqrt(allSquares / static_cast<double>(points.size()));
  fitted.rms = std::sqrt(squares / std::max(inlierCount, 1));
  return fitted;
}

}  // namespace dax::tool
