#include "prmt/matrix_function.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/matrix/matrix_function.h"

namespace dax {
namespace {

template <class T>
DaxStatus checkedExp(const T* a, int32_t aStep, T* result, int32_t resultStep, int32_t n, void* buffer) {
  DAX_REQUIRE(a && result && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && resultStep >= n, DAX_STS_BAD_STEP);
  return matrixExp<T>({a, aStep, n, n}, {result, resultStep, n, n}, buffer);
}

template <class T>
DaxStatus checkedLog(const T* a, int32_t aStep, T* result, int32_t resultStep, int32_t n, void* buffer) {
  DAX_REQUIRE(a && result && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && resultStep >= n, DAX_STS_BAD_STEP);
  return matrixLog<T>({a, aStep, n, n}, {result, resultStep, n, n}, buffer);
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_MAT_Exp_f64(const double* a, int32_t aStep, double* result, int32_t resultStep, int32_t n,
                           void* buffer) {
  return dax::checkedExp<double>(a, aStep, result, resultStep, n, buffer);
}

DaxStatus PRMT_MAT_Exp_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 7 * int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Exp_f32(const float* a, int32_t aStep, float* result, int32_t resultStep, int32_t n, void* buffer) {
  return dax::checkedExp<float>(a, aStep, result, resultStep, n, buffer);
}

DaxStatus PRMT_MAT_Exp_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 7 * int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Log_f64(const double* a, int32_t aStep, double* result, int32_t resultStep, int32_t n,
                           void* buffer) {
  return dax::checkedLog<double>(a, aStep, result, resultStep, n, buffer);
}

DaxStatus PRMT_MAT_Log_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 5 * int64_t{n} * int64_t{n} + 5 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Log_f32(const float* a, int32_t aStep, float* result, int32_t resultStep, int32_t n, void* buffer) {
  return dax::checkedLog<float>(a, aStep, result, resultStep, n, buffer);
}

DaxStatus PRMT_MAT_Log_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 5 * int64_t{n} * int64_t{n} + 5 * int64_t{n}; }, bytes);
}
