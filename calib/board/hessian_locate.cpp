#include "calib/board/hessian_locate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "calib/board/board_image.h"
#include "calib/board/corner_grid.h"
#include "calib/board/corner_ring.h"
#include "calib/board/local_maxima.h"
#include "frame/math.h"
#include "frame/rows.h"
#include "frame/vector4.h"
#include "geometry/vector2.h"
#include "image/gauss/filter_gauss.h"

namespace dax {
namespace {

// Documented in daxi/chessboard_hessian.h.
constexpr float kThresholdFraction = 0.005f;  // of the most negative determinant
constexpr int32_t kRadii[] = {4, 5, 7};       // of the non-maximum suppression, pixels
constexpr double kRingRadius = 1.6;           // of the circle, by that of the suppression
constexpr int32_t kRingSamples = 17;

constexpr float kMaxDeterminant = 255.0f;                   // start value of a minimum
constexpr float kMinContrast = 10, kMinProbedContrast = 6;  // grey levels; a probed position is likelier
constexpr float kEdgeScale = 3;                             // pixels: sigma of the Gaussian
constexpr float kMaxShift = 3;                              // pixels from the start of the search to the saddle
constexpr float kProbedResponse = 0.1f;                     // min response of a probed corner, by its neighbour's
constexpr float kMaxProbedRadius = 11;                      // pixels; the circles of the locator have up to 11.2

// Writes the magnitudes of the determinants of the Hessian; the border of the image gets 0. Returns the threshold.
float fillResponse(const float* smooth, float* response, DaxiSize size) {
  const auto n = static_cast<size_t>(size.width);
  std::fill_n(response, n, 0.0f);
  std::fill_n(rowAt(response, size.width, size.height - 1), n, 0.0f);
  float lowest = kMaxDeterminant;
  Float4 lowest4 = {lowest, lowest, lowest, lowest};
  for (int32_t y = 1; y < size.height - 1; ++y) {
    const float* const centre = rowAt(smooth, size.width, y);
    const float *const above = centre - size.width, *const below = centre + size.width;
    float* const to = rowAt(response, size.width, y);
    const auto determinant = [&](auto at) {
      const auto twice = 2 * at(centre, 0);
      const auto dxx = at(centre, -1) - twice + at(centre, 1), dyy = at(above, 0) - twice + at(below, 0);
      const auto dxy = (at(below, 1) - at(below, -1) + at(above, -1) - at(above, 1)) * 0.25f;
      return dxx * dyy - dxy * dxy;
    };
    to[0] = to[size.width - 1] = 0;
    int32_t x = 1;
    for (; x + 5 <= size.width; x += 4) {
      const Float4 d = determinant([x](const float* row, int32_t dx) { return load4(row + x + dx); });
      lowest4 = d < lowest4 ? d : lowest4;
      store4(to + x, d < 0 ? -d : d);
    }
    for (; x < size.width - 1; ++x) {
      const float d = determinant([x](const float* row, int32_t dx) { return row[x + dx]; });
      lowest = std::min(lowest, d);
      to[x] = std::fabs(d);
    }
  }
  for (int32_t i = 0; i < 4; ++i) lowest = std::min(lowest, lowest4[i]);
  return std::fabs(lowest * kThresholdFraction);
}

class RingTest {
 public:
  explicit RingTest(const HessianPlanes& planes) : planes_(planes) { ringDirections(directions_.data(), kRingSamples); }

  bool passes(int32_t x, int32_t y, int32_t r) const {
    const auto radius = static_cast<float>(kRingRadius * r);
    const auto fx = static_cast<float>(x), fy = static_cast<float>(y);
    const bool inside = fx - radius >= 0 && fx + radius < static_cast<float>(planes_.size.width - 1) &&
                        fy - radius >= 0 && fy + radius < static_cast<float>(planes_.size.height - 1);
    if (!inside) return false;
    std::array<float, kRingSamples> samples;
    for (size_t k = 0; k < samples.size(); ++k) {
      const auto u = static_cast<int32_t>(fx + radius * directions_[k].x + 0.5f);
      const auto v = static_cast<int32_t>(fy + radius * directions_[k].y + 0.5f);
      samples[k] = static_cast<float>(rowAt(planes_.grey, planes_.size.width, v)[u]);
    }
    return viewRing(samples.data(), directions_.data(), kRingSamples, kMinContrast).corner;
  }

