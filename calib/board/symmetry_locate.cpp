#include "calib/board/symmetry_locate.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "calib/board/board_image.h"
#include "calib/board/chessboard_subpix.h"
#include "calib/board/corner_grid.h"
#include "calib/board/corner_ring.h"
#include "calib/board/local_maxima.h"
#include "frame/check.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "frame/vector4.h"
#include "geometry/vector2.h"

namespace dax {
namespace {

constexpr int32_t kSamples = 16, kQuarter = 4, kHalf = 8;
// Documented in daxi/chessboard_sym.h.
constexpr int32_t kSampledRadius = 5;  // pixels after sub-sampling
constexpr double kScaleStep = 1.5;     // from one radius of the ladder to the next
constexpr float kMinShare = 0.3f;      // of the response that the minimum contrast gives at a perfect corner

// The ladder starts at the radius for 15 squares of two radii along the image's shorter side.
constexpr double kSquaresPerSide = 15;
constexpr int32_t kMinRadius = 3, kMaxRadius = 100;
constexpr double kLimitMargin = 1.1920929e-7;  // FLT_EPSILON

// Refinement; lengths by the radius.
constexpr float kWindowShare = 0.6f;  // half window
constexpr int32_t kMinHalfWindow = 2, kMaxHalfWindow = 9;
constexpr float kMaxRefinement = 0.75f;
constexpr int32_t kIterations = 12;
constexpr float kEpsilon = 1e-4f;  // squared pixels

// The second circle, which tells crossing edges from bars.
constexpr float kInnerCircle = 0.6f, kInnerContrast = 0.3f;  // by the radius, and by the contrast, of the first
constexpr float kStraightCosine = 0.9f;                      // min cosine between their edges

// Probing where a grid expects a corner.
constexpr float kMaxProbedCircle = 14;   // pixels
constexpr float kProbedContrast = 0.6f;  // by the minimum contrast

constexpr int32_t kMinTileRows = 16, kMinTileCandidates = 16;

// One rung of the ladder.
struct Scale {
  explicit Scale(int32_t r, DaxiSize size)
      : radius(r), factor(std::max(1, r / kSampledRadius)), sampled{size.width / factor, size.height / factor} {
    std::array<DaxiPoint32f, kSamples> at;
    ringDirections(at.data(), kSamples);
    const float length = static_cast<float>(r) / static_cast<float>(factor);
    for (size_t k = 0; k < kSamples; ++k) {
      dx[k] = static_cast<int32_t>(std::round(length * at[k].x));
      dy[k] = static_cast<int32_t>(std::round(length * at[k].y));
    }
    reach = static_cast<int32_t>(std::ceil(length));
  }
  int32_t radius;
  int32_t factor;
  DaxiSize sampled;
  int32_t reach;
  std::array<int32_t, kSamples> dx, dy;
};

// The response to the samples g(0)..g(15), as numbers or as vectors of numbers.
template <class T, class Magnitude>
T symmetry(const std::array<T, kSamples>& g, Magnitude magnitude) {
  T opposite = magnitude(g[0] - g[kHalf]), across = magnitude(g[0] - g[kQuarter]);
  for (size_t k = 1; k < kHalf; ++k) opposite += magnitude(g[k] - g[k + kHalf]);
  for (size_t k = 1; k < kSamples; ++k) across += magnitude(g[k] - g[(k + kQuarter) % kSamples]);
  return across - (opposite + opposite);
}

// Writes a row of responses; 0 where the circle leaves the image.
void respond(const uint8_t* sampled, const Scale& scale, int32_t y, int16_t* to) {
  const int32_t width = scale.sampled.width, reach = scale.reach;
  std::fill_n(to, width, int16_t{0});
  if (y < reach || y >= scale.sampled.height - reach) return;
  std::array<const uint8_t*, kSamples> from;
  for (size_t k = 0; k < kSamples; ++k) from[k] = rowAt(sampled, width, y + scale.dy[k]) + scale.dx[k];
  int32_t x = reach;
  for (; x + 8 <= width - reach; x += 8) {
    std::array<Short8, kSamples> g;
    for (size_t k = 0; k < kSamples; ++k) g[k] = load8(from[k] + x);
    store8(to + x, symmetry(g, [](Short8 v) { return v < 0 ? -v : v; }));
  }
  for (; x < width - reach; ++x) {
    std::array<int32_t, kSamples> g;
    for (size_t k = 0; k < kSamples; ++k) g[k] = from[k][x];
    to[x] = static_cast<int16_t>(symmetry(g, [](int32_t v) { return v < 0 ? -v : v; }));
  }
}

bool isUnmasked(const SymmetryCall& call, int32_t x, int32_t y) {
  return !call.mask || rowAt(call.mask, call.maskStep, y)[x] != 0;
}

bool isOnImage(DaxiPoint32f p, DaxiSize size) {
  return p.x >= 0 && p.y >= 0 && p.x <= static_cast<float>(size.width - 1) &&
         p.y <= static_cast<float>(size.height - 1);
}

// Refines a corner: sets its point and edges, and returns whether there is one.
bool refineSymmetric(const uint8_t* image, DaxiSize size, DaxiPoint32f start, float radius,
                     CheckerboardCorner& corner) {
  const int32_t half = std::clamp(static_cast<int32_t>(kWindowShare * radius + 0.5f), kMinHalfWindow, kMaxHalfWindow);
  CornerEdges edges;
  uint8_t isCorner = 0;
  _DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(image, size.width, size, &start, 1, {half, half}, kIterations,
                                            &corner.point, kEpsilon, &edges, &isCorner);
  corner.intoDark = edges.intoDark;
  corner.intoLight = edges.intoLight;
  return isCorner != 0 && isOnImage(corner.point, size);
}

class SymmetryLocator {
 public:
  explicit SymmetryLocator(const SymmetryCall& call)
      : call_(call),
        at_(call.size),
        threads_(call.pool && &DAX_THREADPOOL_GetThreadsCnt ? DAX_THREADPOOL_GetThreadsCnt(call.pool) : 1),
        corners_(at_.corners.in(call.buffer)),
        near_(at_.near.in(call.buffer), call.size, corners_) {}

