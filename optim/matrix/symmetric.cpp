// Factors of symmetric matrices, and eigenvalues.
#include <cmath>

#include "frame/check.h"
#include "optim/dense/dense.h"
#include "optim/factor/definite.h"
#include "optim/factor/hessenberg.h"
#include "optim/factor/symmetric_eigen.h"
#include "optim/matrix/matrix_factor.h"

namespace dax {

template <class T>
DaxStatus matrixCholesky(MatrixIn<T> a, MatrixView<T> l, void* buffer) {
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.addLower(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows factor = work.take(a.rows, a.rows);
  const int half = (magnitude.exponent() + 1) >> 1;
  loadSymmetric(a, PowerOfTwo(-2 * half), factor);
  DAX_REQUIRE(factorDefinite(factor, work.takeIntegers(a.rows)), DAX_STS_FAILURE);
  const PowerOfTwo back(half);
  for (int32_t i = 0; i < a.rows; ++i) {
    for (int32_t j = 0; j < a.rows; ++j) l.row(i)[j] = j <= i ? static_cast<T>(back(factor.row(j)[i])) : 0;
  }
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixLDLT(MatrixIn<T> a, MatrixView<T> l, T* d, T* e, int32_t* pivots, void* buffer) {
  const int32_t n = a.rows;
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.addLower(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows factor = work.take(n, n);
  double* const beside = work.take(n);
  int32_t* const order = work.takeIntegers(n);
  loadSymmetric(a, PowerOfTwo(-magnitude.exponent()), factor);
  factorIndefinite(factor, beside, order);
  const PowerOfTwo back(magnitude.exponent());
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = 0; j < n; ++j) l.row(i)[j] = j < i ? static_cast<T>(factor.row(i)[j]) : T(i == j);
    d[i] = static_cast<T>(back(factor.row(i)[i]));
  }
  store(beside, back, e, n);
  std::copy_n(order, n, pivots);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixEigSym(MatrixIn<T> a, T* values, MatrixView<T> vectors, void* buffer) {
  const int32_t n = a.rows;
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.addLower(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows copy = work.take(n, n), rows = work.take(n, n);
  double* const found = work.take(n);
  loadSymmetric(a, PowerOfTwo(-magnitude.exponent()), copy);
  DAX_REQUIRE(eigenSymmetric(copy, found, vectors.data ? rows : Rows{nullptr, 0, 0, 0}, work.take(0)), DAX_STS_FAILURE);
  store(found, PowerOfTwo(magnitude.exponent()), values, n);
  if (vectors.data) storeColumns(rows, PowerOfTwo(0), vectors);
  return DAX_STS_OK;
}

namespace {

// L^-1 A L^-T in place of a symmetric A, by columns of L.
void reduceByFactor(const Rows& l, const Rows& a) {
  const int32_t n = a.rows;
  for (int round = 0; round < 2; ++round) {
    for (int32_t j = 0; j < n; ++j) solveLower(n, l.data, l.step, a.row(j));
    for (int32_t i = 0; i < n; ++i) {
      for (int32_t j = 0; j < i; ++j) std::swap(a.row(i)[j], a.row(j)[i]);
    }
  }
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = 0; j < i; ++j) a.row(i)[j] = a.row(j)[i];
  }
}

}  // namespace

template <class T>
DaxStatus matrixEigSymGen(MatrixIn<T> a, MatrixIn<T> b, T* values, MatrixView<T> vectors, void* buffer) {
  const int32_t n = a.rows;
  WorkSpace work(buffer);
  Magnitude left, right;
  left.addLower(a), right.addLower(b);
  DAX_REQUIRE(left.isFinite() && right.isFinite(), DAX_STS_DATA_RANGE);
  const Rows copy = work.take(n, n), factor = work.take(n, n), rows = work.take(n, n);
  double* const found = work.take(n);
  const int half = (right.exponent() + 1) >> 1;
  loadSymmetric(a, PowerOfTwo(-left.exponent()), copy);
  loadSymmetric(b, PowerOfTwo(-2 * half), factor);
  DAX_REQUIRE(factorDefinite(factor, work.takeIntegers(n)), DAX_STS_FAILURE);
  reduceByFactor(factor, copy);
  // Rows that are far apart in scale may have made it large again.
  Magnitude reduced;
  reduced.add(MatrixIn<double>{copy.data, copy.step, n, n});
  DAX_REQUIRE(reduced.isFinite(), DAX_STS_FAILURE);
  loadRows(MatrixIn<double>{copy.data, copy.step, n, n}, PowerOfTwo(-reduced.exponent()), copy);
  DAX_REQUIRE(eigenSymmetric(copy, found, vectors.data ? rows : Rows{nullptr, 0, 0, 0}, work.take(0)), DAX_STS_FAILURE);
  store(found, PowerOfTwo(left.exponent() + reduced.exponent() - 2 * half), values, n);
  const PowerOfTwo back(-half);
  for (int32_t j = 0; vectors.data && j < n; ++j) {
    solveLowerTransposed(n, factor.data, factor.step, rows.row(j));
    const double sign = signOf(rows.row(j), n);
    for (int32_t i = 0; i < n; ++i) vectors.row(i)[j] = static_cast<T>(back(sign * rows.row(j)[i]));
  }
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixEigGeneral(MatrixIn<T> a, T* real, T* imaginary, void* buffer) {
  struct Value {
    double real, imaginary;
  };
  const int32_t n = a.rows;
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.add(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows copy = work.take(n, n);
  double *const parts = work.take(2 * int64_t{n}), *const rest = work.take(2 * int64_t{n});
  loadRows(a, PowerOfTwo(-magnitude.exponent()), copy);
  DAX_REQUIRE(eigenGeneral(copy, parts, parts + n, rest), DAX_STS_FAILURE);
  auto* const found = reinterpret_cast<Value*>(rest);
  for (int32_t i = 0; i < n; ++i) found[i] = {parts[i], parts[n + i]};
  std::sort(found, found + n, [](const Value& p, const Value& q) {
    if (p.real != q.real) return p.real > q.real;
    const double first = std::fabs(p.imaginary), second = std::fabs(q.imaginary);
    return first != second ? first > second : p.imaginary > q.imaginary;
  });
  const PowerOfTwo back(magnitude.exponent());
  for (int32_t i = 0; i < n; ++i) {
    real[i] = static_cast<T>(back(found[i].real)), imaginary[i] = static_cast<T>(back(found[i].imaginary));
  }
  return DAX_STS_OK;
}

#define DAX_SYMMETRIC(T)                                                                  \
  template DaxStatus matrixCholesky(MatrixIn<T>, MatrixView<T>, void*);                   \
  template DaxStatus matrixLDLT(MatrixIn<T>, MatrixView<T>, T*, T*, int32_t*, void*);     \
  template DaxStatus matrixEigSym(MatrixIn<T>, T*, MatrixView<T>, void*);                 \
  template DaxStatus matrixEigSymGen(MatrixIn<T>, MatrixIn<T>, T*, MatrixView<T>, void*); \
  template DaxStatus matrixEigGeneral(MatrixIn<T>, T*, T*, void*);
DAX_SYMMETRIC(double)
DAX_SYMMETRIC(float)
#undef DAX_SYMMETRIC

}  // namespace dax