 private:
  const HessianPlanes& planes_;
  std::array<DaxiPoint32f, kRingSamples> directions_;
};

// f(x, y) = a x^2 + b x y + c y^2 + d x + e y + ..., fitted to 5 x 5 values by least squares. The basis x^2 - 2, x y,
// y^2 - 2, x, y is orthogonal over -2..2; the sums of its squares are 70, 100, 70, 50, 50.
struct Quadric {
  Quadric(const HessianPlanes& planes, int32_t x, int32_t y) {
    for (int32_t v = -2; v <= 2; ++v) {
      const float* const row = rowAt(planes.smooth, planes.size.width, y + v) + x;
      const float sum = (row[-2] + row[2]) + (row[-1] + row[1]) + row[0];
      const float slope = 2 * (row[2] - row[-2]) + (row[1] - row[-1]);
      a += 2 * (row[-2] + row[2]) - (row[-1] + row[1]) - 2 * row[0];
      b += static_cast<float>(v) * slope;
      c += static_cast<float>(v * v - 2) * sum;
      d += slope;
      e += static_cast<float>(v) * sum;
    }
    a /= 70, b /= 100, c /= 70, d /= 50, e /= 50;
  }
  float determinant() const { return 4 * a * c - b * b; }
  DaxiPoint32f centre() const { return {(b * e - 2 * c * d) / determinant(), (b * d - 2 * a * e) / determinant()}; }
  float along(DaxiPoint32f u) const { return a * u.x * u.x + b * u.x * u.y + c * u.y * u.y; }

  float a = 0, b = 0, c = 0, d = 0, e = 0;
};

void setEdges(const Quadric& f, DaxiPoint32f first, DaxiPoint32f second, CheckerboardCorner& corner) {
  if (cross(first, second) < 0) second = -second;
  const bool darkBetween = f.along(first + second) < 0;
  corner.intoDark = darkBetween ? first : second;
  corner.intoLight = darkBetween ? second : first;
}

// The edges are the directions in which the saddle neither rises nor falls.
void setEdges(const Quadric& f, CheckerboardCorner& corner) {
  const float s = std::sqrt(-f.determinant());
  const float q = -0.5f * (f.b >= 0 ? f.b + s : f.b - s);
  setEdges(f, unit({q, f.a}), unit({f.c, q}), corner);
}

bool fitsQuadric(const HessianPlanes& planes, int32_t x, int32_t y) {
  return x >= 2 && y >= 2 && x < planes.size.width - 2 && y < planes.size.height - 2;
}

// Sum of gradients with doubled angles, so that opposite directions count as the same.
struct DoubledAngles {
  float x = 0, y = 0;
  void add(float gx, float gy) {
    x += gx * gx - gy * gy;
    y += 2 * gx * gy;
  }
  // The line perpendicular to the gradients, with the sense of `before`; `before` itself where the sum is 0.
  DaxiPoint32f edge(DaxiPoint32f before) const {
    const float length = std::sqrt(x * x + y * y);
    if (!(length > 0)) return before;
    const float cosine = std::sqrt(std::max(0.0f, (1 + x / length) / 2));
    const float sine = std::sqrt(std::max(0.0f, (1 - x / length) / 2));
    const DaxiPoint32f line{y >= 0 ? -sine : sine, cosine};
    return dot(line, before) < 0 ? -line : line;
  }
};

// Whether the angle between two lines in degrees, or its supplement, is within the limits.
bool angleFits(DaxiPoint32f a, DaxiPoint32f b, float min, float max) {
  constexpr double kDegrees = 180 / std::numbers::pi;
  const double cross = std::fabs(static_cast<double>(a.x) * static_cast<double>(b.y) -
                                 static_cast<double>(a.y) * static_cast<double>(b.x));
  const auto angle = static_cast<float>(atan2Exact(cross, static_cast<double>(alike(a, b))) * kDegrees);
  return (angle >= min && angle <= max) || (180 - angle >= min && 180 - angle <= max);
}

}  // namespace

LocateBuffer::LocateBuffer(DaxiSize size)
    : grey(layout.add<uint8_t>(pixelsOf(size))),
      smooth(layout.add<float>(pixelsOf(size))),
      response(layout.add<float>(pixelsOf(size))),
      gauss(layout.add<uint8_t>(GaussBuffer(size).layout.total())),
      near(layout.add<int32_t>(NearMap::blocks(size))) {}

HessianPlanes prepareHessian(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t filter, void* buffer,
                             int32_t isa) {
  const LocateBuffer at(size);
  uint8_t* const grey = at.grey.in(buffer);
  prefilter(src, srcStep, grey, size, filter, isa);
  _DAXI_FilterGauss_8u32f_C1R(grey, size.width, at.smooth.in(buffer), size.width, size, at.gauss.in(buffer));
  return {grey, at.smooth.in(buffer), size};
}

bool probeSaddle(const void* context, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                 CheckerboardCorner* corner) {
  const HessianPlanes& planes = *static_cast<const HessianPlanes*>(context);
  const bool inside = expected.x >= 2 && expected.x < static_cast<float>(planes.size.width - 2) && expected.y >= 2 &&
                      expected.y < static_cast<float>(planes.size.height - 2);
  if (!inside || !DAXI_CBL_Hessian_subpixel(&planes, static_cast<int32_t>(expected.x + 0.5f),
                                            static_cast<int32_t>(expected.y + 0.5f), corner)) {
    return false;
  }
  corner->radius = probedRadius(spacing, kMaxProbedRadius);
  return corner->response >= kProbedResponse * neighbour.response &&
         continuesGrid(*corner, expected, spacing, neighbour) &&
         viewCircle(planes.grey, planes.size.width, planes.size, corner->point, corner->radius, kMinProbedContrast)
             .corner;
}

}  // namespace dax

