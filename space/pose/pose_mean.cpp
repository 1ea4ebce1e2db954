#include "dax3d/pose.h"
#include "geometry/jacobi_eigen.h"
#include "space/pose/pose.h"

namespace dax {
namespace {

// Poses, and their weights over the largest of them.
struct WeightedPoses {
  const double* poses;
  const double* weights;
  int32_t count;
  double largest = 1;

  double weight(int32_t i) const { return weights ? weights[i] / largest : 1; }
  Pose operator[](int32_t i) const { return loadPose(poses + ptrdiff_t{16} * i); }
};

// Differences of such numbers are finite, and three of them make a length that is.
bool isModerate(const Vector3& v) {
  constexpr double kLargest = 1e300;
  return std::fabs(v.x) <= kLargest && std::fabs(v.y) <= kLargest && std::fabs(v.z) <= kLargest;
}

DaxStatus checkPoses(WeightedPoses& set, const double* mean) {
  DAX_REQUIRE(set.poses && mean, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(set.count >= 1, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < set.count; ++i) {
    DAX_REQUIRE(isModerate(set[i].translation) && (!set.weights || std::isfinite(set.weights[i])), DAX_STS_DATA_RANGE);
  }
  for (int32_t i = 0; i < set.count; ++i) DAX_REQUIRE(isRotation(set[i].rotation), DAX3D_STS_NO_ROTATION);
  if (!set.weights) return DAX_STS_OK;
  set.largest = 0;
  for (int32_t i = 0; i < set.count; ++i) {
    DAX_REQUIRE(set.weights[i] >= 0, DAX_STS_BAD_PARAM);
    set.largest = std::fmax(set.largest, set.weights[i]);
  }
  DAX_REQUIRE(set.largest > 0, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

double weightSum(const WeightedPoses& set) {
  double sum = 0;
  for (int32_t i = 0; i < set.count; ++i) sum += set.weight(i);
  return sum;
}

// A sum of shares, which no large translation makes overflow.
Vector3 meanTranslation(const WeightedPoses& set) {
  const double sum = weightSum(set);
  Vector3 mean{0, 0, 0};
  for (int32_t i = 0; i < set.count; ++i) mean = mean + (set.weight(i) / sum) * set[i].translation;
  return mean;
}

// F. L. Markley, Y. Cheng, J. L. Crassidis and Y. Oshman, J. Guidance, Control, and Dynamics 30(4), 2007.
DaxStatus eigenMean(const WeightedPoses& set, Quaternion& mean) {
  double sum[4][4] = {};
  for (int32_t i = 0; i < set.count; ++i) {
    const Quaternion q = quaternionOf(set[i].rotation);
    const double elements[4] = {q.w, q.v.x, q.v.y, q.v.z};
    for (int row = 0; row < 4; ++row) {
      for (int col = 0; col < 4; ++col) sum[row][col] += set.weight(i) * elements[row] * elements[col];
    }
  }
  const EigenSystem<4> found = jacobiEigen(sum);
  constexpr double kGap = 1e-9;
  DAX_REQUIRE(found.values[3] - found.values[2] >= kGap * weightSum(set), DAX_STS_DEGENERATE);
  const auto& v = found.vectors[3];
  mean = unit(Quaternion{v[0], {v[1], v[2], v[3]}});
  return DAX_STS_OK;
}

// log(R^T R_i).
Vector3 turnTo(const Quaternion& from, const Matrix33& to) {
  return logarithmOf(canonical(unit(conjugate(from) * quaternionOf(to))));
}

// H. Karcher, Communications on Pure and Applied Mathematics 30, 1977.
Quaternion karcherMean(const WeightedPoses& set, Quaternion mean) {
  const double sum = weightSum(set);
  double last = INFINITY;
  for (int round = 0; round < 50; ++round) {
    Vector3 step{0, 0, 0};
    for (int32_t i = 0; i < set.count; ++i) step = step + (set.weight(i) / sum) * turnTo(mean, set[i].rotation);
    if (!(length(step) < last)) break;
    last = length(step);
    mean = unit(mean * exponentialOf(step));
  }
  return mean;
}

constexpr double kNear = 1e-9, kConverged = 1e-12;
constexpr int kMaxSteps = 500;

// The next step towards the geometric median of points at offset(i) from the estimate: Weiszfeld's, and where points
// lie at the estimate, that of Y. Vardi and C.-H. Zhang, PNAS 97(4), 2000.
template <class Offset>
Vector3 medianStep(const WeightedPoses& set, const Offset& offset) {
  Vector3 pull{0, 0, 0};
  double slack = 0, here = 0;
  for (int32_t i = 0; i < set.count; ++i) {
    const Vector3 to = offset(i);
    const double distance = length(to), weight = set.weight(i);
    if (distance < kNear) {
      here += weight;
    } else {
      pull = pull + (weight / distance) * to;
      slack += weight / distance;
    }
  }
  const double strength = length(pull);
  return strength > here ? ((1 - here / strength) / slack) * pull : Vector3{0, 0, 0};
}

Quaternion medianRotation(const WeightedPoses& set, Quaternion median) {
  for (int round = 0; round < kMaxSteps; ++round) {
    const Vector3 step = medianStep(set, [&](int32_t i) { return turnTo(median, set[i].rotation); });
    median = unit(median * exponentialOf(step));
    if (length(step) < kConverged) break;
  }
  return median;
}

Vector3 medianTranslation(const WeightedPoses& set) {
  const Vector3 mean = meanTranslation(set);
  double extent = 0;
  for (int32_t i = 0; i < set.count; ++i) extent = std::fmax(extent, safeLength(set[i].translation - mean));
  if (!(extent > 0)) return mean;
  Vector3 median{0, 0, 0};  // from the mean, in extents
  const auto offset = [&](int32_t i) {
    const Vector3 away = set[i].translation - mean;
    return Vector3{away.x / extent, away.y / extent, away.z / extent} - median;
  };
  for (int round = 0; round < kMaxSteps; ++round) {
    const Vector3 step = medianStep(set, offset);
    median = median + step;
    if (length(step) < kConverged) break;
  }
  return mean + extent * median;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_POSE_Mean_f64(const double* poses, const double* weights, int32_t n, double mean[16]) {
  WeightedPoses set{poses, weights, n};
  DAX_REQUIRE_OK(checkPoses(set, mean));
  Quaternion start;
  DAX_REQUIRE_OK(eigenMean(set, start));
  const Vector3 translation = meanTranslation(set);
  storePose({matrixOf(karcherMean(set, start)), translation}, mean);
  return DAX_STS_OK;
}

DaxStatus DAX3D_POSE_MeanRobust_f64(const double* poses, const double* weights, int32_t n, double mean[16]) {
  WeightedPoses set{poses, weights, n};
  DAX_REQUIRE_OK(checkPoses(set, mean));
  Quaternion start;
  DAX_REQUIRE_OK(eigenMean(set, start));
  const Vector3 translation = medianTranslation(set);
  storePose({matrixOf(medianRotation(set, karcherMean(set, start))), translation}, mean);
  return DAX_STS_OK;
}
