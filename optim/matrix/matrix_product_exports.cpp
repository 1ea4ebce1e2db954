#include "prmt/matrix_product.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/matrix/matrix_product.h"

namespace dax {
namespace {

template <class T>
DaxStatus checkedMul(PoolThreads on, const T* a, int32_t aStep, const T* b, int32_t bStep, T* c, int32_t cStep,
                     int32_t m, int32_t n, int32_t k) {
  DAX_REQUIRE(a && b && c, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= k && bStep >= n && cStep >= n, DAX_STS_BAD_STEP);
  return matrixMul<T>(on, {a, aStep, m, k}, {b, bStep, k, n}, {c, cStep, m, n});
}

template <class T>
DaxStatus checkedMulAtB(PoolThreads on, const T* a, int32_t aStep, const T* b, int32_t bStep, T* c, int32_t cStep,
                        int32_t m, int32_t n, int32_t k) {
  DAX_REQUIRE(a && b && c, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= m && bStep >= n && cStep >= n, DAX_STS_BAD_STEP);
  return matrixMulAtB<T>(on, {a, aStep, k, m}, {b, bStep, k, n}, {c, cStep, m, n});
}

template <class T>
DaxStatus checkedMulABt(PoolThreads on, const T* a, int32_t aStep, const T* b, int32_t bStep, T* c, int32_t cStep,
                        int32_t m, int32_t n, int32_t k) {
  DAX_REQUIRE(a && b && c, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n, k}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= k && bStep >= k && cStep >= n, DAX_STS_BAD_STEP);
  return matrixMulABt<T>(on, {a, aStep, m, k}, {b, bStep, n, k}, {c, cStep, m, n});
}

template <class T>
DaxStatus checkedGram(PoolThreads on, const T* a, int32_t aStep, T* c, int32_t cStep, int32_t m, int32_t n) {
  DAX_REQUIRE(a && c, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && cStep >= n, DAX_STS_BAD_STEP);
  return matrixGram<T>(on, {a, aStep, m, n}, {c, cStep, n, n});
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_MAT_Mul_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c, int32_t cStep,
                           int32_t m, int32_t n, int32_t k) {
  return dax::checkedMul<double>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_Mul_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                              int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMul<double>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_Mul_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c, int32_t cStep,
                           int32_t m, int32_t n, int32_t k) {
  return dax::checkedMul<float>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_Mul_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                              int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMul<float>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulAtB_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c, int32_t cStep,
                              int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulAtB<double>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulAtB_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                                 int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulAtB<double>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulAtB_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c, int32_t cStep,
                              int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulAtB<float>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulAtB_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                                 int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulAtB<float>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulABt_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c, int32_t cStep,
                              int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulABt<double>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulABt_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                                 int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulABt<double>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulABt_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c, int32_t cStep,
                              int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulABt<float>(dax::PoolThreads{}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_MulABt_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                                 int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k) {
  return dax::checkedMulABt<float>(dax::PoolThreads{pool, threads}, a, aStep, b, bStep, c, cStep, m, n, k);
}

DaxStatus PRMT_MAT_Gram_f64(const double* a, int32_t aStep, double* c, int32_t cStep, int32_t m, int32_t n) {
  return dax::checkedGram<double>(dax::PoolThreads{}, a, aStep, c, cStep, m, n);
}

DaxStatus PRMT_MAT_Gram_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, double* c, int32_t cStep,
                               int32_t m, int32_t n) {
  return dax::checkedGram<double>(dax::PoolThreads{pool, threads}, a, aStep, c, cStep, m, n);
}

DaxStatus PRMT_MAT_Gram_f32(const float* a, int32_t aStep, float* c, int32_t cStep, int32_t m, int32_t n) {
  return dax::checkedGram<float>(dax::PoolThreads{}, a, aStep, c, cStep, m, n);
}

DaxStatus PRMT_MAT_Gram_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, float* c, int32_t cStep,
                               int32_t m, int32_t n) {
  return dax::checkedGram<float>(dax::PoolThreads{pool, threads}, a, aStep, c, cStep, m, n);
}