bool DAXI_CBL_Hessian_subpixel(const dax::HessianPlanes* planes, int32_t x, int32_t y, CheckerboardCorner* corner) {
  const int32_t startX = x, startY = y;
  for (int32_t i = 0; i < 4; ++i) {
    if (!dax::fitsQuadric(*planes, x, y)) return false;
    const dax::Quadric f(*planes, x, y);
    if (!(f.determinant() < 0)) return false;
    const DaxiPoint32f offset = f.centre();
    const bool isClose = std::fabs(offset.x) <= dax::kMaxShift && std::fabs(offset.y) <= dax::kMaxShift;
    if (!isClose) return false;
    corner->point = {static_cast<float>(x) + offset.x, static_cast<float>(y) + offset.y};
    corner->response = -f.determinant();
    dax::setEdges(f, *corner);
    const auto nextX = static_cast<int32_t>(std::floor(corner->point.x + 0.5f));
    const auto nextY = static_cast<int32_t>(std::floor(corner->point.y + 0.5f));
    if (nextX == x && nextY == y) break;
    x = nextX;
    y = nextY;
  }
  return std::fabs(corner->point.x - static_cast<float>(startX)) <= dax::kMaxShift &&
         std::fabs(corner->point.y - static_cast<float>(startY)) <= dax::kMaxShift;
}

void _DAXI_CBL_Hessian_orien(const dax::HessianPlanes* planes, float scale, CheckerboardCorner* corner) {
  const auto reach = static_cast<int32_t>(2 * scale);
  const auto cx = static_cast<int32_t>(corner->point.x + 0.5f), cy = static_cast<int32_t>(corner->point.y + 0.5f);
  const int32_t width = planes->size.width;
  for (int32_t round = 0; round < 2; ++round) {
    dax::DoubledAngles dark, light;
    for (int32_t y = std::max(cy - reach, 1); y <= std::min(cy + reach, planes->size.height - 2); ++y) {
      const float* const row = dax::rowAt(planes->smooth, width, y);
      for (int32_t x = std::max(cx - reach, 1); x <= std::min(cx + reach, width - 2); ++x) {
        if ((x - cx) * (x - cx) + (y - cy) * (y - cy) > reach * reach) continue;
        const float gx = row[x + 1] - row[x - 1], gy = row[x + width] - row[x - width];
        const float acrossDark = std::fabs(gx * corner->intoDark.y - gy * corner->intoDark.x);
        const float acrossLight = std::fabs(gx * corner->intoLight.y - gy * corner->intoLight.x);
        (acrossDark > acrossLight ? dark : light).add(gx, gy);
      }
    }
    corner->intoDark = dark.edge(corner->intoDark);
    corner->intoLight = light.edge(corner->intoLight);
  }
}

int32_t _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   CheckerboardCorner* corners, int32_t maxCorners, void* buffer,
                                                   const CheckerboardHessianParam* param, int32_t isa) {
  const dax::LocateBuffer at(size);
  const dax::HessianPlanes planes = dax::prepareHessian(src, srcStep, size, param->filter, buffer, isa);
  float* const response = at.response.in(buffer);
  const float threshold = dax::fillResponse(planes.smooth, response, size);
  const dax::RingTest ring(planes);
  dax::NearMap near(at.near.in(buffer), size, corners);
  int32_t count = 0;
  for (const int32_t r : dax::kRadii) {
    dax::forEachMaximum(response, size, r, threshold, [&](int32_t x, int32_t y) {
      if (count == maxCorners || near.holds({static_cast<float>(x), static_cast<float>(y)}) || !ring.passes(x, y, r))
        return;
      CheckerboardCorner& corner = corners[count];
      if (!DAXI_CBL_Hessian_subpixel(&planes, x, y, &corner) || near.holds(corner.point)) return;
      corner.radius = static_cast<float>(r);
      _DAXI_CBL_Hessian_orien(&planes, dax::kEdgeScale, &corner);
      if (!dax::angleFits(corner.intoDark, corner.intoLight, param->minAngle, param->maxAngle)) return;
      near.add(count++);
    });
  }
  return count;
}
