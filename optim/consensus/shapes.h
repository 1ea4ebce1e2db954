// Shapes among points: how a sample determines one, how far points lie from it, and how it is fitted to many. Points and shapes
// are relative to the points' middle.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "frame/numeric/elementary.h"
#include "geometry/eigen3.h"
#include "optim/consensus/shape_points.h"

namespace dax {

constexpr double kMinSine = 1e-9;     // of the angle in a sample that determines a shape
constexpr double kMinSpread = 1e-14;  // of the eigenvalues of a covariance, to the largest one

// Solves a x = b by elimination with pivots; x takes the place of b. False where a pivot is below kMinSine of the first.
template <int N>
bool solveSmall(double (&a)[N][N], double (&b)[N]) {
  double first = 0;
  for (int k = 0; k < N; ++k) {
    int pivot = k;
    for (int i = k + 1; i < N; ++i) {
      if (std::fabs(a[i][k]) > std::fabs(a[pivot][k])) pivot = i;
    }
    std::swap(a[k], a[pivot]), std::swap(b[k], b[pivot]);
    const double size = std::fabs(a[k][k]);
    first = std::max(first, size);
    if (!(size > kMinSine * first)) return false;
    for (int i = k + 1; i < N; ++i) {
      const double f = a[i][k] / a[k][k];
      for (int j = k; j < N; ++j) a[i][j] -= f * a[k][j];
      b[i] -= f * b[k];
    }
  }
  for (int k = N - 1; k >= 0; --k) {
    for (int j = k + 1; j < N; ++j) b[k] -= a[k][j] * b[j];
    b[k] /= a[k][k];
  }
  return true;
}

// The sign of a normal: its largest component is positive.
template <int D>
void orient(double* flat) {
  int largest = 0;
  for (int d = 1; d < D; ++d) {
    if (std::fabs(flat[d]) > std::fabs(flat[largest])) largest = d;
  }
  if (flat[largest] < 0) {
    for (int d = 0; d <= D; ++d) flat[d] = -flat[d];
  }
}

// Mean and covariance, times their number, of some points.
template <int D>
struct Scatter {
  template <class Points>
  Scatter(const Points& points, const int32_t* indices, int32_t count) {
    double p[D];
    for (int32_t i = 0; i < count; ++i) {
      points.get(indices[i], p);
      for (int d = 0; d < D; ++d) mean[d] += p[d];
    }
    for (double& m : mean) m /= count;
    for (int32_t i = 0; i < count; ++i) {
      points.get(indices[i], p);
      for (int d = 0; d < D; ++d) p[d] -= mean[d];
      for (int d = 0; d < D; ++d) {
        for (int e = d; e < D; ++e) sum[d][e] += p[d] * p[e];
      }
    }
  }
  double mean[D] = {};
  double sum[D][D] = {};
};

// A line in the plane or a plane in space: unit normal and offset.
template <int D>
struct Flat {
  static constexpr int kDimension = D, kSample = D, kDoubles = D + 1;

  static bool solve(const double (&p)[D][D], double* flat) {
    if constexpr (D == 2) {
      flat[0] = p[0][1] - p[1][1], flat[1] = p[1][0] - p[0][0];
    } else {
      const Vector3 a = load3(p[1]) - load3(p[0]), b = load3(p[2]) - load3(p[0]), normal = cross(a, b);
      if (!(length(normal) > kMinSine * (length(a) * length(b)))) return false;
      store3(normal, flat);
    }
    return normalise(flat, p[0]);
  }

  template <class V, class T>
  static V residual2(const T* flat, const V (&p)[D]) {
    V distance = p[0] * flat[0] + flat[D];
    for (int d = 1; d < D; ++d) distance += p[d] * flat[d];
    return distance * distance;
  }

  template <class Points>
  static bool fit(const Points& points, const int32_t* indices, int32_t count, double* flat) {
    const Scatter<D> scatter(points, indices, count);
    const auto& s = scatter.sum;
    if constexpr (D == 2) {
      const double across = 2 * s[0][1], along = s[0][0] - s[1][1];
      if (!(std::sqrt(across * across + along * along) > kMinSpread * (s[0][0] + s[1][1]))) return false;
      const SinCos direction = elementary::sinCos(0.5 * elementary::atan2(across, along));
      flat[0] = -direction.sine, flat[1] = direction.cosine;
    } else {
      const Symmetric3<double> covariance = {s[0][0], s[0][1], s[0][2], s[1][1], s[1][2], s[2][2]};
      const Eigenvalues3 values = eigenvalues(covariance);
      if (!(values.middle - values.smallest > kMinSpread * values.largest)) return false;
      store3(smallestAxis(covariance, values), flat);
    }
    return normalise(flat, scatter.mean);
  }

