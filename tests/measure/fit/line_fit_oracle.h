// The robust line fit by its definition: sorting for ranks and medians, angles for eigenvectors, all pairs counted one
// point at a time. Residuals and thresholds are single precision, as the contract has it.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>
#include <vector>

#include "daxi/line_fit.h"

namespace dax::oracle {

struct Point {
  double x, y;
};

struct Line {
  double a, b, c;
  double distance(Point p) const { return std::fabs(a * p.x + b * p.y + c); }
};

struct LineFit {
  Line line;
  std::vector<int> inliers;
  std::vector<double> weights;
  double rms;
};

// Along the axis of least inertia of the weighted points.
inline std::optional<Line> totalLeastSquares(const std::vector<Point>& points, const std::vector<double>& weights) {
  long double sum = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    if (weights[i] == 0) continue;
    sum += weights[i], x += weights[i] * points[i].x, y += weights[i] * points[i].y;
  }
  x /= sum, y /= sum;
  for (size_t i = 0; i < points.size(); ++i) {
    if (weights[i] == 0) continue;
    const long double dx = points[i].x - x, dy = points[i].y - y;
    xx += weights[i] * dx * dx, xy += weights[i] * dx * dy, yy += weights[i] * dy * dy;
  }
  if (std::hypot(xx - yy, 2 * xy) < 1e-12L * (xx + yy)) return std::nullopt;
  const long double angle = std::atan2(2 * xy, xx - yy) / 2;
  const double a = static_cast<float>(-std::sin(angle)), b = static_cast<float>(std::cos(angle));
  return Line{a, b, static_cast<float>(std::sin(angle) * x - std::cos(angle) * y)};
}

inline std::optional<Line> searchPairs(const std::vector<Point>& points, const LineFitCfg& cfg) {
  const size_t n = points.size();
  std::optional<Line> fullest, closest;
  size_t max = 0;
  double min = DBL_MAX;
  std::vector<bool> covered;
  const auto offer = [&](size_t i, size_t j) {
    const double dx = points[j].x - points[i].x, dy = points[j].y - points[i].y, length = std::hypot(dx, dy);
    if (length * length < 1.1920929e-7) return;
    if (cfg.angleConstraint) {
      const double turn = std::remainder(std::atan2(dy, dx) - cfg.expectedAngle, M_PI);
      if (std::fabs(turn) > cfg.angleTolerance + 1.2e-7) return;
    }
    const Line line{-dy / length, dx / length, (points[j].y * points[i].x - points[j].x * points[i].y) / length};
    double sum = 0;
    size_t count = 1;
    for (size_t k = 0; k < n; ++k) {
      const double d = line.distance(points[k]);
      if (d <= cfg.distanceThreshold + 1.1920929e-7) sum += d, ++count;
      if (k >= j && d <= 0.5) covered[k] = true;
    }
    if (count > max) max = count, fullest = line;
    if (count + static_cast<size_t>(cfg.maxRejected) >= n && sum / static_cast<double>(count) <= min) {
      min = sum / static_cast<double>(count), closest = line;
    }
  };
  if (cfg.initMethod == 3 && n > 200) {
    covered.assign(n, false);
    uint64_t state = 0;
    const auto next = [&] {
      state = state * 6364136223846793005u + 1442695040888963407u;
      return static_cast<size_t>((state >> 32) * n >> 32);
    };
    for (size_t k = std::min<size_t>(20000, std::max<size_t>(1000, 4000000 / n)); k > 0; --k) {
      const size_t i = next(), j = next();
      offer(std::min(i, j), std::max(i, j));
    }
    return closest ? closest : fullest;
  }
  for (size_t i = 0; i < n; ++i) {
    covered.assign(n, false);
    for (size_t j = i + 1; j < n; ++j) {
      if (!covered[j]) offer(i, j);
    }
  }
  return closest ? closest : fullest;
}

inline float medianOf(std::vector<float> values) {
  std::sort(values.begin(), values.end());
  const size_t n = values.size();
  return n % 2 ? values[n / 2] : static_cast<float>((double{values[n / 2 - 1]} + values[n / 2]) / 2);
}

inline float thresholdOf(std::vector<float> residuals, const LineFitCfg& cfg) {
  if (cfg.maxRejected == 0) return cfg.distanceThreshold;
  std::sort(residuals.rbegin(), residuals.rend());
  const auto k = static_cast<size_t>(cfg.maxRejected);
  const auto middle = static_cast<float>((double{residuals[k - 1]} + residuals[k]) / 2);
  return std::min(middle + 1.1920929e-7f, cfg.distanceThreshold);
}

inline std::optional<LineFit> fitLine(const std::vector<Point>& points, const LineFitCfg& cfg) {
  const size_t n = points.size();
  auto start = cfg.initMethod == 1 ? totalLeastSquares(points, std::vector<double>(n, 1)) : searchPairs(points, cfg);
  if (!start) return std::nullopt;
  // A line is stored in single precision.
  LineFit fit{{static_cast<float>(start->a), static_cast<float>(start->b), static_cast<float>(start->c)}, {}, {}, 0};
  double before = FLT_MAX;
  for (int32_t round = 0; round < cfg.maxIterations; ++round) {
    std::vector<float> residuals;
    for (const Point& p : points) residuals.push_back(static_cast<float>(fit.line.distance(p)));
    const float threshold = thresholdOf(residuals, cfg);
    const double limit = n < 3 ? DBL_MAX : 2.96516 * medianOf(residuals) + 1.1920929e-7;
    fit.inliers.assign(n, 0), fit.weights.assign(n, 0);
    double square = 0;
    int count = 0;
    for (size_t k = 0; k < n; ++k) {
      const double r = residuals[k];
      if (!(residuals[k] < threshold)) continue;
      fit.inliers[k] = 1;
      const bool full = cfg.weightFunction == 1 || r < limit;
      if (cfg.weightFunction == 3 && !full) continue;
      double& weight = fit.weights[k];
      weight = cfg.weightFunction == 3 ? std::pow(1 - std::pow(r / limit, 2), 2) : full ? 1 : limit / r;
      square += full ? r * r : weight * weight;
      ++count;
    }
    const auto line = count < 2 ? std::nullopt : totalLeastSquares(points, fit.weights);
    if (!line) return std::nullopt;
    fit.line = *line, fit.rms = std::sqrt(square / count);
    if (fit.rms < 1e-5 || std::fabs(before - fit.rms) < before * 1e-5) break;
    before = fit.rms;
  }
  return fit;
}

}  // namespace dax::oracle
