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
  DAX_REQUIRE(m >= n, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= k && xStep >= k, DAX_STS_BAD_STEP);
  return matrixLeastSquares<T>({a, aStep, m, n}, {b, bStep, m, k}, {x, xStep, n, k}, buffer);
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
