#include "prmt/matrix_solve.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/matrix/matrix_solve.h"

namespace dax {
namespace {

template <class T>
DaxStatus checkedSolve(const T* a, int32_t aStep, const T* b, int32_t bStep, T* x, int32_t xStep, int32_t n, int32_t k,
                       void* buffer) {
  DAX_REQUIRE(a && b && x && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= k && xStep >= k, DAX_STS_BAD_STEP);
  return matrixSolve<T>({a, aStep, n, n}, {b, bStep, n, k}, {x, xStep, n, k}, buffer);
}

template <class T>
DaxStatus checkedInverse(const T* a, int32_t aStep, T* inverse, int32_t inverseStep, int32_t n, void* buffer) {
  DAX_REQUIRE(a && inverse && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && inverseStep >= n, DAX_STS_BAD_STEP);
  return matrixInverse<T>({a, aStep, n, n}, {inverse, inverseStep, n, n}, buffer);
}

template <class T>
DaxStatus checkedDet(const T* a, int32_t aStep, T* mantissa, int32_t* exponent, int32_t n, void* buffer) {
  DAX_REQUIRE(a && mantissa && exponent && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n, DAX_STS_BAD_STEP);
  return matrixDet<T>({a, aStep, n, n}, mantissa, exponent, buffer);
}

template <class T>
DaxStatus checkedRcond(const T* a, int32_t aStep, T* rcond, int32_t n, void* buffer) {
  DAX_REQUIRE(a && rcond && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n, DAX_STS_BAD_STEP);
  return matrixRcond<T>({a, aStep, n, n}, rcond, buffer);
}

template <class T>
DaxStatus checkedLeastSquares(const T* a, int32_t aStep, const T* b, int32_t bStep, T* x, int32_t xStep, int32_t m,
                              int32_t n, int32_t k, void* buffer) {
  DAX_REQUIRE(a && b && x && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= k && xStep >= k, DAX_STS_BAD_STEP);
  DAX_REQUIRE(m >= n, DAX_STS_BAD_SIZE);
  return matrixLeastSquares<T>({a, aStep, m, n}, {b, bStep, m, k}, {x, xStep, n, k}, buffer);
}

template <class T>
DaxStatus checkedWeightedLS(const T* a, int32_t aStep, const T* weights, const T* b, int32_t bStep, T* x, int32_t xStep,
                            int32_t m, int32_t n, int32_t k, void* buffer) {
  DAX_REQUIRE(a && weights && b && x && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= k && xStep >= k, DAX_STS_BAD_STEP);
  DAX_REQUIRE(m >= n, DAX_STS_BAD_SIZE);
  return matrixWeightedLS<T>({a, aStep, m, n}, weights, {b, bStep, m, k}, {x, xStep, n, k}, buffer);
}

template <class T>
DaxStatus checkedConstrainedLS(const T* a, int32_t aStep, const T* b, const T* c, int32_t cStep, const T* d, T* x,
                               int32_t m, int32_t n, int32_t p, void* buffer) {
  DAX_REQUIRE(a && b && c && d && x && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, p}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && cStep >= n, DAX_STS_BAD_STEP);
  DAX_REQUIRE(p <= n && m + p >= n, DAX_STS_BAD_SIZE);
  return matrixConstrainedLS<T>({a, aStep, m, n}, b, {c, cStep, p, n}, d, x, buffer);
}

template <class T>
DaxStatus checkedMinNorm(const T* a, int32_t aStep, const T* b, int32_t bStep, T* x, int32_t xStep, int32_t* rank,
                         int32_t m, int32_t n, int32_t k, void* buffer) {
  DAX_REQUIRE(a && b && x && rank && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= k && xStep >= k, DAX_STS_BAD_STEP);
  return matrixMinNorm<T>({a, aStep, m, n}, {b, bStep, m, k}, {x, xStep, n, k}, rank, buffer);
}

template <class T>
DaxStatus checkedPInv(const T* a, int32_t aStep, T* inverse, int32_t inverseStep, int32_t* rank, int32_t m, int32_t n,
                      void* buffer) {
  DAX_REQUIRE(a && inverse && rank && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && inverseStep >= m, DAX_STS_BAD_STEP);
  return matrixPInv<T>({a, aStep, m, n}, {inverse, inverseStep, n, m}, rank, buffer);
}

template <class T>
DaxStatus checkedHomogeneous(const T* a, int32_t aStep, T* x, T* residual, T* gap, int32_t m, int32_t n, void* buffer) {
  DAX_REQUIRE(a && x && residual && gap && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n, DAX_STS_BAD_STEP);
  return matrixHomogeneous<T>({a, aStep, m, n}, x, residual, gap, buffer);
}

template <class T>
DaxStatus checkedNullSpace(const T* a, int32_t aStep, T* basis, int32_t basisStep, int32_t* dimension, T* gap,
                           int32_t m, int32_t n, void* buffer) {
  DAX_REQUIRE(a && basis && dimension && gap && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && basisStep >= n, DAX_STS_BAD_STEP);
  return matrixNullSpace<T>({a, aStep, m, n}, {basis, basisStep, n, n}, dimension, gap, buffer);
}

template <class T>
DaxStatus checkedTotalLS(const T* a, int32_t aStep, const T* b, T* x, T* residual, int32_t m, int32_t n, void* buffer) {
  DAX_REQUIRE(a && b && x && residual && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n, DAX_STS_BAD_STEP);
  DAX_REQUIRE(m >= n && n < 4096, DAX_STS_BAD_SIZE);
  return matrixTotalLS<T>({a, aStep, m, n}, b, x, residual, buffer);
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_MAT_Solve_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x, int32_t xStep,
                             int32_t n, int32_t k, void* buffer) {
  return dax::checkedSolve<double>(a, aStep, b, bStep, x, xStep, n, k, buffer);
}

DaxStatus PRMT_MAT_Solve_BufferSize_f64(int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {n, k}, [&] { return int64_t{n} * int64_t{n} + int64_t{n} * int64_t{k} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Solve_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x, int32_t xStep,
                             int32_t n, int32_t k, void* buffer) {
  return dax::checkedSolve<float>(a, aStep, b, bStep, x, xStep, n, k, buffer);
}

DaxStatus PRMT_MAT_Solve_BufferSize_f32(int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {n, k}, [&] { return int64_t{n} * int64_t{n} + int64_t{n} * int64_t{k} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Inverse_f64(const double* a, int32_t aStep, double* inverse, int32_t inverseStep, int32_t n,
                               void* buffer) {
  return dax::checkedInverse<double>(a, aStep, inverse, inverseStep, n, buffer);
}

DaxStatus PRMT_MAT_Inverse_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 2 * int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Inverse_f32(const float* a, int32_t aStep, float* inverse, int32_t inverseStep, int32_t n,
                               void* buffer) {
  return dax::checkedInverse<float>(a, aStep, inverse, inverseStep, n, buffer);
}

DaxStatus PRMT_MAT_Inverse_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 2 * int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Det_f64(const double* a, int32_t aStep, double* mantissa, int32_t* exponent, int32_t n,
                           void* buffer) {
  return dax::checkedDet<double>(a, aStep, mantissa, exponent, n, buffer);
}

DaxStatus PRMT_MAT_Det_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Det_f32(const float* a, int32_t aStep, float* mantissa, int32_t* exponent, int32_t n, void* buffer) {
  return dax::checkedDet<float>(a, aStep, mantissa, exponent, n, buffer);
}

DaxStatus PRMT_MAT_Det_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Rcond_f64(const double* a, int32_t aStep, double* rcond, int32_t n, void* buffer) {
  return dax::checkedRcond<double>(a, aStep, rcond, n, buffer);
}

DaxStatus PRMT_MAT_Rcond_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 3 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Rcond_f32(const float* a, int32_t aStep, float* rcond, int32_t n, void* buffer) {
  return dax::checkedRcond<float>(a, aStep, rcond, n, buffer);
}

DaxStatus PRMT_MAT_Rcond_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 3 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_LeastSquares_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x,
                                    int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedLeastSquares<double>(a, aStep, b, bStep, x, xStep, m, n, k, buffer);
}

DaxStatus PRMT_MAT_LeastSquares_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k}, [&] { return int64_t{m} * int64_t{n} + int64_t{m} * int64_t{k} + 5 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_LeastSquares_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x,
                                    int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedLeastSquares<float>(a, aStep, b, bStep, x, xStep, m, n, k, buffer);
}

DaxStatus PRMT_MAT_LeastSquares_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k}, [&] { return int64_t{m} * int64_t{n} + int64_t{m} * int64_t{k} + 5 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_WeightedLS_f64(const double* a, int32_t aStep, const double* weights, const double* b, int32_t bStep,
                                  double* x, int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedWeightedLS<double>(a, aStep, weights, b, bStep, x, xStep, m, n, k, buffer);
}

DaxStatus PRMT_MAT_WeightedLS_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k}, [&] { return int64_t{m} * int64_t{n} + int64_t{m} * int64_t{k} + 2 * int64_t{m} + 5 * int64_t{n}; },
      bytes);
}

