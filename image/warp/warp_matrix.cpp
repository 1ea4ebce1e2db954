#include "image/warp/warp_matrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/numeric/double_double.h"
#include "frame/numeric/elementary.h"
#include "image/warp/sampling.h"

static_assert(sizeof(DaxiWarpCfg) == 104 && offsetof(DaxiWarpCfg, value) == 88);
static_assert(sizeof(DaxiRotateCfg) == 32);

namespace dax {
namespace {

using Exact = DoubleDouble;

template <size_t n>
bool areFinite(const double (&values)[n]) {
  return std::all_of(values, values + n, [](double value) { return std::isfinite(value); });
}

bool areFinite(const double* values, size_t n) {
  return std::all_of(values, values + n, [](double value) { return std::isfinite(value); });
}

using Matrix3x3 = Exact[9];

// a d - b c.
Exact cross(Exact a, Exact b, Exact c, Exact d) {
  return a * d - b * c;
}

void adjugate(const Matrix3x3& m, Matrix3x3& result) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      const auto at = [&](int row, int column) { return m[(j + row) % 3 * 3 + (i + column) % 3]; };
      result[3 * i + j] = cross(at(1, 1), at(1, 2), at(2, 1), at(2, 2));
    }
  }
}

void multiply(const Matrix3x3& a, const Matrix3x3& b, Matrix3x3& result) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      result[3 * i + j] = a[3 * i] * b[j] + a[3 * i + 1] * b[3 + j] + a[3 * i + 2] * b[6 + j];
    }
  }
}

double denominatorAt(const double (&m)[9], double x, double y) {
  return m[6] * x + m[7] * y + m[8];
}

// --- Points ---

struct ExactPoint {
  Exact x, y;
};

ExactPoint pointOf(const double* points, int i) {
  return {{points[2 * i], 0}, {points[2 * i + 1], 0}};
}

// Twice the area of a triangle; whether that is not 0, well above what single coordinates have lost.
Exact twiceArea(const ExactPoint& a, const ExactPoint& b, const ExactPoint& c) {
  return cross(b.x - a.x, c.x - a.x, b.y - a.y, c.y - a.y);
}

bool isTriangle(const double* points, int i, int j, int k) {
  const ExactPoint a = pointOf(points, i), b = pointOf(points, j), c = pointOf(points, k);
  const Exact area = twiceArea(a, b, c);
  const double terms = std::fabs((b.x - a.x).high * (c.y - a.y).high) + std::fabs((c.x - a.x).high * (b.y - a.y).high);
  return std::fabs(area.high) > 0x1p-40 * terms;
}

bool areCorners(const double* points) {
  return isTriangle(points, 0, 1, 2) && isTriangle(points, 1, 2, 3) && isTriangle(points, 2, 3, 0) &&
         isTriangle(points, 3, 0, 1);
}

// The homography from the unit square (0, 0), (1, 0), (1, 1), (0, 1): Heckbert, Fundamentals of texture mapping and image
// warping, 1989, without his division.
void fromUnitSquare(const double* corners, Matrix3x3& m) {
  const ExactPoint p0 = pointOf(corners, 0), p1 = pointOf(corners, 1), p2 = pointOf(corners, 2),
                   p3 = pointOf(corners, 3);
  const Exact sx = p0.x - p1.x + p2.x - p3.x, sy = p0.y - p1.y + p2.y - p3.y;
  const Exact ax = p1.x - p2.x, ay = p1.y - p2.y, bx = p3.x - p2.x, by = p3.y - p2.y;
  const Exact w = cross(ax, bx, ay, by), g = cross(sx, bx, sy, by), h = cross(ax, sx, ay, sy);
  const Exact along[2] = {g, h};
  const ExactPoint ends[2] = {p1, p3};
  for (int i = 0; i < 2; ++i) {
    m[i] = (ends[i].x - p0.x) * w + along[i] * ends[i].x;
    m[3 + i] = (ends[i].y - p0.y) * w + along[i] * ends[i].y;
    m[6 + i] = along[i];
  }
  m[2] = p0.x * w;
  m[5] = p0.y * w;
  m[8] = w;
}

