// Orthogonal factors and least squares.
#include <cmath>

#include "frame/check.h"
#include "optim/factor/householder.h"
#include "optim/matrix/matrix_factor.h"
#include "optim/matrix/matrix_solve.h"

namespace dax {
namespace {

// A scaled copy by columns, and what its factors need.
struct QrWork {
  template <class T>
  QrWork(MatrixIn<T> from, WorkSpace& work)
      : count(std::min(from.rows, from.cols)),
        a(work.take(from.cols, from.rows)),
        tau(work.take(count)),
        diagonal(work.take(count)),
        pivots(work.takeIntegers(from.cols)) {
    Magnitude magnitude;
    magnitude.add(from);
    isFinite = magnitude.isFinite();
    if (!isFinite) return;
    exponent = magnitude.exponent();
    loadColumns(from, PowerOfTwo(-exponent), a);
  }
  int32_t count;
  Rows a;
  double *tau, *diagonal;
  int32_t* pivots;
  int exponent = 0;
  bool isFinite;
};

// With signs that leave no negative number on the diagonal of R.
template <class T>
void storeFactors(const QrWork& qr, MatrixView<T> q, MatrixView<T> r, double* work) {
  const PowerOfTwo back(qr.exponent);
  for (int32_t i = 0; i < qr.count; ++i) {
    const double sign = qr.diagonal[i] < 0 ? -1 : 1;
    for (int32_t j = 0; j < r.cols; ++j) {
      const double element = j < i ? 0 : j == i ? qr.diagonal[i] : qr.a.row(j)[i];
      r.row(i)[j] = static_cast<T>(back(sign * element));
    }
  }
  if (!q.data) return;
  const Rows orthogonal{work, q.rows, qr.count, q.rows};
  formOrthogonal(qr.a, qr.tau, qr.count, orthogonal);
  for (int32_t i = 0; i < qr.count; ++i) {
    const double sign = qr.diagonal[i] < 0 ? -1 : 1;
    for (int32_t k = 0; k < q.rows; ++k) q.row(k)[i] = static_cast<T>(sign * orthogonal.row(i)[k]);
  }
}

}  // namespace

template <class T>
DaxStatus matrixQR(MatrixIn<T> a, MatrixView<T> q, MatrixView<T> r, void* buffer) {
  WorkSpace work(buffer);
  const QrWork qr(a, work);
  DAX_REQUIRE(qr.isFinite, DAX_STS_DATA_RANGE);
  // The factors' work is done before that of Q begins.
  double* const rest = work.take(0);
  factorQr(qr.a, qr.tau, qr.diagonal, rest);
  storeFactors(qr, q, r, rest);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixQRPivot(MatrixIn<T> a, MatrixView<T> q, MatrixView<T> r, int32_t* pivots, int32_t* rank, void* buffer) {
  WorkSpace work(buffer);
  const QrWork qr(a, work);
  DAX_REQUIRE(qr.isFinite, DAX_STS_DATA_RANGE);
  double* const rest = work.take(0);
  factorQrPivoted(qr.a, qr.tau, qr.diagonal, qr.pivots, nullptr, rest);
  storeFactors(qr, q, r, rest);
  std::copy_n(qr.pivots, a.cols, pivots);
  *rank = rankOf(qr.diagonal, qr.count, rankTolerance(a.rows, a.cols));
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixLeastSquares(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, void* buffer) {
  WorkSpace work(buffer);
  const QrWork qr(a, work);
  Magnitude magnitude;
  magnitude.add(b);
  DAX_REQUIRE(qr.isFinite && magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows right = work.take(b.cols, b.rows);
  factorQrPivoted(qr.a, qr.tau, qr.diagonal, qr.pivots, nullptr, work.take(0));
  DAX_REQUIRE(rankOf(qr.diagonal, a.cols, rankTolerance(a.rows, a.cols)) == a.cols, DAX_STS_LEAST_SQUARES);
  loadColumns(b, PowerOfTwo(-magnitude.exponent()), right);
  applyTransposed(qr.a, qr.tau, a.cols, right);
  const PowerOfTwo back(magnitude.exponent() - qr.exponent);
  for (int32_t j = 0; j < b.cols; ++j) {
    solveR(qr.a, qr.diagonal, a.cols, right.row(j));
    for (int32_t k = 0; k < a.cols; ++k) x.row(qr.pivots[k])[j] = static_cast<T>(back(right.row(j)[k]));
  }
  return DAX_STS_OK;
}

#define DAX_QR(T)                                                                                         \
  template DaxStatus matrixQR(MatrixIn<T>, MatrixView<T>, MatrixView<T>, void*);                          \
  template DaxStatus matrixQRPivot(MatrixIn<T>, MatrixView<T>, MatrixView<T>, int32_t*, int32_t*, void*); \
  template DaxStatus matrixLeastSquares(MatrixIn<T>, MatrixIn<T>, MatrixView<T>, void*);
DAX_QR(double)
DAX_QR(float)
#undef DAX_QR

}  // namespace dax
