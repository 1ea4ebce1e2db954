#include "optim/sparse/conjugate_gradients.h"

#include <algorithm>
#include <cmath>

#include "optim/dense/dense.h"
#include "optim/sparse/msp_product.h"

namespace dax {
namespace {

// Scalar product of two columns.
double columnProduct(const PrmtMsp& matrix, int32_t a, int32_t b) {
  double sum = 0;
  int64_t p = matrix.start[a], q = matrix.start[b];
  const int64_t pEnd = matrix.start[a + 1], qEnd = matrix.start[b + 1];
  while (p < pEnd && q < qEnd) {
    if (matrix.row[p] == matrix.row[q]) {
      sum += matrix.value[p++] * matrix.value[q++];
    } else if (matrix.row[p] < matrix.row[q]) {
      ++p;
    } else {
      ++q;
    }
  }
  return sum;
}

// x <- (L L^T)^-1 x as solveLower() and solveLowerTransposed() do it, for a size known beforehand.
template <int32_t kSize>
void solveBlock(const double* l, double* x) {
  for (int32_t j = 0; j < kSize; ++j) {
    x[j] /= l[j + j * kSize];
    for (int32_t i = j + 1; i < kSize; ++i) x[i] -= l[i + j * kSize] * x[j];
  }
  for (int32_t j = kSize - 1; j >= 0; --j) {
    double rest = x[j];
    for (int32_t i = j + 1; i < kSize; ++i) rest -= l[i + j * kSize] * x[i];
    x[j] = rest / l[j + j * kSize];
  }
}

// Points, planar poses and poses in space have sizes of their own.
void solveBlock(int32_t size, const double* l, ptrdiff_t ld, double* x) {
  if (size == ld && size == 1) return solveBlock<1>(l, x);
  if (size == ld && size == 3) return solveBlock<3>(l, x);
  if (size == ld && size == 6) return solveBlock<6>(l, x);
  solveLower(size, l, ld, x);
  solveLowerTransposed(size, l, ld, x);
}

// z <- M^-1 r, block by block.
void precondition(int32_t n, int32_t blockSize, const double* blocks, const double* r, double* z) {
  std::copy_n(r, n, z);
  for (int32_t j = 0; j < n; j += blockSize, blocks += blockSize * blockSize) {
    solveBlock(std::min(blockSize, n - j), blocks, blockSize, z + j);
  }
}

}  // namespace

PrmtCgWork takeCgWork(Arena& arena, int32_t n, int32_t m, int32_t blockSize) {
  const auto columns = unsignedOf(n), side = unsignedOf(blockSize);
  PrmtCgWork work{};
  for (double** each : {&work.residual, &work.direction, &work.scaled, &work.product}) {
    *each = arena.take<double>(columns);
  }
  work.image = arena.take<double>(unsignedOf(m));
  work.blocks = arena.take<double>((columns + side - 1) / side * side * side);
  return work;
}

bool factorBlocks(const PrmtMsp& jacobian, double lambda, int32_t blockSize, double* blocks) {
  for (int32_t first = 0; first < jacobian.cols; first += blockSize, blocks += blockSize * blockSize) {
    const int32_t size = std::min(blockSize, jacobian.cols - first);
    for (int32_t j = 0; j < size; ++j) {
      for (int32_t i = j; i < size; ++i) blocks[i + j * blockSize] = columnProduct(jacobian, first + i, first + j);
      blocks[j + j * blockSize] += lambda;
    }
    if (!factorPanel(size, size, blocks, blockSize)) return false;
  }
  return true;
}

}  // namespace dax

int32_t PRMT_MSP_SolveLinCG_LM_Process_f64(const PrmtMsp* jacobian, double lambda, const double* rhs,
                                           const PrmtCgParam* param, const PrmtCgWork* work, double* step) {
  const int32_t n = jacobian->cols;
  double* const r = work->residual;
  double* const p = work->direction;
  std::fill_n(step, n, 0.0);
  std::copy_n(rhs, n, r);
  const double goal = param->tolerance * PRM_MATRIX_VectorNorm_64f(rhs, n);
  dax::precondition(n, param->blockSize, work->blocks, r, work->scaled);
  std::copy_n(work->scaled, n, p);
  double slope = dax::dot(r, work->scaled, n);
  double lowered = 0;  // the value of the quadratic model at the step, negated
  for (int32_t k = 0; k < param->maxIterations && !(PRM_MATRIX_VectorNorm_64f(r, n) <= goal); ++k) {
    dax::multiply(*jacobian, p, work->image);
    dax::multiplyTransposed(*jacobian, work->image, work->product);
    for (int32_t i = 0; i < n; ++i) work->product[i] += lambda * p[i];
    const double curvature = dax::dot(p, work->product, n);
    if (!(curvature > 0)) return 0;
    const double length = slope / curvature;
    for (int32_t i = 0; i < n; ++i) {
      step[i] += length * p[i];
      r[i] -= length * work->product[i];
    }
    const double decrease = 0.5 * length * slope;
    lowered += decrease;
    if (param->modelTolerance > 0 && (k + 1) * decrease <= param->modelTolerance * lowered) break;
    dax::precondition(n, param->blockSize, work->blocks, r, work->scaled);
    const double following = dax::dot(r, work->scaled, n);
    const double turn = following / slope;
    slope = following;
    for (int32_t i = 0; i < n; ++i) p[i] = work->scaled[i] + turn * p[i];
  }
  return 1;
}