// Scales a homography so that its denominators at four points have the mean 1. False where not all are positive then.
bool normalise(const Matrix3x3& h, const double* points, double (&m)[9]) {
  Exact w[4], sum = {0, 0};
  for (int i = 0; i < 4; ++i) {
    const ExactPoint p = pointOf(points, i);
    w[i] = h[6] * p.x + h[7] * p.y + h[8];
    sum = sum + w[i];
  }
  const Exact mean = {sum.high / 4, sum.low / 4};
  for (const Exact& each : w) {
    if (!((each / mean).high > 0)) return false;
  }
  for (int i = 0; i < 9; ++i) m[i] = (h[i] / mean).high + 0.0;  // no negative zeros
  return areFinite(m);
}

// --- Bounds ---

struct Interval {
  double low = INFINITY, high = -INFINITY;
  void add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  // The whole numbers within, or else the one nearest to the middle; borders that rounding has moved count.
  bool pixels(int32_t& first, int32_t& count) const {
    constexpr double kSlack = 0x1p-10;
    if (!(low >= -0x1p29 && high <= 0x1p29)) return false;
    const auto from = static_cast<int32_t>(std::ceil(low - kSlack)),
               to = static_cast<int32_t>(std::floor(high + kSlack));
    first = from <= to ? from : static_cast<int32_t>(std::floor((low + high) / 2 + 0.5));
    count = std::max(to - from + 1, 1);
    return true;
  }
};

// What becomes of a rectangle of pixels, each a unit square. False where it reaches the horizon.
bool boundOf(const double (&m)[9], double centreW, const DaxiRect& region, DaxiRect& bound) {
  Interval columns, rows;
  for (int i = 0; i < 4; ++i) {
    const double x = region.x - 0.5 + (i & 1 ? region.width : 0), y = region.y - 0.5 + (i & 2 ? region.height : 0);
    const double w = denominatorAt(m, x, y);
    if (!(w >= 0x1p-20 * centreW)) return false;
    columns.add((m[0] * x + m[1] * y + m[2]) / w);
    rows.add((m[3] * x + m[4] * y + m[5]) / w);
  }
  return columns.pixels(bound.x, bound.width) && rows.pixels(bound.y, bound.height);
}

}  // namespace

bool invertMatrix(const double (&m)[9], double (&inverse)[9]) {
  double largest = 0;
  for (const double each : m) largest = std::max(largest, std::fabs(each));
  if (!(largest > 0 && areFinite(m))) return false;
  int exponent;
  std::frexp(largest, &exponent);
  Matrix3x3 scaled, adjoint;
  for (int i = 0; i < 9; ++i) scaled[i] = {std::ldexp(m[i], -exponent), 0};
  adjugate(scaled, adjoint);
  Exact determinant = {0, 0};
  double terms = 0;
  for (int k = 0; k < 3; ++k) {
    const Exact term = scaled[k] * adjoint[3 * k];
    determinant = determinant + term;
    terms += std::fabs(term.high);
  }
  if (!(std::fabs(determinant.high) > 0x1p-90 * terms)) return false;
  for (int i = 0; i < 9; ++i) inverse[i] = std::ldexp((adjoint[i] / determinant).high, -exponent);
  return areFinite(inverse);
}

bool isAffine(const double (&m)[9]) {
  return m[6] == 0 && m[7] == 0 && m[8] == 1;
}

DaxStatus checkWarpCfg(const DaxiWarpCfg& cfg) {
  DAX_REQUIRE(areFinite(cfg.m), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.inverse == 0 || cfg.inverse == 1, DAX_STS_BAD_PARAM);
  return checkSampling(cfg);
}

