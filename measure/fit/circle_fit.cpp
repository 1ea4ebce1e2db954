#include "daxi/circle_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "geometry/median_select.h"
#include "measure/fit/circle_geometric.h"
#include "measure/fit/circle_hyper.h"
#include "optim/consensus/consensus.h"

static_assert(sizeof(CircleFitCfg) == 72 && sizeof(DaxiCircleFit) == 120);

namespace dax {
namespace {

constexpr double kUnlimited = std::numeric_limits<double>::infinity();
constexpr double kRobustSigma = 1.4826;     // of the median of the magnitudes of normal errors
constexpr double kCircleConverged = 1e-12;  // of the radius

PrmtSacCfg consensusOf(const CircleFitCfg& cfg) {
  return {PRMT_SAC_MSAC, cfg.trials, cfg.inlierDistance, cfg.confidence, cfg.seed, 10, 0};
}

PrmtSacModel consensusModel();

struct CircleBuffer {
  explicit CircleBuffer(int32_t count)
      : sac(consensusModel(), count, consensusOf({}), 1),
        consensus(layout.addSlices(sac.layout.total(), 1)),
        x(layout.add<double>(unsignedCount(count))),
        y(layout.add<double>(unsignedCount(count))),
        angles(layout.add<double>(unsignedCount(count))),
        distances(layout.add<float>(unsignedCount(count))),
        scratch(layout.add<float>(unsignedCount(count))),
        weights(layout.add<float>(unsignedCount(count))),
        flags(layout.add<uint8_t>(unsignedCount(count))) {}

  static uint64_t unsignedCount(int32_t count) { return static_cast<uint64_t>(count); }

