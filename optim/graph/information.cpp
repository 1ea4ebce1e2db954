#include "optim/graph/information.h"

#include <algorithm>
#include <cmath>

#include "optim/factor/symmetric_eigen.h"
#include "optim/graph/edge_model.h"

namespace dax {

bool informationRoot(const double* upper, int32_t n, double* root) {
  double matrix[kMaxSize * kMaxSize], values[kMaxSize], work[3 * kMaxSize], largest = 0;
  for (int32_t i = 0; i < n * (n + 1) / 2; ++i) largest = std::max(largest, std::fabs(upper[i]));
  std::fill_n(root, n * n, 0.0);
  if (largest == 0) return true;
  int exponent = 0;
  std::frexp(largest, &exponent);
  // Even, so that its root is a power of two; magnitudes become less than 1 / 2.
  exponent += 2 + exponent % 2;
  const PowerOfTwo down(-exponent), half(exponent / 2);
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = i; j < n; ++j) matrix[i * n + j] = matrix[j * n + i] = down(*upper++);
  }
  if (!eigenSymmetric({matrix, n, n, n}, values, {root, n, n, n}, work)) return false;
  if (values[0] < -1e-8 * values[n - 1] || !(values[n - 1] > 0)) return false;
  for (int32_t i = 0; i < n; ++i) {
    const double size = values[i] > 0 ? half(std::sqrt(values[i])) : 0;
    for (int32_t j = 0; j < n; ++j) root[i * n + j] *= size;
  }
  return true;
}

int32_t rankOfRoot(const double* root, int32_t n) {
  double squares[kMaxSize] = {}, largest = 0;
  for (int32_t i = 0; i < n * n; ++i) squares[i / n] += root[i] * root[i];
  for (int32_t i = 0; i < n; ++i) largest = std::max(largest, squares[i]);
  int32_t rank = 0;
  for (int32_t i = 0; i < n; ++i) rank += squares[i] > 1e-12 * largest;
  return rank;
}

}  // namespace dax