DaxStatus orientWarp(const DaxiWarpCfg& cfg, DaxiSize srcSize, WarpMatrices* matrices) {
  double inverse[9];
  DAX_REQUIRE(invertMatrix(cfg.m, inverse), DAX_STS_INVERSION);
  std::copy_n(cfg.inverse ? inverse : cfg.m, 9, matrices->forward);
  std::copy_n(cfg.inverse ? cfg.m : inverse, 9, matrices->back);
  const double w = denominatorAt(matrices->forward, (srcSize.width - 1) / 2.0, (srcSize.height - 1) / 2.0);
  if (!(w < 0)) return DAX_STS_OK;
  for (double& each : matrices->forward) each = -each;
  for (double& each : matrices->back) each = -each;
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_WarpDefaultCfg(DaxiWarpCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {{1, 0, 0, 0, 1, 0, 0, 0, 1}, 0, DAXI_INTERPOLATION_LINEAR, DAXI_BORDER_CONSTANT, 0, 0, -0.5};
  return DAX_STS_OK;
}

DaxStatus DAXI_RotateDefaultCfg(DaxiRotateCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {0, DAXI_INTERPOLATION_LINEAR, DAXI_BORDER_CONSTANT, 0, -0.5};
  return DAX_STS_OK;
}

DaxStatus DAXI_RotateSize(DaxiSize srcSize, double angle, DaxiSize* dstSize) {
  DAX_REQUIRE(dstSize, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(srcSize), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(angle), DAX_STS_BAD_PARAM);
  const dax::SinCos turn = dax::elementary::sinCos(angle);
  const double c = std::fabs(turn.cosine), s = std::fabs(turn.sine), w = srcSize.width, h = srcSize.height;
  const auto side = [](double length) { return std::max(static_cast<int32_t>(std::ceil(length - 0x1p-10)), 1); };
  *dstSize = {side(w * c + h * s), side(w * s + h * c)};
  return DAX_STS_OK;
}

DaxStatus DAXI_RotationMatrix(double x, double y, double angle, double scale, double m[9]) {
  DAX_REQUIRE(m, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(std::isfinite(x) && std::isfinite(y), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(angle), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(scale), DAX_STS_BAD_PARAM);
  const dax::SinCos turn = dax::elementary::sinCos(angle);
  const double c = scale * turn.cosine, s = scale * turn.sine;
  const double result[9] = {c, -s, x - (c * x - s * y), s, c, y - (s * x + c * y), 0, 0, 1};
  std::copy_n(result, 9, m);
  return DAX_STS_OK;
}

DaxStatus DAXI_AffineFrom3(const double from[6], const double to[6], double m[9]) {
  using dax::Exact;
  DAX_REQUIRE(from && to && m, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areFinite(from, 6), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::areFinite(to, 6), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isTriangle(from, 0, 1, 2), DAX_STS_DEGENERATE);
  const dax::ExactPoint a = dax::pointOf(from, 0), b = dax::pointOf(from, 1), c = dax::pointOf(from, 2);
  const Exact area = dax::twiceArea(a, b, c);
  double result[9] = {0, 0, 0, 0, 0, 0, 0, 0, 1};
  for (int i = 0; i < 2; ++i) {
    const Exact start = {to[i], 0}, u = Exact{to[2 + i], 0} - start, v = Exact{to[4 + i], 0} - start;
    const Exact mx = dax::cross(u, v, b.y - a.y, c.y - a.y) / area, my = dax::cross(b.x - a.x, c.x - a.x, u, v) / area;
    result[3 * i] = mx.high;
    result[3 * i + 1] = my.high;
    result[3 * i + 2] = (start - mx * a.x - my * a.y).high;
  }
  DAX_REQUIRE(dax::areFinite(result), DAX_STS_DEGENERATE);
  std::copy_n(result, 9, m);
  return DAX_STS_OK;
}

DaxStatus DAXI_PerspectiveFrom4(const double from[8], const double to[8], double m[9]) {
  DAX_REQUIRE(from && to && m, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areFinite(from, 8), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::areFinite(to, 8), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::areCorners(from) && dax::areCorners(to), DAX_STS_DEGENERATE);
  double result[9];
  dax::Matrix3x3 into, out, back, h;
  dax::fromUnitSquare(from, out);
  dax::adjugate(out, back);
  dax::fromUnitSquare(to, into);
  dax::multiply(into, back, h);
  DAX_REQUIRE(dax::normalise(h, from, result), DAX_STS_DEGENERATE);
  std::copy_n(result, 9, m);
  return DAX_STS_OK;
}

DaxStatus DAXI_WarpBound(DaxiSize srcSize, DaxiRect region, const DaxiWarpCfg* cfg, DaxiRect* bound) {
  DAX_REQUIRE(cfg && bound, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(srcSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::isPartOf(region, srcSize), DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(dax::checkWarpCfg(*cfg));
  dax::WarpMatrices matrices;
  DAX_REQUIRE_OK(dax::orientWarp(*cfg, srcSize, &matrices));
  const double w = dax::denominatorAt(matrices.forward, (srcSize.width - 1) / 2.0, (srcSize.height - 1) / 2.0);
  DaxiRect result;
  DAX_REQUIRE(w > 0 && dax::boundOf(matrices.forward, w, region, result), DAX_STS_DEGENERATE);
  *bound = result;
  return DAX_STS_OK;
}
