// The rounds of the line fit: residuals, threshold, weights, total least squares.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <limits>

#include "measure/fit/line_fit.h"

namespace dax {
namespace {

// Those of points that are not finite become infinite: beyond every threshold.
void calculateResiduals(const LinePoints& points, const DaxiLine& line, float* residuals) {
  const double a = line.a, b = line.b, c = line.c;
  for (int32_t k = 0; k < points.count; ++k) {
    const auto r = static_cast<float>(std::fabs(a * points.x[k] + b * points.y[k] + c));
    residuals[k] = std::isnan(r) ? std::numeric_limits<float>::infinity() : r;
  }
}

// What of the weighted points goes into the fit.
struct Weighing {
  double sum = 0;  // of weights
  double x = 0;    // of weights times coordinates
  double y = 0;
  double square = 0;  // of residuals, or what stands for them
  int32_t count = 0;

  void add(double weight, double px, double py, double part) {
    sum += weight;
    x += weight * px;
    y += weight * py;
    square += part;
    ++count;
  }
};

// What a weight function says of an inlier.
struct Weighed {
  float weight;
  bool takesPart;
  double part;  // of the rms
};

// weigh(residual) -> Weighed
template <class Weigh>
int32_t fitWeighted(const LineRound& round, Weigh weigh, DaxiLine* line, double* rms) {
  const LinePoints& points = round.points;
  Weighing all;
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

// Where the weight functions begin to weigh down.
double weightLimit(const LineRound& round, double unlimited) {
  const int32_t n = round.points.count;
  if (n < 3) return unlimited;
  std::copy_n(round.residuals, n, round.scratch);
  return 2.96516 * _DAXS_Median_32f(round.scratch, n) + kLineSlack;
}

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
    if (rms < 1e-5 || std::fabs(before - rms) < before * 1e-5) break;
  }
  return true;
}

}  // namespace dax

float _DAXS_Median_32f(float* values, int32_t n) {
  float* const middle = values + n / 2;
  std::nth_element(values, middle, values + n);
  if (n % 2 == 1) return *middle;
  const double below = *std::max_element(values, middle);
  return static_cast<float>((below + *middle) / 2);
}

float DAXI_LineFitRegre_adaptive_dist_th(const float* residuals, float* scratch, int32_t n, int32_t rejected) {
  if (rejected == 0) return FLT_MAX;
  std::copy_n(residuals, n, scratch);
  // scratch[rejected] becomes the next after the worst `rejected`, which come before it.
  std::nth_element(scratch, scratch + rejected, scratch + n, std::greater<>());
  const double cut = *std::min_element(scratch, scratch + rejected);
  return static_cast<float>((cut + scratch[rejected]) / 2) + static_cast<float>(dax::kLineSlack);
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
    // The square of the weight, not of the residual.
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
