#include "measure/caliper/caliper_region.h"

#include <cmath>
#include <numbers>

#include "frame/math.h"

namespace dax {
namespace {

constexpr float kPi = std::numbers::pi_v<float>, kTwoPi = 2 * kPi;
constexpr double kMaxSide = 16777216;  // 2^24: single precision holds whole numbers up to it
constexpr double kMinSine = 0.01;      // of the angle between the sides of a rhomboid

bool isSide(double side) {
  return side >= 1 && side <= kMaxSide;
}

bool isAngle(float angle) {
  return angle >= -kPi && angle <= kPi;
}

// Rounds to the nearest whole number, then up to an even one, except for 1 where that is allowed.
int32_t sampleCount(double side, bool mayBeOne) {
  const auto count = static_cast<int32_t>(std::floor(side + 0.5));
  return mayBeOne && count == 1 ? 1 : count + count % 2;
}

double radialSide(const CaliperAnnulus& a) {
  return double{a.outerRadius} - a.innerRadius;
}

double meanRadius(const CaliperAnnulus& a) {
  return (double{a.outerRadius} + a.innerRadius) / 2;
}

double arcSide(const CaliperAnnulus& a) {
  return a.sweep * meanRadius(a);
}

CaliperGrid makeGrid(CaliperShape shape, double width, double height, float x, float y, uint32_t projection) {
  CaliperGrid grid = {};
  grid.shape = shape;
  grid.alongColumns = projection == DAXI_CALIPER_VERTICAL;
  grid.columns = sampleCount(width, false);
  grid.rows = sampleCount(height, true);
  grid.x = x;
  grid.y = y;
  grid.firstColumn = -0.5 * (grid.alongColumns ? grid.columns : grid.columns - 1);
  grid.firstRow = -0.5 * (grid.alongColumns ? grid.rows - 1 : grid.rows);
  return grid;
}

}  // namespace

bool possible(const CaliperBox& box) {
  return isSide(box.width) && isSide(box.height) && isAngle(box.angle);
}

bool possible(const CaliperRhomboid& r) {
  if (!isSide(r.width) || !isSide(r.height) || !isAngle(r.angle) || !isAngle(r.sideAngle)) return false;
  return std::fabs(sinCosExact(double{r.sideAngle} - r.angle).sine) >= kMinSine;
}

bool possible(const CaliperAnnulus& a) {
  if (!(a.innerRadius >= 0) || !isAngle(a.startAngle) || !(a.sweep > 0 && a.sweep <= kTwoPi)) return false;
  return isSide(radialSide(a)) && isSide(arcSide(a));
}

bool hasCentreIn(DaxiSize size, float x, float y) {
  return x >= 0 && x <= size.width - 1.0 && y >= 0 && y <= size.height - 1.0;
}

CaliperGrid gridOf(const CaliperBox& box, uint32_t projection) {
  CaliperGrid grid = makeGrid(CaliperShape::kBox, box.width, box.height, box.x, box.y, projection);
  const SinCos u = sinCosExact(box.angle);
  grid.ux = u.cosine, grid.uy = u.sine;
  grid.vx = -u.sine, grid.vy = u.cosine;
  return grid;
}

CaliperGrid gridOf(const CaliperRhomboid& r, uint32_t projection) {
  CaliperGrid grid = makeGrid(CaliperShape::kRhomboid, r.width, r.height, r.x, r.y, projection);
  const SinCos u = sinCosExact(r.angle), v = sinCosExact(r.sideAngle);
  grid.ux = u.cosine, grid.uy = u.sine;
  grid.vx = v.cosine, grid.vy = v.sine;
  return grid;
}

CaliperGrid gridOf(const CaliperAnnulus& a, uint32_t projection) {
  CaliperGrid grid = makeGrid(CaliperShape::kAnnulus, radialSide(a), arcSide(a), a.x, a.y, projection);
  grid.radius = meanRadius(a);
  grid.angle = a.startAngle + double{a.sweep} / 2;
  const SinCos u = sinCosExact(grid.angle);
  grid.ux = u.cosine, grid.uy = u.sine;
  return grid;
}

SampleLine CaliperGrid::row(int32_t k) const {
  const double down = firstRow + k;
  if (shape == CaliperShape::kAnnulus) {
    const SinCos out = sinCosExact(angle + down / radius);
    const double first = radius + firstColumn;
    return {x + first * out.cosine, y + first * out.sine, out.cosine, out.sine};
  }
  return {x + firstColumn * ux + down * vx, y + firstColumn * uy + down * vy, ux, uy};
}

DaxiPoint32f CaliperGrid::pointAt(float position) const {
  double dx, dy;
  if (shape != CaliperShape::kAnnulus) {
    dx = position * (alongColumns ? ux : vx), dy = position * (alongColumns ? uy : vy);
  } else if (alongColumns) {
    dx = (radius + position) * ux, dy = (radius + position) * uy;
  } else {
    const SinCos out = sinCosExact(angle + position / radius);
    dx = radius * out.cosine, dy = radius * out.sine;
  }
  return {static_cast<float>(x + dx), static_cast<float>(y + dy)};
}

}  // namespace dax
