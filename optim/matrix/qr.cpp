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

namespace {

// The solutions of right-hand sides, which are the rows of `right`, with R; false where the rank is not full.
template <class T>
bool solveFull(const QrWork& qr, const Rows& right, int exponent, MatrixView<T> x) {
  const int32_t n = qr.a.rows;
  if (rankOf(qr.diagonal, n, rankTolerance(qr.a.cols, n)) < n) return false;
  applyTransposed(qr.a, qr.tau, n, right);
  const PowerOfTwo back(exponent - qr.exponent);
  for (int32_t j = 0; j < right.rows; ++j) {
    solveR(qr.a, qr.diagonal, n, right.row(j));
    for (int32_t k = 0; k < n; ++k) x.row(qr.pivots[k])[j] = static_cast<T>(back(right.row(j)[k]));
  }
  return true;
}

}  // namespace

template <class T>
DaxStatus matrixLeastSquares(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, void* buffer) {
  WorkSpace work(buffer);
  const QrWork qr(a, work);
  Magnitude magnitude;
  magnitude.add(b);
  DAX_REQUIRE(qr.isFinite && magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows right = work.take(b.cols, b.rows);
  factorQrPivoted(qr.a, qr.tau, qr.diagonal, qr.pivots, nullptr, work.take(0));
  loadColumns(b, PowerOfTwo(-magnitude.exponent()), right);
  DAX_REQUIRE(solveFull(qr, right, magnitude.exponent(), x), DAX_STS_LEAST_SQUARES);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixWeightedLS(MatrixIn<T> a, const T* weights, MatrixIn<T> b, MatrixView<T> x, void* buffer) {
  WorkSpace work(buffer);
  const QrWork qr(a, work);
  Magnitude ofWeights, magnitude;
  ofWeights.add(weights, a.rows), magnitude.add(b);
  DAX_REQUIRE(qr.isFinite && ofWeights.isFinite() && magnitude.isFinite(), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(std::all_of(weights, weights + a.rows, [](T weight) { return weight >= 0; }), DAX_STS_BAD_PARAM);
  const Rows right = work.take(b.cols, b.rows);
  double* const roots = work.take(a.rows);
  int32_t* const order = work.takeIntegers(a.rows);
  const PowerOfTwo scale(-2 * ((ofWeights.exponent() + 1) >> 1));
  for (int32_t i = 0; i < a.rows; ++i) roots[i] = std::sqrt(scale(double{weights[i]}));
  for (int32_t j = 0; j < a.cols; ++j) {
    for (int32_t i = 0; i < a.rows; ++i) qr.a.row(j)[i] *= roots[i];
  }
  // Rows of very different weights keep their digits when rows are exchanged too.
  factorQrPivoted(qr.a, qr.tau, qr.diagonal, qr.pivots, order, work.take(0));
  const PowerOfTwo toRight(-magnitude.exponent());
  for (int32_t j = 0; j < b.cols; ++j) {
    for (int32_t i = 0; i < b.rows; ++i) right.row(j)[i] = roots[order[i]] * toRight(double{b.row(order[i])[j]});
  }
  DAX_REQUIRE(solveFull(qr, right, magnitude.exponent(), x), DAX_STS_LEAST_SQUARES);
  return DAX_STS_OK;
}

namespace {

// Factors of columns in work memory; `a` by columns.
struct Factors {
  Factors(const Rows& columns, WorkSpace& work)
      : a(columns), tau(work.take(a.rows)), diagonal(work.take(a.rows)), pivots(work.takeIntegers(a.rows)) {}
  bool factor(double* rest) const {
    factorQrPivoted(a, tau, diagonal, pivots, nullptr, rest);
    return rankOf(diagonal, a.rows, rankTolerance(a.cols, a.rows)) == a.rows;
  }
  Rows a;
  double *tau, *diagonal;
  int32_t* pivots;
};

// y of R^T Q^T x = d and of the least squares that are left, x = Q y: the null-space method (Golub and Van Loan 2013, 6.2).
// The columns of `constraints` are the rows of C; rows of `a` are those of A.
bool solveConstrained(const Factors& constraints, const Rows& a, double* b, const double* d, double* y,
                      WorkSpace& work) {
  const int32_t m = a.rows, n = a.cols, p = constraints.a.rows;
  const Rows left = work.take(n - p, m);
  const Factors rest(left, work);
  double* const scratch = work.take(2 * int64_t{n});
  if (!constraints.factor(scratch)) return false;
  for (int32_t i = 0; i < p; ++i) y[i] = d[constraints.pivots[i]];
  solveRTransposed(constraints.a, constraints.diagonal, p, y);
  applyTransposed(constraints.a, constraints.tau, p, a);
  for (int32_t i = 0; i < m; ++i) {
    const double* const row = a.row(i);
    for (int32_t j = 0; j < p; ++j) b[i] -= row[j] * y[j];
    for (int32_t j = p; j < n; ++j) left.row(j - p)[i] = row[j];
  }
  if (p < n) {
    if (!rest.factor(scratch)) return false;
    applyTransposed(left, rest.tau, n - p, {b, m, 1, m});
    solveR(left, rest.diagonal, n - p, b);
    for (int32_t k = 0; k < n - p; ++k) y[p + rest.pivots[k]] = b[k];
  }
  applyReflections(constraints.a, constraints.tau, p, {y, n, 1, n});
  return true;
}

}  // namespace

template <class T>
DaxStatus matrixConstrainedLS(MatrixIn<T> a, const T* b, MatrixIn<T> c, const T* d, T* x, void* buffer) {
  const int32_t m = a.rows, n = a.cols, p = c.rows;
  Magnitude ofA, ofB, ofC, ofD;
  ofA.add(a), ofB.add(b, m), ofC.add(c), ofD.add(d, p);
  DAX_REQUIRE(ofA.isFinite() && ofB.isFinite() && ofC.isFinite() && ofD.isFinite(), DAX_STS_DATA_RANGE);
  WorkSpace work(buffer);
  const Rows rows = work.take(m, n), columns = work.take(p, n);
  double *const right = work.take(m), *const bound = work.take(p), *const y = work.take(n);
  // x is scaled so that neither right-hand side is large.
  const int exponent = std::max(ofB.exponent() - ofA.exponent(), ofD.exponent() - ofC.exponent());
  loadRows(a, PowerOfTwo(-ofA.exponent()), rows);
  loadRows(c, PowerOfTwo(-ofC.exponent()), columns);
  loadRows(MatrixIn<T>{b, m, 1, m}, PowerOfTwo(-ofA.exponent() - exponent), {right, m, 1, m});
  loadRows(MatrixIn<T>{d, p, 1, p}, PowerOfTwo(-ofC.exponent() - exponent), {bound, p, 1, p});
  const Factors constraints(columns, work);
  DAX_REQUIRE(solveConstrained(constraints, rows, right, bound, y, work), DAX_STS_LEAST_SQUARES);
  store(y, PowerOfTwo(exponent), x, n);
  return DAX_STS_OK;
}

#define DAX_QR(T)                                                                                         \
  template DaxStatus matrixQR(MatrixIn<T>, MatrixView<T>, MatrixView<T>, void*);                          \
  template DaxStatus matrixQRPivot(MatrixIn<T>, MatrixView<T>, MatrixView<T>, int32_t*, int32_t*, void*); \
  template DaxStatus matrixLeastSquares(MatrixIn<T>, MatrixIn<T>, MatrixView<T>, void*);                  \
  template DaxStatus matrixWeightedLS(MatrixIn<T>, const T*, MatrixIn<T>, MatrixView<T>, void*);          \
  template DaxStatus matrixConstrainedLS(MatrixIn<T>, const T*, MatrixIn<T>, const T*, T*, void*);
DAX_QR(double)
DAX_QR(float)
#undef DAX_QR

}  // namespace dax
