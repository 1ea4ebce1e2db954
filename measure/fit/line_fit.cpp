#include "measure/fit/line_fit.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "measure/fit/angle_gate.h"
#include "measure/fit/line_fit_refine.h"
#include "measure/fit/line_fit_search.h"

namespace dax {

static_assert(sizeof(LineFitCfg) == 32 && offsetof(LineFitCfg, angleTolerance) == 28);
static_assert(sizeof(DaxiLine) == 12);

namespace {

struct LineBuffer {
  explicit LineBuffer(uint64_t count)
      : x(layout.add<double>(count)),
        y(layout.add<double>(count)),
        residuals(layout.add<float>(count)),
        scratch(layout.add<float>(count)),
        weights(layout.add<float>(count)),
        flags(layout.add<uint8_t>(count)) {}
  BufferLayout layout;
  BufferPiece<double> x, y;
  BufferPiece<float> residuals, scratch, weights;
  BufferPiece<uint8_t> flags;
};

struct LineOutputs {
  DaxiLine* line;
  uint8_t* inliers;
  float* weights;
  float* rms;
};

// Total least squares over all finite points. The weights are scratch.
bool fitAll(const LinePoints& points, float* weights, DaxiLine& line) {
  double sumX = 0, sumY = 0;
  int32_t n = 0;
  for (int32_t k = 0; k < points.count; ++k) {
    const bool takesPart = std::isfinite(points.x[k]) && std::isfinite(points.y[k]);
    weights[k] = takesPart ? 1.0f : 0.0f;
    if (!takesPart) continue;
    sumX += points.x[k];
    sumY += points.y[k];
    ++n;
  }
  return n >= 2 && DAXI_LineFitRegre_get_fitline_coe(&points, weights, sumX / n, sumY / n, n, &line) == 1;
}

bool initialLine(const LineRound& round, const LineFitCfg& cfg, DaxiLine& line) {
  if (cfg.initMethod == DAXI_LINE_INIT_LEAST_SQUARES) return fitAll(round.points, round.weights, line);
  ExactLine found;
  if (!searchLine(round.points, cfg, round.inliers, found)) return false;
  line = {static_cast<float>(found.a), static_cast<float>(found.b), static_cast<float>(found.c)};
  return std::isfinite(line.c);
}

// The fit after the checks. All results stay in the buffer until nothing can fail any more.
DaxStatus fitLine(const LinePoints& points, const LineBuffer& at, const LineFitCfg& cfg, const LineOutputs& out,
                  void* buffer) {
  const LineRound round{
      points, at.residuals.in(buffer), 0, at.scratch.in(buffer), at.flags.in(buffer), at.weights.in(buffer)};
  DaxiLine line;
  double rms;
  DAX_REQUIRE(initialLine(round, cfg, line), DAX_STS_LEAST_SQUARES);
  DAX_REQUIRE(refineLine(round, cfg, at.residuals.in(buffer), line, rms), DAX_STS_LEAST_SQUARES);
  DAX_REQUIRE(AngleGate(cfg).accepts(line), DAX_STS_LEAST_SQUARES);
  *out.line = line;
  *out.rms = static_cast<float>(rms);
  std::copy_n(round.inliers, points.count, out.inliers);
  std::copy_n(round.weights, points.count, out.weights);
  return DAX_STS_OK;
}

template <class Point>
bool allEqual(const Point* points, int32_t count) {
  const double x = points[0].x, y = points[0].y;
  return std::all_of(points + 1, points + count,
                     [&](const Point& p) { return std::fabs(p.x - x) + std::fabs(p.y - y) <= kLineSlack; });
}

template <class Point>
DaxStatus fit(const Point* points, int32_t count, const LineFitCfg* cfg, const LineOutputs& out, void* buffer) {
  DAX_REQUIRE(points && cfg && out.line && out.inliers && out.weights && out.rms && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(DAXI_LineFitRegre_check_cfg(cfg));
  DAX_REQUIRE(count >= 2, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(int64_t{cfg->maxRejected} + 1 < count, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!allEqual(points, count), DAX_STS_BAD_PARAM);
  const LineBuffer at(static_cast<uint64_t>(count));
  double *const x = at.x.in(buffer), *const y = at.y.in(buffer);
  for (int32_t k = 0; k < count; ++k) {
    x[k] = points[k].x;
    y[k] = points[k].y;
  }
  return fitLine({x, y, count}, at, *cfg, out, buffer);
}

DaxStatus bufferSize(int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 2, DAX_STS_BAD_PARAM);
  return LineBuffer(static_cast<uint64_t>(count)).layout.store(bytes);
}

bool within(float value, float low, float high) {
  return value >= low && value <= high;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_LineFitRegre_check_cfg(const LineFitCfg* cfg) {
  constexpr float kPi = std::numbers::pi_v<float>;
  DAX_REQUIRE(cfg->initMethod >= 1 && cfg->initMethod <= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->weightFunction >= 1 && cfg->weightFunction <= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->maxIterations >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->maxRejected >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->distanceThreshold >= FLT_EPSILON, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->angleConstraint <= 1, DAX_STS_BAD_PARAM);
  if (cfg->angleConstraint == 0) return DAX_STS_OK;
  DAX_REQUIRE(dax::within(cfg->expectedAngle, -kPi, kPi), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::within(cfg->angleTolerance, 0, kPi), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

#define DAX_LINE_FIT(SUFFIX, TYPES, POINT)                                                                       \
  DaxStatus DAXI_LineFitRegreBufferSize_##SUFFIX(int32_t count, uint64_t* bytes) {                               \
    return dax::bufferSize(count, bytes);                                                                        \
  }                                                                                                              \
  DaxStatus DAXI_LineFitRegre_##TYPES(const POINT* points, int32_t count, const LineFitCfg* cfg, DaxiLine* line, \
                                      uint8_t* inliers, float* weights, float* rms, void* buffer) {              \
    return dax::fit(points, count, cfg, {line, inliers, weights, rms}, buffer);                                  \
  }
DAX_LINE_FIT(32f, 32f, DaxiPoint32f)
DAX_LINE_FIT(16s, 16s32f, DaxiPoint16s)
DAX_LINE_FIT(32s, 32s32f, DaxiPoint32s)
#undef DAX_LINE_FIT
