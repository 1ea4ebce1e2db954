#include "prmt/matrix_factor.h"

#include <algorithm>

#include "frame/check.h"
#include "optim/matrix/matrix_factor.h"

namespace dax {
namespace {

template <class T>
DaxStatus checkedLU(const T* a, int32_t aStep, T* lu, int32_t luStep, int32_t* pivots, int32_t n, void* buffer) {
  DAX_REQUIRE(a && lu && pivots && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && luStep >= n, DAX_STS_BAD_STEP);
  return matrixLU<T>({a, aStep, n, n}, {lu, luStep, n, n}, pivots, buffer);
}

template <class T>
DaxStatus checkedCholesky(const T* a, int32_t aStep, T* l, int32_t lStep, int32_t n, void* buffer) {
  DAX_REQUIRE(a && l && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && lStep >= n, DAX_STS_BAD_STEP);
  return matrixCholesky<T>({a, aStep, n, n}, {l, lStep, n, n}, buffer);
}

template <class T>
DaxStatus checkedLDLT(const T* a, int32_t aStep, T* l, int32_t lStep, T* d, T* e, int32_t* pivots, int32_t n,
                      void* buffer) {
  DAX_REQUIRE(a && l && d && e && pivots && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && lStep >= n, DAX_STS_BAD_STEP);
  return matrixLDLT<T>({a, aStep, n, n}, {l, lStep, n, n}, d, e, pivots, buffer);
}

template <class T>
DaxStatus checkedQR(const T* a, int32_t aStep, T* q, int32_t qStep, T* r, int32_t rStep, int32_t m, int32_t n,
                    void* buffer) {
  DAX_REQUIRE(a && r && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && (!q || qStep >= std::min(m, n)) && rStep >= n, DAX_STS_BAD_STEP);
  return matrixQR<T>({a, aStep, m, n}, {q, qStep, m, std::min(m, n)}, {r, rStep, std::min(m, n), n}, buffer);
}

template <class T>
DaxStatus checkedQRPivot(const T* a, int32_t aStep, T* q, int32_t qStep, T* r, int32_t rStep, int32_t* pivots,
                         int32_t* rank, int32_t m, int32_t n, void* buffer) {
  DAX_REQUIRE(a && r && pivots && rank && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && (!q || qStep >= std::min(m, n)) && rStep >= n, DAX_STS_BAD_STEP);
  return matrixQRPivot<T>({a, aStep, m, n}, {q, qStep, m, std::min(m, n)}, {r, rStep, std::min(m, n), n}, pivots, rank,
                          buffer);
}

template <class T>
DaxStatus checkedSVD(const T* a, int32_t aStep, T* u, int32_t uStep, T* s, T* v, int32_t vStep, int32_t m, int32_t n,
                     int32_t accuracy, void* buffer) {
  DAX_REQUIRE(a && s && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({m, n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && (!u || uStep >= std::min(m, n)) && (!v || vStep >= std::min(m, n)), DAX_STS_BAD_STEP);
  return matrixSVD<T>({a, aStep, m, n}, {u, uStep, m, std::min(m, n)}, s, {v, vStep, n, std::min(m, n)}, accuracy,
                      buffer);
}

template <class T>
DaxStatus checkedEigSym(const T* a, int32_t aStep, T* values, T* vectors, int32_t vectorsStep, int32_t n,
                        void* buffer) {
  DAX_REQUIRE(a && values && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && (!vectors || vectorsStep >= n), DAX_STS_BAD_STEP);
  return matrixEigSym<T>({a, aStep, n, n}, values, {vectors, vectorsStep, n, n}, buffer);
}

template <class T>
DaxStatus checkedEigSymGen(const T* a, int32_t aStep, const T* b, int32_t bStep, T* values, T* vectors,
                           int32_t vectorsStep, int32_t n, void* buffer) {
  DAX_REQUIRE(a && b && values && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n && bStep >= n && (!vectors || vectorsStep >= n), DAX_STS_BAD_STEP);
  return matrixEigSymGen<T>({a, aStep, n, n}, {b, bStep, n, n}, values, {vectors, vectorsStep, n, n}, buffer);
}

template <class T>
DaxStatus checkedEigGeneral(const T* a, int32_t aStep, T* real, T* imaginary, int32_t n, void* buffer) {
  DAX_REQUIRE(a && real && imaginary && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areSides({n}), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(aStep >= n, DAX_STS_BAD_STEP);
  return matrixEigGeneral<T>({a, aStep, n, n}, real, imaginary, buffer);
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_MAT_LU_f64(const double* a, int32_t aStep, double* lu, int32_t luStep, int32_t* pivots, int32_t n,
                          void* buffer) {
  return dax::checkedLU<double>(a, aStep, lu, luStep, pivots, n, buffer);
}

DaxStatus PRMT_MAT_LU_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_LU_f32(const float* a, int32_t aStep, float* lu, int32_t luStep, int32_t* pivots, int32_t n,
                          void* buffer) {
  return dax::checkedLU<float>(a, aStep, lu, luStep, pivots, n, buffer);
}

DaxStatus PRMT_MAT_LU_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Cholesky_f64(const double* a, int32_t aStep, double* l, int32_t lStep, int32_t n, void* buffer) {
  return dax::checkedCholesky<double>(a, aStep, l, lStep, n, buffer);
}

DaxStatus PRMT_MAT_Cholesky_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_Cholesky_f32(const float* a, int32_t aStep, float* l, int32_t lStep, int32_t n, void* buffer) {
  return dax::checkedCholesky<float>(a, aStep, l, lStep, n, buffer);
}

DaxStatus PRMT_MAT_Cholesky_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_LDLT_f64(const double* a, int32_t aStep, double* l, int32_t lStep, double* d, double* e,
                            int32_t* pivots, int32_t n, void* buffer) {
  return dax::checkedLDLT<double>(a, aStep, l, lStep, d, e, pivots, n, buffer);
}

DaxStatus PRMT_MAT_LDLT_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 2 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_LDLT_f32(const float* a, int32_t aStep, float* l, int32_t lStep, float* d, float* e, int32_t* pivots,
                            int32_t n, void* buffer) {
  return dax::checkedLDLT<float>(a, aStep, l, lStep, d, e, pivots, n, buffer);
}

DaxStatus PRMT_MAT_LDLT_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 2 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_QR_f64(const double* a, int32_t aStep, double* q, int32_t qStep, double* r, int32_t rStep, int32_t m,
                          int32_t n, void* buffer) {
  return dax::checkedQR<double>(a, aStep, q, qStep, r, rStep, m, n, buffer);
}

DaxStatus PRMT_MAT_QR_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{m} * std::min(int64_t{m}, int64_t{n}) +
               2 * std::min(int64_t{m}, int64_t{n}) + 33 * int64_t{n} + 2048;
      },
      bytes);
}

DaxStatus PRMT_MAT_QR_f32(const float* a, int32_t aStep, float* q, int32_t qStep, float* r, int32_t rStep, int32_t m,
                          int32_t n, void* buffer) {
  return dax::checkedQR<float>(a, aStep, q, qStep, r, rStep, m, n, buffer);
}

DaxStatus PRMT_MAT_QR_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{m} * std::min(int64_t{m}, int64_t{n}) +
               2 * std::min(int64_t{m}, int64_t{n}) + 33 * int64_t{n} + 2048;
      },
      bytes);
}

