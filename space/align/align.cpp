#include "dax3d/align.h"

#include <algorithm>

#include "frame/check.h"
#include "geometry/finite.h"
#include "geometry/proper_svd3.h"
#include "space/align/pair_sums.h"

namespace dax {
namespace {

// A power of two that brings a magnitude into [1/2, 1); 1 for 0.
double factorFor(double magnitude) {
  int exponent = 0;
  std::frexp(magnitude, &exponent);
  // The reciprocal of the least numbers would be infinite.
  return std::ldexp(1.0, std::min(-exponent, 1000));
}

bool isTame(double square) {
  return square > 1e-200 && square < 1e200;
}

// Moments of coordinates and weights that may be scaled by powers of two: of those that squares cannot be told of, or
// that are not finite.
template <class T>
DaxStatus safeMoments(PairedPoints<T>& points, bool hasScale, PairMoments& moments) {
  moments = pairMoments(points);
  if (isTame(moments.weight) && isTame(moments.fromSquare) && isTame(moments.toSquare)) return DAX_STS_OK;
  const int64_t numbers = int64_t{3} * points.count;
  DAX_REQUIRE(areFinite(points.from, numbers) && areFinite(points.to, numbers), DAX_STS_DATA_RANGE);
  double from = largestMagnitude(points.from, numbers), to = largestMagnitude(points.to, numbers);
  if (!hasScale) from = to = std::max(from, to);
  points.fromFactor = factorFor(from);
  points.toFactor = factorFor(to);
  if (points.weights) {
    DAX_REQUIRE(areFinite(points.weights, points.count), DAX_STS_DATA_RANGE);
    points.weightFactor = factorFor(largestMagnitude(points.weights, points.count));
  }
  moments = pairMoments(points);
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkWeights(const PairedPoints<T>& points) {
  if (!points.weights) return DAX_STS_OK;
  T least = 0, largest = 0;
  for (int32_t i = 0; i < points.count; ++i) {
    least = std::min(least, points.weights[i]);
    largest = std::max(largest, points.weights[i]);
  }
  DAX_REQUIRE(least >= 0 && largest > 0, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// U and V of the cross-covariance, and what is left of its three values: their sum.
struct BestRotation {
  Matrix33 rotation;
  double gain;
  bool isMirrored;
};

DaxStatus bestRotation(const Matrix33& cross, BestRotation& best) {
  double largest = 0;
  for (const Vector3& row : cross.rows) {
    largest = std::max({largest, std::fabs(row.x), std::fabs(row.y), std::fabs(row.z)});
  }
  DAX_REQUIRE(largest > 0, DAX_STS_DEGENERATE);
  const double factor = factorFor(largest);
  const ProperSvd3 svd = properSvd({{factor * cross.rows[0], factor * cross.rows[1], factor * cross.rows[2]}});
  const double tolerance = 1e-9 * svd.values[0];
  DAX_REQUIRE(svd.values[1] > tolerance && svd.values[1] + svd.values[2] > tolerance, DAX_STS_DEGENERATE);
  const Matrix33 u{{svd.u[0], svd.u[1], svd.u[2]}}, v{{svd.v[0], svd.v[1], svd.v[2]}};
  best = {transposed(v) * u, (svd.values[0] + svd.values[1] + svd.values[2]) / factor, svd.values[2] < -tolerance};
  return DAX_STS_OK;
}

template <class T>
DaxStatus align(PairedPoints<T> points, bool hasScale, Dax3dAlignment* alignment) {
  DAX_REQUIRE(points.from && points.to && alignment, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(points.count >= 3, DAX_STS_BAD_PARAM);
  PairMoments m;
  DAX_REQUIRE_OK(safeMoments(points, hasScale, m));
  DAX_REQUIRE_OK(checkWeights(points));
  DAX_REQUIRE(m.fromSquare > 0 && m.toSquare > 0, DAX_STS_DEGENERATE);
  BestRotation best;
  DAX_REQUIRE_OK(bestRotation(m.cross, best));
  const double scale = hasScale ? best.gain / m.fromSquare : 1;
  const double left = hasScale ? m.toSquare - scale * best.gain : m.toSquare + m.fromSquare - 2 * best.gain;
  const Vector3 shift = m.toMean - scale * (best.rotation * m.fromMean);
  // In the caller's units.
  const Vector3 translation{shift.x / points.toFactor, shift.y / points.toFactor, shift.z / points.toFactor};
  const double wholeScale = scale * points.fromFactor / points.toFactor;
  const double rms = std::sqrt(std::max(left, 0.0) / m.weight) / points.toFactor;
  DAX_REQUIRE(isFinite(translation) && wholeScale > 0 && isFinite(Vector3{wholeScale, rms, 0}), DAX_STS_DATA_RANGE);
  *alignment = {{}, wholeScale, rms, best.isMirrored, 0};
  storeMatrix33(best.rotation, alignment->pose, 4);
  const double t[3] = {translation.x, translation.y, translation.z};
  for (int i = 0; i < 3; ++i) alignment->pose[4 * i + 3] = t[i];
  alignment->pose[15] = 1;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_ALIGN_Rigid_f64(const double* from, const double* to, const double* weights, int32_t n,
                                Dax3dAlignment* alignment) {
  return align<double>({from, to, weights, n}, false, alignment);
}
DaxStatus DAX3D_ALIGN_Rigid_f32(const float* from, const float* to, const float* weights, int32_t n,
                                Dax3dAlignment* alignment) {
  return align<float>({from, to, weights, n}, false, alignment);
}
DaxStatus DAX3D_ALIGN_Similarity_f64(const double* from, const double* to, const double* weights, int32_t n,
                                     Dax3dAlignment* alignment) {
  return align<double>({from, to, weights, n}, true, alignment);
}
DaxStatus DAX3D_ALIGN_Similarity_f32(const float* from, const float* to, const float* weights, int32_t n,
                                     Dax3dAlignment* alignment) {
  return align<float>({from, to, weights, n}, true, alignment);
}