DaxStatus PRMT_MAT_WeightedLS_f32(const float* a, int32_t aStep, const float* weights, const float* b, int32_t bStep,
                                  float* x, int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedWeightedLS<float>(a, aStep, weights, b, bStep, x, xStep, m, n, k, buffer);
}

DaxStatus PRMT_MAT_WeightedLS_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k}, [&] { return int64_t{m} * int64_t{n} + int64_t{m} * int64_t{k} + 2 * int64_t{m} + 5 * int64_t{n}; },
      bytes);
}

DaxStatus PRMT_MAT_ConstrainedLS_f64(const double* a, int32_t aStep, const double* b, const double* c, int32_t cStep,
                                     const double* d, double* x, int32_t m, int32_t n, int32_t p, void* buffer) {
  return dax::checkedConstrainedLS<double>(a, aStep, b, c, cStep, d, x, m, n, p, buffer);
}

DaxStatus PRMT_MAT_ConstrainedLS_BufferSize_f64(int32_t m, int32_t n, int32_t p, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, p},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{p} * int64_t{n} + int64_t{m} * int64_t{n} + 2 * int64_t{m} +
               2 * int64_t{p} + 9 * int64_t{n};
      },
      bytes);
}

DaxStatus PRMT_MAT_ConstrainedLS_f32(const float* a, int32_t aStep, const float* b, const float* c, int32_t cStep,
                                     const float* d, float* x, int32_t m, int32_t n, int32_t p, void* buffer) {
  return dax::checkedConstrainedLS<float>(a, aStep, b, c, cStep, d, x, m, n, p, buffer);
}