DaxStatus PRMT_MAT_QRPivot_f64(const double* a, int32_t aStep, double* q, int32_t qStep, double* r, int32_t rStep,
                               int32_t* pivots, int32_t* rank, int32_t m, int32_t n, void* buffer) {
  return dax::checkedQRPivot<double>(a, aStep, q, qStep, r, rStep, pivots, rank, m, n, buffer);
}

DaxStatus PRMT_MAT_QRPivot_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{m} * std::min(int64_t{m}, int64_t{n}) +
               2 * std::min(int64_t{m}, int64_t{n}) + 3 * int64_t{n};
      },
      bytes);
}

DaxStatus PRMT_MAT_QRPivot_f32(const float* a, int32_t aStep, float* q, int32_t qStep, float* r, int32_t rStep,
                               int32_t* pivots, int32_t* rank, int32_t m, int32_t n, void* buffer) {
  return dax::checkedQRPivot<float>(a, aStep, q, qStep, r, rStep, pivots, rank, m, n, buffer);
}

DaxStatus PRMT_MAT_QRPivot_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return int64_t{m} * int64_t{n} + int64_t{m} * std::min(int64_t{m}, int64_t{n}) +
               2 * std::min(int64_t{m}, int64_t{n}) + 3 * int64_t{n};
      },
      bytes);
}

