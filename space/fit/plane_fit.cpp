#include "dax3d/fit.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/pcg32.h"
#include "geometry/median_select.h"
#include "space/fit/centred_points.h"

namespace dax {
namespace {

constexpr double kUnique = 1e-12;

// Of centred points: normal . p + offset = 0.
struct CentredPlane {
  Vector3 normal;
  double offset;

  double height(const Vector3& p) const { return dot(normal, p) + offset; }
};

template <class T>
void storePlane(const CentredPoints<T>& points, const CentredPlane& plane, double* to) {
  const Vector3 normal = signedByLargest(plane.normal);
  const Vector3 foot = points.restored(-plane.offset * plane.normal);
  store3(normal, to);
  to[3] = -dot(normal, foot);
}

DaxStatus planeOf(const EigenSystem<3>& axes, const Vector3& mean, CentredPlane& plane) {
  DAX_REQUIRE(axes.values[1] - axes.values[0] > kUnique * axes.values[2], DAX_STS_DEGENERATE);
  plane.normal = load3(axes.vectors[0]);
  plane.offset = -dot(plane.normal, mean);
  return DAX_STS_OK;
}

template <class T>
DaxStatus fitPlane(const T* given, int32_t n, double* plane, double* rms) {
  DAX_REQUIRE(given && plane && rms, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 3, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  CentredPlane found;
  DAX_REQUIRE_OK(planeOf(principalAxes(points), {0, 0, 0}, found));
  *rms = rmsOf(points, [&](const Vector3& p) { return found.height(p); });
  storePlane(points, found, plane);
  return DAX_STS_OK;
}

template <class T>
DaxStatus fitLine(const T* given, int32_t n, double* line, double* rms) {
  DAX_REQUIRE(given && line && rms, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 2, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  const EigenSystem<3> axes = principalAxes(points);
  DAX_REQUIRE(axes.values[2] - axes.values[1] > kUnique * axes.values[2], DAX_STS_DEGENERATE);
  const Vector3 direction = signedByLargest(load3(axes.vectors[2]));
  *rms = rmsOf(points, [&](const Vector3& p) { return length(p - dot(p, direction) * direction); });
  store3(points.mean, line);
  store3(direction, line + 3);
  return DAX_STS_OK;
}

// --- With points that lie elsewhere ---

struct RobustPlane {
  CentredPlane plane;
  double squares, weight;  // sums of w height^2, of w
  int32_t inliers;
};

// P. J. Rousseeuw, J. American Statistical Association 79, 1984, on a sample of the points.
template <class T>
bool bestOfTriples(const CentredPoints<T>& points, float* heights, CentredPlane& best) {
  constexpr int kTriples = 200, kSample = 256;
  Pcg32 random(1);
  const auto draw = [&] { return static_cast<int32_t>(random.below(static_cast<uint32_t>(points.count))); };
  const int32_t sampled = std::min<int32_t>(points.count, kSample);
  int32_t sample[kSample];
  for (int32_t i = 0; i < sampled; ++i) sample[i] = sampled == points.count ? i : draw();
  float least = INFINITY;
  for (int k = 0; k < kTriples; ++k) {
    const Vector3 a = points[draw()], b = points[draw()], c = points[draw()];
    const Vector3 normal = cross(b - a, c - a);
    const double area = length(normal);
    if (!(area > 1e-9 * length(b - a) * length(c - a))) continue;
    const CentredPlane plane{(1 / area) * normal, -dot(normal, a) / area};
    for (int32_t i = 0; i < sampled; ++i) heights[i] = static_cast<float>(std::fabs(plane.height(points[sample[i]])));
    const float median = _DAXS_Median_32f(heights, sampled);
    if (median < least) least = median, best = plane;
  }
  return least < INFINITY;
}

template <class T>
double robustSigma(const CentredPoints<T>& points, const CentredPlane& plane, float* heights) {
  for (int32_t i = 0; i < points.count; ++i) heights[i] = static_cast<float>(std::fabs(plane.height(points[i])));
  const double median = double{_DAXS_Median_32f(heights, points.count)};
  // Where more than half of the points are exact, the others are recognised by rounding.
  return std::max(1.4826 * (1 + 5.0 / (points.count - 3)) * median, 1e-13);
}

// The plane with Tukey's weights of another one.
template <class T>
DaxStatus weightedPlane(const CentredPoints<T>& points, double sigma, RobustPlane& found) {
  const CentredPlane last = found.plane;
  const auto weightOf = [&](double height) {
    const double part = height / (4.685 * sigma), rest = 1 - part * part;
    return rest > 0 ? rest * rest : 0;
  };
  double sums[12] = {};
  sumInBlocks(points.count, sums, [&](int32_t i, double(&sum)[12]) {
    const Vector3 p = points[i];
    const double height = last.height(p), w = weightOf(height);
    sum[0] += w, sum[1] += w * p.x, sum[2] += w * p.y, sum[3] += w * p.z;
    sum[4] += w * p.x * p.x, sum[5] += w * p.x * p.y, sum[6] += w * p.x * p.z;
    sum[7] += w * p.y * p.y, sum[8] += w * p.y * p.z, sum[9] += w * p.z * p.z;
    sum[10] += w * height * height, sum[11] += w > 0 ? 1 : 0;
  });
  const double w = sums[0];
  DAX_REQUIRE(w > 0, DAX_STS_DEGENERATE);
  const Vector3 mean{sums[1] / w, sums[2] / w, sums[3] / w};
  double covariance[3][3] = {
      {sums[4] / w - mean.x * mean.x, sums[5] / w - mean.x * mean.y, sums[6] / w - mean.x * mean.z},
      {0, sums[7] / w - mean.y * mean.y, sums[8] / w - mean.y * mean.z},
      {0, 0, sums[9] / w - mean.z * mean.z}};
  covariance[1][0] = covariance[0][1], covariance[2][0] = covariance[0][2], covariance[2][1] = covariance[1][2];
  found = {{}, sums[10], w, static_cast<int32_t>(sums[11])};
  return planeOf(jacobiEigen(covariance), mean, found.plane);
}

template <class T>
DaxStatus fitPlaneRobust(const T* given, int32_t n, double* plane, double* rms, int32_t* inliers, void* buffer) {
  DAX_REQUIRE(given && plane && rms && inliers && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  float* const heights = static_cast<float*>(buffer);
  RobustPlane found{};
  DAX_REQUIRE(bestOfTriples(points, heights, found.plane), DAX_STS_DEGENERATE);
  double sigma = 0;
  for (int round = 0; round < 50; ++round) {
    const CentredPlane last = found.plane;
    if (round < 5) sigma = robustSigma(points, last, heights);
    DAX_REQUIRE_OK(weightedPlane(points, sigma, found));
    const double turned = length(cross(last.normal, found.plane.normal));
    if (round >= 5 && turned < 1e-14 && std::fabs(std::fabs(last.offset) - std::fabs(found.plane.offset)) < 1e-14)
      break;
  }
  storePlane(points, found.plane, plane);
  *rms = std::sqrt(found.squares / found.weight) / points.factor;
  *inliers = found.inliers;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_FIT_Plane_f64(const double* points, int32_t n, double plane[4], double* rms) {
  return fitPlane(points, n, plane, rms);
}
DaxStatus DAX3D_FIT_Plane_f32(const float* points, int32_t n, double plane[4], double* rms) {
  return fitPlane(points, n, plane, rms);
}
DaxStatus DAX3D_FIT_Line_f64(const double* points, int32_t n, double line[6], double* rms) {
  return fitLine(points, n, line, rms);
}
DaxStatus DAX3D_FIT_Line_f32(const float* points, int32_t n, double line[6], double* rms) {
  return fitLine(points, n, line, rms);
}
DaxStatus DAX3D_FIT_PlaneRobust_BufferSize(int32_t n, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4, DAX_STS_BAD_PARAM);
  BufferLayout layout;
  layout.add<float>(static_cast<uint64_t>(n));
  return layout.store(bytes);
}
DaxStatus DAX3D_FIT_PlaneRobust_f64(const double* points, int32_t n, double plane[4], double* rms, int32_t* inliers,
                                    void* buffer) {
  return fitPlaneRobust(points, n, plane, rms, inliers, buffer);
}
DaxStatus DAX3D_FIT_PlaneRobust_f32(const float* points, int32_t n, double plane[4], double* rms, int32_t* inliers,
                                    void* buffer) {
  return fitPlaneRobust(points, n, plane, rms, inliers, buffer);
}