DaxStatus PRMT_MAT_ConstrainedLS_BufferSize_f32(int32_t m, int32_t n, int32_t p, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, p},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{p} * int64_t{n} + int64_t{m} * int64_t{n} + 2 * int64_t{m} +
               2 * int64_t{p} + 9 * int64_t{n};
      },
      bytes);
}

DaxStatus PRMT_MAT_MinNorm_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x, int32_t xStep,
                               int32_t* rank, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedMinNorm<double>(a, aStep, b, bStep, x, xStep, rank, m, n, k, buffer);
}

DaxStatus PRMT_MAT_MinNorm_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k},
      [&] {
        return 2 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               6 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2 +
               int64_t{k} * (int64_t{m} + int64_t{n} + std::min(int64_t{m}, int64_t{n}));
      },
      bytes);
}

DaxStatus PRMT_MAT_MinNorm_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x, int32_t xStep,
                               int32_t* rank, int32_t m, int32_t n, int32_t k, void* buffer) {
  return dax::checkedMinNorm<float>(a, aStep, b, bStep, x, xStep, rank, m, n, k, buffer);
}

DaxStatus PRMT_MAT_MinNorm_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n, k},
      [&] {
        return 2 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               6 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2 +
               int64_t{k} * (int64_t{m} + int64_t{n} + std::min(int64_t{m}, int64_t{n}));
      },
      bytes);
}

