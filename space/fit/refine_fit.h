// Levenberg-Marquardt steps for shapes of a few numbers, over many points.
#pragma once

#include "space/fit/centred_points.h"

namespace dax {

// J^T J, J^T r and r^T r of rows, as sums: the upper triangle, then the right side, then the energy.
template <int n>
struct NormalSums {
  static constexpr int kCount = n * (n + 1) / 2 + n + 1;

  static void add(double (&sums)[kCount], const double (&row)[n], double residual) {
    int at = 0;
    for (int i = 0; i < n; ++i) {
      for (int j = i; j < n; ++j) sums[at++] += row[i] * row[j];
    }
    for (int i = 0; i < n; ++i) sums[at++] += row[i] * residual;
    sums[at] += residual * residual;
  }
};

// The step of (H + damping diag H) step = -g, by Cholesky's factors of the matrix scaled to a unit diagonal. False
// where a pivot is below `least`.
template <int n>
bool dampedStep(const double (&sums)[NormalSums<n>::kCount], double damping, double least, double (&step)[n]) {
  double scale[n], l[n][n] = {};
  for (int i = 0, at = 0; i < n; at += n - i, ++i) {
    if (!(sums[at] > 0)) return false;
    scale[i] = 1 / std::sqrt(sums[at]);
    for (int j = i; j < n; ++j) l[j][i] = sums[at + j - i];
  }
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j <= i; ++j) {
      double sum = l[i][j] * scale[i] * scale[j] + (i == j ? damping : 0);
      for (int k = 0; k < j; ++k) sum -= l[i][k] * l[j][k];
      if (i == j && !(sum > least)) return false;
      l[i][j] = i == j ? std::sqrt(sum) : sum / l[j][j];
    }
  }
  const double* const right = sums + n * (n + 1) / 2;
  for (int i = 0; i < n; ++i) {
    step[i] = -right[i] * scale[i];
    for (int k = 0; k < i; ++k) step[i] -= l[i][k] * step[k];
    step[i] /= l[i][i];
  }
  for (int i = n - 1; i >= 0; --i) {
    for (int k = i + 1; k < n; ++k) step[i] -= l[k][i] * step[k];
    step[i] /= l[i][i];
  }
  for (int i = 0; i < n; ++i) step[i] *= scale[i];
  return true;
}

// Shape: kNumbers; add(p, sums), the rows of one point; moved(step), the shape after a step. Points are centred. Moves
// `shape` to a least sum of squares and returns it; DEGENERATE where the shape is not determined there. A radius beyond
// 1e5 of the extent counts as none.
template <class Shape, class T>
DaxStatus refineShape(const CentredPoints<T>& points, Shape& shape, double& energy) {
  constexpr int n = Shape::kNumbers, kSums = NormalSums<n>::kCount;
  double sums[kSums] = {}, step[n];
  const auto evaluate = [&](const Shape& at, double(&to)[kSums]) {
    std::fill_n(to, kSums, 0.0);
    sumInBlocks(points.count, to, [&](int32_t i, double(&part)[kSums]) { at.add(points[i], part); });
  };
  evaluate(shape, sums);
  double damping = 1e-4;
  for (int round = 0; round < 100 && damping < 1e12; ++round) {
    if (!dampedStep<n>(sums, damping, 0, step)) {
      damping *= 10;
      continue;
    }
    const Shape next = shape.moved(step);
    double after[kSums];
    evaluate(next, after);
    if (!(after[kSums - 1] < sums[kSums - 1])) {
      // Of such a step rounding alone is left.
      if (std::all_of(step, step + n, [](double part) { return std::fabs(part) < 1e-11; })) break;
      damping *= 10;
      continue;
    }
    const double gain = sums[kSums - 1] - after[kSums - 1];
    shape = next;
    std::copy_n(after, kSums, sums);
    damping = std::max(damping / 10, 1e-15);
    if (gain < 1e-15 * after[kSums - 1]) break;
  }
  energy = sums[kSums - 1];
  DAX_REQUIRE(dampedStep<n>(sums, 0, 1e-13, step) && std::fabs(shape.radius) <= 1e5, DAX_STS_DEGENERATE);
  return DAX_STS_OK;
}

}  // namespace dax