DaxStatus PRMT_MAT_SVD_f64(const double* a, int32_t aStep, double* u, int32_t uStep, double* s, double* v,
                           int32_t vStep, int32_t m, int32_t n, int32_t accuracy, void* buffer) {
  return dax::checkedSVD<double>(a, aStep, u, uStep, s, v, vStep, m, n, accuracy, buffer);
}

DaxStatus PRMT_MAT_SVD_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               7 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_SVD_f32(const float* a, int32_t aStep, float* u, int32_t uStep, float* s, float* v, int32_t vStep,
                           int32_t m, int32_t n, int32_t accuracy, void* buffer) {
  return dax::checkedSVD<float>(a, aStep, u, uStep, s, v, vStep, m, n, accuracy, buffer);
}

DaxStatus PRMT_MAT_SVD_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {m, n},
      [&] {
        return 2 * int64_t{m} * int64_t{n} + 3 * std::min(int64_t{m}, int64_t{n}) * std::min(int64_t{m}, int64_t{n}) +
               7 * std::min(int64_t{m}, int64_t{n}) + 2 * std::max(int64_t{m}, int64_t{n}) + 2;
      },
      bytes);
}

DaxStatus PRMT_MAT_EigSym_f64(const double* a, int32_t aStep, double* values, double* vectors, int32_t vectorsStep,
                              int32_t n, void* buffer) {
  return dax::checkedEigSym<double>(a, aStep, values, vectors, vectorsStep, n, buffer);
}

DaxStatus PRMT_MAT_EigSym_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 2 * int64_t{n} * int64_t{n} + 4 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_EigSym_f32(const float* a, int32_t aStep, float* values, float* vectors, int32_t vectorsStep,
                              int32_t n, void* buffer) {
  return dax::checkedEigSym<float>(a, aStep, values, vectors, vectorsStep, n, buffer);
}

DaxStatus PRMT_MAT_EigSym_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 2 * int64_t{n} * int64_t{n} + 4 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_EigSymGen_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* values,
                                 double* vectors, int32_t vectorsStep, int32_t n, void* buffer) {
  return dax::checkedEigSymGen<double>(a, aStep, b, bStep, values, vectors, vectorsStep, n, buffer);
}

DaxStatus PRMT_MAT_EigSymGen_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 3 * int64_t{n} * int64_t{n} + 5 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_EigSymGen_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* values,
                                 float* vectors, int32_t vectorsStep, int32_t n, void* buffer) {
  return dax::checkedEigSymGen<float>(a, aStep, b, bStep, values, vectors, vectorsStep, n, buffer);
}

DaxStatus PRMT_MAT_EigSymGen_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return 3 * int64_t{n} * int64_t{n} + 5 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_EigGeneral_f64(const double* a, int32_t aStep, double* real, double* imaginary, int32_t n,
                                  void* buffer) {
  return dax::checkedEigGeneral<double>(a, aStep, real, imaginary, n, buffer);
}

DaxStatus PRMT_MAT_EigGeneral_BufferSize_f64(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 4 * int64_t{n}; }, bytes);
}

DaxStatus PRMT_MAT_EigGeneral_f32(const float* a, int32_t aStep, float* real, float* imaginary, int32_t n,
                                  void* buffer) {
  return dax::checkedEigGeneral<float>(a, aStep, real, imaginary, n, buffer);
}

DaxStatus PRMT_MAT_EigGeneral_BufferSize_f32(int32_t n, uint64_t* bytes) {
  return dax::bytesOf(
      {n}, [&] { return int64_t{n} * int64_t{n} + 4 * int64_t{n}; }, bytes);
}