  // By the middle of the points.
  static void move(const double* by, double* flat) {
    for (int d = 0; d < D; ++d) flat[D] -= flat[d] * by[d];
  }

 private:
  // Of any length; through a point.
  static bool normalise(double* flat, const double* point) {
    double square = 0;
    for (int d = 0; d < D; ++d) square += flat[d] * flat[d];
    if (!(square > 0)) return false;
    flat[D] = 0;
    for (int d = 0; d < D; ++d) {
      flat[d] /= std::sqrt(square);
      flat[D] -= flat[d] * point[d];
    }
    orient<D>(flat);
    return true;
  }
};

// A circle in the plane or a sphere in space: centre and radius.
template <int D>
struct Round {
  static constexpr int kDimension = D, kSample = D + 1, kDoubles = D + 1;

  // 2 (p_i - p_0) (c - p_0) = |p_i - p_0|^2.
  static bool solve(const double (&p)[D + 1][D], double* round) {
    double a[D][D], b[D] = {}, square = 0;
    for (int i = 0; i < D; ++i) {
      for (int d = 0; d < D; ++d) {
        a[i][d] = p[i + 1][d] - p[0][d];
        b[i] += 0.5 * (a[i][d] * a[i][d]);
      }
    }
    if (!solveSmall(a, b)) return false;
    for (int d = 0; d < D; ++d) {
      round[d] = p[0][d] + b[d];
      square += b[d] * b[d];
    }
    round[D] = std::sqrt(square);
    return true;
  }

  template <class V, class T>
  static V residual2(const T* round, const V (&p)[D]) {
    V square = (p[0] - round[0]) * (p[0] - round[0]);
    for (int d = 1; d < D; ++d) square += (p[d] - round[d]) * (p[d] - round[d]);
    V distance;
    for (int32_t lane = 0; lane < ShapeLanes<T>::kCount; ++lane) distance[lane] = std::sqrt(square[lane]);
    distance -= round[D];
    return distance * distance;
  }

  // Gauss-Newton steps on the sum of squared distances, from the shape that is given.
  template <class Points>
  static bool fit(const Points& points, const int32_t* indices, int32_t count, double* round) {
    constexpr int kMaxSteps = 20;
    constexpr double kSmallStep = 1e-13;  // of the radius
    for (int k = 0; k < kMaxSteps; ++k) {
      double h[D + 1][D + 1] = {}, g[D + 1] = {}, largest = 0;
      for (int32_t i = 0; i < count; ++i) add(points, indices[i], round, h, g);
      for (int r = 1; r <= D; ++r) {
        for (int c = 0; c < r; ++c) h[r][c] = h[c][r];
      }
      if (!solveSmall(h, g)) return false;
      for (int d = 0; d <= D; ++d) {
        round[d] += g[d];
        largest = std::max(largest, std::fabs(g[d]));
      }
      if (!(largest > kSmallStep * round[D])) break;
    }
    return round[D] > 0;
  }

  static void move(const double* by, double* round) {
    for (int d = 0; d < D; ++d) round[d] += by[d];
  }

 private:
  // A point's share in the normal equations: the gradient of its distance is -(p - c) / |p - c|, -1.
  template <class Points>
  static void add(const Points& points, int32_t i, const double* round, double (&h)[D + 1][D + 1], double (&g)[D + 1]) {
    double p[D + 1], square = 0;
    points.get(i, p);
    for (int d = 0; d < D; ++d) {
      p[d] -= round[d];
      square += p[d] * p[d];
    }
    if (!(square > 0)) return;
    const double distance = std::sqrt(square);
    for (int d = 0; d < D; ++d) p[d] /= distance;
    p[D] = 1;
    for (int r = 0; r <= D; ++r) {
      for (int c = r; c <= D; ++c) h[r][c] += p[r] * p[c];
      g[r] += p[r] * (distance - round[D]);
    }
  }
};

}  // namespace dax