  DaxStatus locate(int32_t radius) {
    const Scale scale(radius, call_.size);
    if (std::min(scale.sampled.width, scale.sampled.height) <= 2 * scale.reach) return DAX_STS_OK;
    DAX_REQUIRE_OK(fillResponse(scale));
    const int32_t candidates = findCandidates(scale);
    DAX_REQUIRE_OK(onPool(candidates, kMinTileCandidates, [&](int32_t first, int32_t end) {
      for (int32_t i = first; i < end; ++i) verify(scale, at_.candidates.in(call_.buffer)[i]);
    }));
    for (int32_t i = 0; i < candidates && count_ < kMaxGridCorners; ++i) {
      const SymmetryCandidate& candidate = at_.candidates.in(call_.buffer)[i];
      if (!candidate.accepted || near_.holds(candidate.corner.point)) continue;
      corners_[count_] = candidate.corner;
      near_.add(count_++);
    }
    return DAX_STS_OK;
  }

  int32_t count() const { return count_; }

 private:
  // Runs body(first, end) over [0, total), in tiles on the pool where there is one.
  template <class Body>
  DaxStatus onPool(int32_t total, int32_t minTile, Body body) {
    if (!hasPool(call_.pool, threads_) || total <= minTile) {
      body(0, total);
      return DAX_STS_OK;
    }
    return runTiles(call_.pool, threads_, total, minTile, [&](int32_t first, int32_t end, uint32_t) -> DaxStatus {
      body(first, end);
      return DAX_STS_OK;
    });
  }

  const uint8_t* grey() const { return at_.grey.in(call_.buffer); }

  DaxStatus fillResponse(const Scale& scale) {
    const uint8_t* from = grey();
    if (scale.factor > 1) {
      uint8_t* const sampled = at_.sampled.in(call_.buffer);
      DAXI_Commom_sample_img(from, call_.size.width, sampled, scale.sampled.width, scale.sampled, scale.factor);
      from = sampled;
    }
    int16_t* const response = at_.response.in(call_.buffer);
    return onPool(scale.sampled.height, kMinTileRows, [&](int32_t first, int32_t end) {
      for (int32_t y = first; y < end; ++y) respond(from, scale, y, rowAt(response, scale.sampled.width, y));
    });
  }

  int32_t findCandidates(const Scale& scale) {
    SymmetryCandidate* const candidates = at_.candidates.in(call_.buffer);
    const auto threshold = static_cast<int16_t>(kMinShare * kSamples * static_cast<float>(call_.cfg->contrast));
    const int32_t apart = std::max(1, static_cast<int32_t>(call_.cfg->distance) / (2 * scale.factor));
    int32_t count = 0;
    forEachMaximum(at_.response.in(call_.buffer), scale.sampled, apart, threshold, [&](int32_t x, int32_t y) {
      if (count == kMaxSymmetryCandidates || !isUnmasked(call_, x * scale.factor, y * scale.factor)) return;
      candidates[count++] = {x, y, rowAt(at_.response.in(call_.buffer), scale.sampled.width, y)[x], false, {}};
    });
    return count;
  }

