// What comes from singular values and vectors.
#include <cmath>

#include "optim/factor/product.h"
#include "optim/matrix/matrix_factor.h"
#include "optim/matrix/matrix_solve.h"
#include "optim/matrix/thin_svd.h"

namespace dax {
namespace {

template <class T>
void storeVectors(const Rows& from, const double* signs, MatrixView<T> to) {
  if (!to.data) return;
  for (int32_t j = 0; j < to.cols; ++j) {
    for (int32_t i = 0; i < to.rows; ++i) to.row(i)[j] = static_cast<T>(signs[j] * from.row(j)[i]);
  }
}

// The first `rank` right vectors over their values.
void divideByValues(const ThinSvd& svd, int32_t rank) {
  for (int32_t k = 0; k < rank; ++k) {
    for (int32_t j = 0; j < svd.right.cols; ++j) svd.right.row(k)[j] /= svd.values[k];
  }
}

double ratio(double smaller, double larger) {
  return larger > 0 ? smaller / larger : 1;
}

}  // namespace

template <class T>
DaxStatus matrixSVD(MatrixIn<T> a, MatrixView<T> u, T* s, MatrixView<T> v, int32_t accuracy, void* buffer) {
  DAX_REQUIRE(accuracy == 0 || accuracy == 1, DAX_STS_BAD_PARAM);
  WorkSpace work(buffer);
  double* const signs = work.take(std::min(a.rows, a.cols));
  ThinSvd svd;
  // Right vectors give the signs.
  DAX_REQUIRE_OK(findThinSvd(a, 0, u.data, u.data || v.data, work, svd, accuracy == 1));
  for (int32_t i = 0; i < svd.count && (u.data || v.data); ++i) signs[i] = signOf(svd.right.row(i), svd.right.cols);
  store(svd.values, PowerOfTwo(svd.exponent), s, svd.count);
  storeVectors(svd.left, signs, u);
  storeVectors(svd.right, signs, v);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixPInv(MatrixIn<T> a, MatrixView<T> inverse, int32_t* rank, void* buffer) {
  WorkSpace work(buffer);
  const Rows result = work.take(a.cols, a.rows);
  ThinSvd svd;
  DAX_REQUIRE_OK(findThinSvd(a, 0, true, true, work, svd));
  const int32_t found = rankOf(svd, a.rows, a.cols);
  divideByValues(svd, found);
  product(byColumns(svd.right.data, svd.right.step), byColumns(svd.left.data, svd.left.step), result, found);
  storeRows(result, PowerOfTwo(-svd.exponent), inverse);
  *rank = found;
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixMinNorm(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, int32_t* rank, void* buffer) {
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.add(b);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const int32_t count = std::min(a.rows, a.cols);
  const Rows right = work.take(b.rows, b.cols), shares = work.take(count, b.cols), result = work.take(a.cols, b.cols);
  ThinSvd svd;
  DAX_REQUIRE_OK(findThinSvd(a, 0, true, true, work, svd));
  loadRows(b, PowerOfTwo(-magnitude.exponent()), right);
  const int32_t found = rankOf(svd, a.rows, a.cols);
  divideByValues(svd, found);
  product(byRows(svd.left.data, svd.left.step), byColumns(right.data, right.step), shares, b.rows);
  product(byColumns(svd.right.data, svd.right.step), byColumns(shares.data, shares.step), result, found);
  storeRows(result, PowerOfTwo(magnitude.exponent() - svd.exponent), x);
  *rank = found;
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixHomogeneous(MatrixIn<T> a, T* x, T* residual, T* gap, void* buffer) {
  WorkSpace work(buffer);
  ThinSvd svd;
  DAX_REQUIRE_OK(findThinSvd(a, std::max(a.cols - a.rows, 0), false, true, work, svd));
  const int32_t last = a.cols - 1;
  const double* const vector = svd.right.row(last);
  const double sign = signOf(vector, a.cols);
  for (int32_t j = 0; j < a.cols; ++j) x[j] = static_cast<T>(sign * vector[j]);
  *residual = static_cast<T>(PowerOfTwo(svd.exponent)(svd.values[last]));
  *gap = static_cast<T>(last > 0 ? ratio(svd.values[last], svd.values[last - 1]) : 0);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixNullSpace(MatrixIn<T> a, MatrixView<T> basis, int32_t* dimension, T* gap, void* buffer) {
  const int32_t n = a.cols;
  WorkSpace work(buffer);
  ThinSvd svd;
  DAX_REQUIRE_OK(findThinSvd(a, std::max(n - a.rows, 0), false, true, work, svd));
  const int32_t rank = rankOf(svd, a.rows, n);
  for (int32_t j = 0; j < n; ++j) {
    // The vector of the smallest value first.
    const double* const vector = svd.right.row(n - 1 - j);
    const double sign = j < n - rank ? signOf(vector, n) : 0;
    for (int32_t i = 0; i < n; ++i) basis.row(i)[j] = static_cast<T>(sign == 0 ? 0 : sign * vector[i]);
  }
  *dimension = n - rank;
  *gap = static_cast<T>(rank > 0 && rank < n ? ratio(svd.values[rank], svd.values[rank - 1]) : 0);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixTotalLS(MatrixIn<T> a, const T* b, T* x, T* residual, void* buffer) {
  const int32_t n = a.cols;
  WorkSpace work(buffer);
  // Both have the scale of the larger one.
  const Rows joined = work.take(a.rows, n + 1);
  for (int32_t i = 0; i < a.rows; ++i) {
    for (int32_t j = 0; j <= n; ++j) joined.row(i)[j] = j < n ? double{a.row(i)[j]} : double{b[i]};
  }
  ThinSvd svd;
  DAX_REQUIRE_OK(findThinSvd(MatrixIn<double>{joined.data, joined.step, a.rows, n + 1}, std::max(n + 1 - a.rows, 0),
                             false, true, work, svd));
  const double* const vector = svd.right.row(n);
  const double noise = (n + 1) * 0x1p-52;
  const bool isUnique = svd.values[n] < (1 - noise) * svd.values[n - 1] && std::fabs(vector[n]) > noise;
  DAX_REQUIRE(isUnique, DAX_STS_DEGENERATE);
  for (int32_t j = 0; j < n; ++j) x[j] = static_cast<T>(-vector[j] / vector[n]);
  *residual = static_cast<T>(PowerOfTwo(svd.exponent)(svd.values[n]));
  return DAX_STS_OK;
}

#define DAX_SVD(T)                                                                             \
  template DaxStatus matrixSVD(MatrixIn<T>, MatrixView<T>, T*, MatrixView<T>, int32_t, void*); \
  template DaxStatus matrixPInv(MatrixIn<T>, MatrixView<T>, int32_t*, void*);                  \
  template DaxStatus matrixMinNorm(MatrixIn<T>, MatrixIn<T>, MatrixView<T>, int32_t*, void*);  \
  template DaxStatus matrixHomogeneous(MatrixIn<T>, T*, T*, T*, void*);                        \
  template DaxStatus matrixNullSpace(MatrixIn<T>, MatrixView<T>, int32_t*, T*, void*);         \
  template DaxStatus matrixTotalLS(MatrixIn<T>, const T*, T*, T*, void*);
DAX_SVD(double)
DAX_SVD(float)
#undef DAX_SVD

}  // namespace dax
