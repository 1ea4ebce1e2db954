#include "measure/fit/line_fit_refine.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "geometry/median_select.h"

namespace dax {
namespace {

// The residual of a point that is not finite becomes infinite: beyond every threshold.
void calculateResiduals(const LinePoints& points, const DaxiLine& line, float* residuals) {
  const double a = line.a, b = line.b, c = line.c;
  for (int32_t k = 0; k < points.count; ++k) {
    const auto r = static_cast<float>(std::fabs(a * points.x[k] + b * points.y[k] + c));
    residuals[k] = std::isnan(r) ? std::numeric_limits<float>::infinity() : r;
  }
}

// Sums over the weighted points.
struct WeightedSums {
  double sum = 0;  // of weights
  double x = 0;    // of weights times coordinates
  double y = 0;
  double square = 0;  // of the points' parts in the rms
  int32_t count = 0;

  void add(double weight, double px, double py, double part) {
    sum += weight;
    x += weight * px;
    y += weight * py;
    square += part;
    ++count;
  }
};

// The result of a weight function for an inlier.
struct Weighed {
  float weight;
  bool takesPart;
  double part;  // squared, in the rms
};

// weigh(residual) -> Weighed
template <class Weigh>
int32_t fitWeighted(const LineRound& round, Weigh weigh, DaxiLine* line, double* rms) {
  const LinePoints& points = round.points;
  WeightedSums all;
  for (int32_t k = 0; k < points.count; ++k) {
    const float r = round.residuals[k];
    round.inliers[k] = r < round.threshold;
    const Weighed one = round.inliers[k] ? weigh(double{r}) : Weighed{0, false, 0};
    round.weights[k] = one.weight;
    if (one.takesPart) all.add(one.weight, points.x[k], points.y[k], one.part);
  }
  if (all.count < 2 || !(all.sum >= kLineTiny)) return 0;
  *rms = std::sqrt(all.square / all.count);
  const double sum = all.sum + kLineTiny;
  return DAXI_LineFitRegre_get_fitline_coe(&points, round.weights, all.x / sum, all.y / sum, all.count, line);
}

// Twice the robust estimate of the standard deviation of normal errors, 1.4826 times the median absolute residual
// (P. J. Rousseeuw, A. M. Leroy, Robust Regression and Outlier Detection, 1987); rounded as the contract states it.
constexpr double kLimitPerMedian = 2.96516;

// The residual from which on the weight functions reduce weights.
double weightLimit(const LineRound& round, double unlimited) {
  const int32_t n = round.points.count;
  if (n < 3) return unlimited;
  std::copy_n(round.residuals, n, round.scratch);
  return kLimitPerMedian * _DAXS_Median_32f(round.scratch, n) + kLineSlack;
}

constexpr double kConverged = 1e-5;  // of the rms, in pixels and relative to the round before

}  // namespace

bool refineLine(const LineRound& first, const LineFitCfg& cfg, float* residuals, DaxiLine& line, double& rms) {
  constexpr decltype(&DAXI_LineFitRegre_huber) kRounds[] = {DAXI_LineFitRegre_least_square, DAXI_LineFitRegre_huber,
                                                            DAXI_LineFitRegre_tukey};
  const auto run = kRounds[cfg.weightFunction - 1];
  LineRound round = first;
  double before = FLT_MAX;
  for (int32_t i = 0; i < cfg.maxIterations; ++i, before = rms) {
    calculateResiduals(round.points, line, residuals);
    const float adaptive =
        DAXI_LineFitRegre_adaptive_dist_th(residuals, round.scratch, round.points.count, cfg.maxRejected);
    round.threshold = std::min(adaptive, cfg.distanceThreshold);
    if (run(&round, &line, &rms) != 1) return false;
    if (rms < kConverged || std::fabs(before - rms) < before * kConverged) break;
  }
  return true;
}

}  // namespace dax

float DAXI_LineFitRegre_adaptive_dist_th(const float* residuals, float* scratch, int32_t n, int32_t rejected) {
  if (rejected == 0) return FLT_MAX;
  std::copy_n(residuals, n, scratch);
  return static_cast<float>(dax::valueBelowLargest(scratch, n, rejected)) + static_cast<float>(dax::kLineSlack);
}

int32_t DAXI_LineFitRegre_get_fitline_coe(const dax::LinePoints* points, const float* weights, double centreX,
                                          double centreY, int32_t n, DaxiLine* line) {
  double sxx = 0, sxy = 0, syy = 0;
  for (int32_t k = 0; k < points->count; ++k) {
    if (!(weights[k] > 0)) continue;
    const double w = weights[k], dx = points->x[k] - centreX, dy = points->y[k] - centreY;
    sxx += w * dx * dx;
    sxy += w * dx * dy;
    syy += w * dy * dy;
  }
  sxx /= n - 1, sxy /= n - 1, syy /= n - 1;
  const double lambda = ((sxx + syy) - std::sqrt((sxx - syy) * (sxx - syy) + 4 * sxy * sxy)) / 2;
  double a = sxy, b = lambda - sxx, square = a * a + b * b;
  if (!(square > dax::kLineTiny)) {
    a = syy - lambda, b = -sxy, square = a * a + b * b;
    if (!(square >= dax::kLineTiny)) return 0;
  }
  const double length = std::sqrt(square);
  a /= length, b /= length;
  const DaxiLine result = {static_cast<float>(a), static_cast<float>(b),
                           static_cast<float>(-(a * centreX + b * centreY))};
  if (!std::isfinite(result.a) || !std::isfinite(result.b) || !std::isfinite(result.c)) return 0;
  *line = result;
  return 1;
}

int32_t DAXI_LineFitRegre_least_square(const dax::LineRound* round, DaxiLine* line, double* rms) {
  return dax::fitWeighted(
      *round,
      [](double r) {
        return dax::Weighed{1, true, r * r};
      },
      line, rms);
}

int32_t DAXI_LineFitRegre_huber(const dax::LineRound* round, DaxiLine* line, double* rms) {
  const double limit = dax::weightLimit(*round, DBL_MAX);
  const auto weigh = [limit](double r) -> dax::Weighed {
    if (r < limit) return {1, true, r * r};
    // The rms takes the square of the weight, not of the residual, as documented.
    const auto weight = static_cast<float>(limit / (r + dax::kLineTiny));
    return {weight, true, double{weight} * weight};
  };
  return dax::fitWeighted(*round, weigh, line, rms);
}

int32_t DAXI_LineFitRegre_tukey(const dax::LineRound* round, DaxiLine* line, double* rms) {
  const double limit = dax::weightLimit(*round, FLT_MAX), inverse = 1 / (limit * limit);
  const auto weigh = [limit, inverse](double r) -> dax::Weighed {
    if (!(r < limit)) return {0, false, 0};
    const double rest = 1 - r * r * inverse;
    return {static_cast<float>(rest * rest), true, r * r};
  };
  return dax::fitWeighted(*round, weigh, line, rms);
}