  BufferLayout layout;
  SacBuffer sac;
  BufferPiece<uint8_t> consensus;
  BufferPiece<double> x, y, angles;
  BufferPiece<float> distances, scratch, weights;
  BufferPiece<uint8_t> flags;
};

// What a fit works on; the points are relative to `middle`.
struct CircleWork {
  CirclePoints points;
  Circle middle;  // the mean of the finite points, their root mean square distance from it as radius
  float* distances;
  float* scratch;
  float* weights;
  uint8_t* flags;
  double* angles;
  const CircleFitCfg& cfg;
};

bool isFinite(const CirclePoints& points, int32_t k) {
  return std::isfinite(points.x[k]) && std::isfinite(points.y[k]);
}

// --- Rounds of weights ---

// The distance of a point that is not finite is infinite: beyond every limit.
void measure(const CircleWork& work, const Circle& circle) {
  for (int32_t k = 0; k < work.points.count; ++k) {
    const double dx = work.points.x[k] - circle.x, dy = work.points.y[k] - circle.y;
    const double d = std::fabs(std::sqrt(dx * dx + dy * dy) - circle.r);
    work.distances[k] = isFinite(work.points, k) ? static_cast<float>(d) : std::numeric_limits<float>::infinity();
  }
}

double rejectionLimit(const CircleWork& work) {
  const CircleFitCfg& cfg = work.cfg;
  double limit = cfg.distanceThreshold > 0 ? cfg.distanceThreshold : kUnlimited;
  if (cfg.maxRejected > 0 && cfg.maxRejected < work.points.count) {
    std::copy_n(work.distances, work.points.count, work.scratch);
    limit = std::min(limit, valueBelowLargest(work.scratch, work.points.count, cfg.maxRejected));
  }
  return limit;
}

double robustScale(const CircleWork& work) {
  std::copy_n(work.distances, work.points.count, work.scratch);
  const double median = _DAXS_Median_32f(work.scratch, work.points.count);
  return kRobustSigma * std::max(median, work.cfg.minScale);
}

double weightOf(int32_t function, double d, double limit) {
  if (function == DAXI_CIRCLE_HUBER) return d < limit ? 1 : limit / d;
  if (function == DAXI_CIRCLE_TUKEY)
    return d < limit ? (1 - d * d / (limit * limit)) * (1 - d * d / (limit * limit)) : 0;
  return 1;
}

// Weights of a round; false where fewer than three points have one. `limit` is the distance that inliers stay below.
bool weigh(const CircleWork& work, int32_t function, double limit, double scale) {
  int32_t used = 0;
  for (int32_t k = 0; k < work.points.count; ++k) {
    const double d = work.distances[k];
    const bool isInlier = d < limit && d < kUnlimited;
    work.weights[k] = isInlier ? static_cast<float>(weightOf(function, d, 2 * scale)) : 0.0f;
    used += work.weights[k] > 0;
  }
  return used >= 3;
}

using Fit = bool (*)(const CircleWork& work, Circle* circle);

bool algebraic(const CircleWork& work, Circle* circle) {
  return fitHyper(work.points, work.weights, circle);
}

bool geometric(const CircleWork& work, Circle* circle) {
  return fitGeometric(work.points, work.weights, work.middle.r, circle);
}

bool hasConverged(const Circle& before, const Circle& after) {
  const double change =
      std::max({std::fabs(after.x - before.x), std::fabs(after.y - before.y), std::fabs(after.r - before.r)});
  return change <= kCircleConverged * after.r;
}

DaxStatus fitInRounds(const CircleWork& work, Fit fit, Circle* circle, DaxiCircleFit* result) {
  const int32_t function = work.cfg.weightFunction;
  for (int32_t k = 0; k < work.points.count; ++k) work.weights[k] = isFinite(work.points, k) ? 1.0f : 0.0f;
  DAX_REQUIRE(fitHyper(work.points, work.weights, circle) && fit(work, circle), DAX_STS_DEGENERATE);
  bool isDone = false;
  while (!isDone && result->iterations < work.cfg.maxIterations) {
    ++result->iterations;
    measure(work, *circle);
    DAX_REQUIRE(weigh(work, function, rejectionLimit(work), robustScale(work)), DAX_STS_LEAST_SQUARES);
    const Circle before = *circle;
    DAX_REQUIRE(fit(work, circle), DAX_STS_LEAST_SQUARES);
    isDone = hasConverged(before, *circle);
  }
  if (!isDone) result->flags = DAXI_CIRCLE_LIMIT;
  if (function == DAXI_CIRCLE_LEAST_SQUARES) return DAX_STS_OK;
  measure(work, *circle);
  const double scale = robustScale(work), limit = std::min(rejectionLimit(work), 3 * scale);
  DAX_REQUIRE(weigh(work, DAXI_CIRCLE_LEAST_SQUARES, limit, scale), DAX_STS_LEAST_SQUARES);
  DAX_REQUIRE(fit(work, circle), DAX_STS_LEAST_SQUARES);
  return DAX_STS_OK;
}

// --- Sample consensus ---

const CircleWork& workOf(const void* user) {
  return *static_cast<const CircleWork*>(user);
}

bool hasAllowedRadius(const CircleFitCfg& cfg, double r) {
  return r >= cfg.minRadius && r <= cfg.maxRadius;
}

// The circle through three points; none where they lie almost on a line.
int32_t throughThree(const int32_t* sample, void* user, double* models, int32_t* count) {
  constexpr double kFlat = 1e-3;  // of the longest side squared: twice the area
  const CircleWork& work = workOf(user);
  const double ox = work.points.x[sample[0]], oy = work.points.y[sample[0]];
  const double ax = work.points.x[sample[1]] - ox, ay = work.points.y[sample[1]] - oy;
  const double bx = work.points.x[sample[2]] - ox, by = work.points.y[sample[2]] - oy;
  const double a = ax * ax + ay * ay, b = bx * bx + by * by, c = (bx - ax) * (bx - ax) + (by - ay) * (by - ay);
  const double cross = ax * by - ay * bx;
  if (!(std::fabs(cross) >= kFlat * std::max({a, b, c}) && cross != 0)) return PRMT_STS_OK;
  const double x = (by * a - ay * b) / (2 * cross), y = (ax * b - bx * a) / (2 * cross), r = std::sqrt(x * x + y * y);
  if (!hasAllowedRadius(work.cfg, r)) return PRMT_STS_OK;
  models[0] = ox + x, models[1] = oy + y, models[2] = r;
  *count = 1;
  return PRMT_STS_OK;
}

int32_t squaredDistances(const double* model, int32_t first, int32_t count, void* user, double* squares) {
  const CirclePoints& points = workOf(user).points;
  for (int32_t i = 0; i < count; ++i) {
    const double dx = points.x[first + i] - model[0], dy = points.y[first + i] - model[1];
    const double d = std::sqrt(dx * dx + dy * dy) - model[2];
    squares[i] = d * d;
  }
  return PRMT_STS_OK;
}

// The weights are scratch of the calling thread.
int32_t fitInliers(const int32_t* indices, int32_t count, void* user, double* model, int32_t* found) {
  const CircleWork& work = workOf(user);
  std::fill_n(work.weights, work.points.count, 0.0f);
  for (int32_t i = 0; i < count; ++i) work.weights[indices[i]] = 1;
  Circle circle = {model[0], model[1], model[2]};
  *found = fitGeometric(work.points, work.weights, work.middle.r, &circle) && hasAllowedRadius(work.cfg, circle.r);
  model[0] = circle.x, model[1] = circle.y, model[2] = circle.r;
  return PRMT_STS_OK;
}

PrmtSacModel consensusModel() {
  return {3, 1, 3, 0, throughThree, squaredDistances, fitInliers};
}

DaxStatus fitByConsensus(const CircleWork& work, const CircleBuffer& at, void* buffer, Circle* circle,
                         DaxiCircleFit* result) {
  const PrmtSacCfg cfg = consensusOf(work.cfg);
  CircleWork user = work;
  PrmtSacResult found;
  const int32_t status = runSac({consensusModel(), &user, nullptr, work.points.count}, cfg, {}, at.sac,
                                at.consensus.in(buffer), &found, work.flags);
  DAX_REQUIRE(status == PRMT_STS_OK && found.inliers >= 3, DAX_STS_LEAST_SQUARES);
  *circle = {found.model[0], found.model[1], found.model[2]};
  for (int32_t k = 0; k < work.points.count; ++k) work.weights[k] = work.flags[k];
  result->iterations = found.iterations;
  result->flags = found.flags & PRMT_SAC_LIMIT ? DAXI_CIRCLE_LIMIT : 0;
  return DAX_STS_OK;
}

// --- What is said about the circle ---

// 2 pi without the largest gap between neighbours.
double arcOf(const CircleWork& work, const Circle& circle) {
  int32_t n = 0;
  for (int32_t k = 0; k < work.points.count; ++k) {
    if (work.flags[k]) work.angles[n++] = elementary::atan2(work.points.y[k] - circle.y, work.points.x[k] - circle.x);
  }
  std::sort(work.angles, work.angles + n);
  double gap = work.angles[0] + 2 * std::numbers::pi - work.angles[n - 1];
  for (int32_t k = 1; k < n; ++k) gap = std::max(gap, work.angles[k] - work.angles[k - 1]);
  return 2 * std::numbers::pi - gap;
}

// Of the points with a weight, each taken as a whole.
void describe(const CircleWork& work, const Circle& circle, DaxiCircleFit* result) {
  double squares = 0;
  for (int32_t k = 0; k < work.points.count; ++k) {
    work.flags[k] = work.weights[k] > 0;
    work.scratch[k] = work.flags[k];
    if (!work.flags[k]) continue;
    const double dx = work.points.x[k] - circle.x, dy = work.points.y[k] - circle.y;
    const double d = std::fabs(std::sqrt(dx * dx + dy * dy) - circle.r);
    squares += d * d;
    result->maxAbs = std::max(result->maxAbs, d);
    ++result->used;
  }
  result->x = work.middle.x + circle.x, result->y = work.middle.y + circle.y, result->r = circle.r;
  result->rms = std::sqrt(squares / result->used);
  result->dof = result->used - 3;
  result->arc = arcOf(work, circle);
  double inverse[6];
  const bool isKnown = result->dof > 0 && CircleEquations(work.points, work.scratch, circle).invert(inverse);
  const double variance = isKnown ? squares / result->dof : kUnlimited;
  result->sigma = std::sqrt(variance);
  for (int i = 0; i < 3; ++i) {
    result->se[i] = isKnown ? std::sqrt(variance * inverse[i]) : kUnlimited;
    result->cov[i] = isKnown ? variance * inverse[3 + i] : kUnlimited;
  }
}

// --- Checks ---

DaxStatus checkCfg(const CircleFitCfg& cfg) {
  DAX_REQUIRE(cfg.weightFunction >= 1 && cfg.weightFunction <= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.maxIterations >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.maxRejected >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.trials >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.distanceThreshold >= 0 && cfg.distanceThreshold < kUnlimited, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.inlierDistance >= 1e-9 && cfg.inlierDistance <= 1e9, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.minScale >= 0 && cfg.minScale < kUnlimited, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.minRadius >= 0 && cfg.minRadius < kUnlimited, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.maxRadius >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.confidence >= 0 && cfg.confidence <= 0.999999999999, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

enum class CircleMethod { algebraic, geometric, consensus };

// Coordinates about the mean of the finite points; false where there are fewer than three or all lie on one place.
template <class Point>
bool centre(const Point* points, int32_t count, double* x, double* y, Circle* middle) {
  int32_t n = 0;
  *middle = {};
  for (int32_t k = 0; k < count; ++k) {
    x[k] = points[k].x, y[k] = points[k].y;
    if (!isFinite({x, y, count}, k)) continue;
    middle->x += x[k], middle->y += y[k];
    ++n;
  }
  if (n < 3) return false;
  middle->x /= n, middle->y /= n;
  double squares = 0;
  for (int32_t k = 0; k < count; ++k) {
    x[k] -= middle->x, y[k] -= middle->y;
    if (isFinite({x, y, count}, k)) squares += x[k] * x[k] + y[k] * y[k];
  }
  middle->r = std::sqrt(squares / n);
  return middle->r > 0;
}

struct CircleOutputs {
  DaxiCircleFit* circle;
  uint8_t* inliers;
  float* weights;
};

template <class Point>
DaxStatus fitCircle(CircleMethod method, const Point* points, int32_t count, const CircleFitCfg* cfg,
                    const CircleOutputs& out, void* buffer) {
  DAX_REQUIRE(points && cfg && out.circle && out.inliers && out.weights && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(checkCfg(*cfg));

  const CircleBuffer at(count);
  double *const x = at.x.in(buffer), *const y = at.y.in(buffer);
  Circle middle, circle = {};
  DAX_REQUIRE(centre(points, count, x, y, &middle), DAX_STS_DEGENERATE);
  const CircleWork work = {{x, y, count},           middle,
                           at.distances.in(buffer), at.scratch.in(buffer),
                           at.weights.in(buffer),   at.flags.in(buffer),
                           at.angles.in(buffer),    *cfg};
  DaxiCircleFit result = {};
  if (method == CircleMethod::consensus) {
    DAX_REQUIRE_OK(fitByConsensus(work, at, buffer, &circle, &result));
  } else {
    DAX_REQUIRE_OK(fitInRounds(work, method == CircleMethod::algebraic ? algebraic : geometric, &circle, &result));
  }
  DAX_REQUIRE(hasAllowedRadius(*cfg, circle.r), DAX_STS_LEAST_SQUARES);
  describe(work, circle, &result);
  *out.circle = result;
  std::copy_n(work.flags, count, out.inliers);
  std::copy_n(work.weights, count, out.weights);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_CircleFitDefaultCfg(CircleFitCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_CIRCLE_HUBER, 50, 0, 10000, 0, 1, 0.005, 0, 1e9, 0.99, 1};
  return DAX_STS_OK;
}

DaxStatus DAXI_CircleFitBufferSize(int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_SIZE);
  return dax::CircleBuffer(count).layout.store(bytes);
}

#define DAX_CIRCLE_FIT(NAME, METHOD, TYPES, POINT)                                                                  \
  DaxStatus DAXI_CircleFit##NAME##_##TYPES(const POINT* points, int32_t count, const CircleFitCfg* cfg,             \
                                           DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer) { \
    return dax::fitCircle(dax::CircleMethod::METHOD, points, count, cfg, {circle, inliers, weights}, buffer);       \
  }
#define DAX_CIRCLE_FITS(TYPES, POINT)                  \
  DAX_CIRCLE_FIT(Regre, algebraic, TYPES, POINT)       \
  DAX_CIRCLE_FIT(LeastSquare, geometric, TYPES, POINT) \
  DAX_CIRCLE_FIT(Ransac, consensus, TYPES, POINT)
DAX_CIRCLE_FITS(32f, DaxiPoint32f)
DAX_CIRCLE_FITS(16s32f, DaxiPoint16s)
DAX_CIRCLE_FITS(32s32f, DaxiPoint32s)
#undef DAX_CIRCLE_FITS
#undef DAX_CIRCLE_FIT