  void verify(const Scale& scale, SymmetryCandidate& candidate) const {
    const auto radius = static_cast<float>(scale.radius);
    const auto contrast = static_cast<float>(call_.cfg->contrast);
    const DaxiPoint32f start{static_cast<float>(candidate.x * scale.factor),
                             static_cast<float>(candidate.y * scale.factor)};
    // Another scale has found a corner here.
    if (near_.holds(start)) return;
    if (!viewCircle(grey(), call_.size.width, call_.size, start, radius, contrast).corner) return;
    CheckerboardCorner& corner = candidate.corner;
    if (!refineSymmetric(grey(), call_.size, start, radius, corner)) return;
    const DaxiPoint32f shift = corner.point - start;
    const float reach = kMaxRefinement * radius;
    corner.response = static_cast<float>(candidate.response);
    corner.radius = radius;
    candidate.accepted = dot(shift, shift) <= reach * reach && edgesAreStraight(corner, radius, contrast);
  }

  // Whether the edges have the same directions on a smaller circle: those of a corner do, those of a bar do not.
  bool edgesAreStraight(const CheckerboardCorner& corner, float radius, float contrast) const {
    const auto view = [&](float r, float minContrast) {
      return viewCircle(grey(), call_.size.width, call_.size, corner.point, r, minContrast);
    };
    const RingView outer = view(radius, contrast), inner = view(kInnerCircle * radius, kInnerContrast * contrast);
    return outer.corner && inner.corner && alike(outer.edges.intoDark, inner.edges.intoDark) >= kStraightCosine &&
           alike(outer.edges.intoLight, inner.edges.intoLight) >= kStraightCosine;
  }

  const SymmetryCall& call_;
  SymmetryBuffer at_;
  uint32_t threads_;
  CheckerboardCorner* corners_;
  NearMap near_;
  int32_t count_ = 0;
};

int32_t roundRadius(double v) {
  return static_cast<int32_t>(std::round(v));
}

}  // namespace

SymmetryBuffer::SymmetryBuffer(DaxiSize size)
    : grey(layout.add<uint8_t>(pixelsOf(size))),
      sampled(layout.add<uint8_t>(pixelsOf(size) / 4)),
      response(layout.add<int16_t>(pixelsOf(size))),
      candidates(layout.add<SymmetryCandidate>(kMaxSymmetryCandidates)),
      near(layout.add<int32_t>(NearMap::blocks(size))),
      corners(layout.add<CheckerboardCorner>(kMaxGridCorners)),
      grid(layout.add<uint8_t>(GridBuffer().layout.total())) {}

bool probeSymmetric(const void* context, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                    CheckerboardCorner* corner) {
  const SymmetryCall& call = *static_cast<const SymmetryCall*>(context);
  if (!isOnImage(expected, call.size)) return false;
  if (!isUnmasked(call, static_cast<int32_t>(expected.x), static_cast<int32_t>(expected.y))) return false;
  const uint8_t* const grey = SymmetryBuffer(call.size).grey.in(call.buffer);
  const float radius = probedRadius(spacing, kMaxProbedCircle);
  if (!refineSymmetric(grey, call.size, expected, radius, *corner)) return false;
  corner->radius = radius;
  corner->response = neighbour.response;
  return continuesGrid(*corner, expected, spacing, neighbour) &&
         viewCircle(grey, call.size.width, call.size, corner->point, radius,
                    kProbedContrast * static_cast<float>(call.cfg->contrast))
             .corner;
}

}  // namespace dax

int32_t DAXI_CheckerboardCornerSym_cfg_cal(DaxiSize size, uint32_t lastRadius, int32_t* radii) {
  const auto end = static_cast<double>(lastRadius);
  const auto last = static_cast<int32_t>(lastRadius);
  const int32_t base = std::clamp(dax::roundRadius(std::min(size.width, size.height) * 0.5 / dax::kSquaresPerSide),
                                  dax::kMinRadius, dax::kMaxRadius);
  int32_t count = 0;
  radii[count++] = base;
  const bool rises = end >= base;
  double radius = base;
  for (;;) {
    radius = rises ? radius * dax::kScaleStep : radius / dax::kScaleStep;
    const int32_t rounded = dax::roundRadius(radius);
    const bool continues = rises ? rounded < end - dax::kLimitMargin : rounded > end + dax::kLimitMargin;
    if (!continues) break;
    radii[count++] = rounded;
    if (count == dax::kMaxScales) return count;
  }
  if (rises ? last > radii[count - 1] : last < radii[count - 1]) radii[count++] = last;
  return count;
}

DaxStatus _DAXI_CheckerboardLocSym_8u_C1R_mt(const dax::SymmetryCall* call, int32_t* count) {
  int32_t radii[dax::kMaxScales];
  int32_t scales = 1;
  radii[0] = static_cast<int32_t>(call->cfg->lastRadius);
  if (call->cfg->scales == DAXI_CHECKERBOARD_LADDER) {
    scales = DAXI_CheckerboardCornerSym_cfg_cal(call->size, call->cfg->lastRadius, radii);
  }
  dax::SymmetryLocator locator(*call);
  for (int32_t i = 0; i < scales; ++i) DAX_REQUIRE_OK(locator.locate(radii[i]));
  *count = locator.count();
  return DAX_STS_OK;
}