DaxStatus PRMT_MAT_PInv_f64(const double* a, int32_t aStep, double* inverse, int32_t inverseStep, int32_t* rank,
                            int32_t m, int32_t n, void* buffer) {
  return dax::checkedPInv<double>(a, aStep, inverse, inverseStep, rank, m, n, buffer);
}

DaxStatus PRMT_MAT_PInv_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 3 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               6 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_PInv_f32(const float* a, int32_t aStep, float* inverse, int32_t inverseStep, int32_t* rank,
                            int32_t m, int32_t n, void* buffer) {
  return dax::checkedPInv<float>(a, aStep, inverse, inverseStep, rank, m, n, buffer);
}

DaxStatus PRMT_MAT_PInv_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 3 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               6 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_Homogeneous_f64(const double* a, int32_t aStep, double* x, double* residual, double* gap, int32_t m,
                                   int32_t n, void* buffer) {
  return dax::checkedHomogeneous<double>(a, aStep, x, residual, gap, m, n, buffer);
}

DaxStatus PRMT_MAT_Homogeneous_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * std::max(int64_t{m}, int64_t{n}) * int64_t{n} + 3 * int64_t{n} * int64_t{n} + 6 * int64_t{n} +
               2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_Homogeneous_f32(const float* a, int32_t aStep, float* x, float* residual, float* gap, int32_t m,
                                   int32_t n, void* buffer) {
  return dax::checkedHomogeneous<float>(a, aStep, x, residual, gap, m, n, buffer);
}

DaxStatus PRMT_MAT_Homogeneous_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * std::max(int64_t{m}, int64_t{n}) * int64_t{n} + 3 * int64_t{n} * int64_t{n} + 6 * int64_t{n} +
               2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_NullSpace_f64(const double* a, int32_t aStep, double* basis, int32_t basisStep, int32_t* dimension,
                                 double* gap, int32_t m, int32_t n, void* buffer) {
  return dax::checkedNullSpace<double>(a, aStep, basis, basisStep, dimension, gap, m, n, buffer);
}

DaxStatus PRMT_MAT_NullSpace_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * std::max(int64_t{m}, int64_t{n}) * int64_t{n} + 3 * int64_t{n} * int64_t{n} + 6 * int64_t{n} +
               2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_NullSpace_f32(const float* a, int32_t aStep, float* basis, int32_t basisStep, int32_t* dimension,
                                 float* gap, int32_t m, int32_t n, void* buffer) {
  return dax::checkedNullSpace<float>(a, aStep, basis, basisStep, dimension, gap, m, n, buffer);
}

DaxStatus PRMT_MAT_NullSpace_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * std::max(int64_t{m}, int64_t{n}) * int64_t{n} + 3 * int64_t{n} * int64_t{n} + 6 * int64_t{n} +
               2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_TotalLS_f64(const double* a, int32_t aStep, const double* b, double* x, double* residual, int32_t m,
                               int32_t n, void* buffer) {
  return dax::checkedTotalLS<double>(a, aStep, b, x, residual, m, n, buffer);
}

DaxStatus PRMT_MAT_TotalLS_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * (int64_t{n} + 1) + 2 * std::max(int64_t{m}, int64_t{n} + 1) * (int64_t{n} + 1) +
               3 * (int64_t{n} + 1) * (int64_t{n} + 1) + 6 * (int64_t{n} + 1) +
               2 * std::max(int64_t{m}, int64_t{n} + 1) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_TotalLS_f32(const float* a, int32_t aStep, const float* b, float* x, float* residual, int32_t m,
                               int32_t n, void* buffer) {
  return dax::checkedTotalLS<float>(a, aStep, b, x, residual, m, n, buffer);
}

DaxStatus PRMT_MAT_TotalLS_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * (int64_t{n} + 1) + 2 * std::max(int64_t{m}, int64_t{n} + 1) * (int64_t{n} + 1) +
               3 * (int64_t{n} + 1) * (int64_t{n} + 1) + 6 * (int64_t{n} + 1) +
               2 * std::max(int64_t{m}, int64_t{n} + 1) + 2;
      },
      bytes);
}
