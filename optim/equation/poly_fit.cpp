// Polynomials through points.
#include <array>

#include "optim/equation/fit_points.h"
#include "optim/factor/householder.h"
#include "prmt/curve_fit.h"

namespace dax {
namespace {

constexpr int32_t kMaxFitDegree = 20, kMaxValueDegree = 512;

PrmtRange rangeOf(const double* x, int32_t count) {
  const auto [low, high] = std::minmax_element(x, x + count);
  const double centre = *low / 2 + *high / 2, halfWidth = std::max(*high - centre, centre - *low);
  return {centre + 0.0, halfWidth > 0 ? halfWidth : 1};
}

// T_0, T_1, ... at the points, each in a row, times the roots of the weights (T_k = 2 t T_{k-1} - T_{k-2}).
void loadChebyshev(const FitPoints& points, const PrmtRange& range, const Rows& basis) {
  for (int32_t i = 0; i < basis.cols; ++i) {
    const double t = (points.x[i] - range.centre) / range.halfWidth, root = points.root(i);
    double before = t, value = 1;
    for (int32_t k = 0; k < basis.rows; ++k) {
      basis.row(k)[i] = root * value;
      const double next = 2 * t * value - before;
      before = value, value = next;
    }
  }
}

// A sum of n Chebyshev polynomials as powers.
void setPowers(const double* sum, int32_t n, double* powers) {
  std::array<double, kMaxFitDegree + 2> before{}, polynomial{1}, next{};
  before[1] = 1;
  std::fill_n(powers, n, 0.0);
  for (int32_t k = 0; k < n; ++k) {
    for (int32_t i = 0; i <= k; ++i) powers[i] += sum[k] * polynomial[size_t(i)];
    for (size_t i = 0; i < next.size(); ++i) next[i] = (i > 0 ? 2 * polynomial[i - 1] : 0) - before[i];
    before = polynomial, polynomial = next;
  }
}

// To begin with powers: {coefficients, sum of squares} of Chebyshev polynomials; false where points do not tell them.
bool fitChebyshev(const FitPoints& points, const Rows& basis, WorkSpace& work, double* coefficients, double* squares) {
  const int32_t n = basis.rows, count = basis.cols;
  const Rows right = work.take(1, count);
  double *const tau = work.take(n), *const diagonal = work.take(n);
  int32_t* const pivots = work.takeIntegers(n);
  if (count < n) return false;
  for (int32_t i = 0; i < count; ++i) right.data[i] = points.root(i) * points.value(i);
  factorQrPivoted(basis, tau, diagonal, pivots, nullptr, work.take(0));
  if (rankOf(diagonal, n, rankTolerance(count, n)) < n) return false;
  applyTransposed(basis, tau, n, right);
  solveR(basis, diagonal, n, right.data);
  for (int32_t k = 0; k < n; ++k) coefficients[pivots[k]] = right.data[k];
  *squares = squareOf(right.data + n, count - n);
  return true;
}

int64_t fitDoubles(int64_t count, int64_t n) {
  return (n + 1) * count + 5 * n;
}

DaxStatus polyFitNeed(int32_t count, int32_t degree, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1 && degree >= 0 && degree <= kMaxFitDegree, DAX_STS_BAD_PARAM);
  *bytes = sizeof(double) * static_cast<uint64_t>(fitDoubles(count, degree + 1));
  return DAX_STS_OK;
}

DaxStatus polyFit(FitPoints points, int32_t degree, double* coefficients, PrmtRange* range, double* rms, void* buffer) {
  DAX_REQUIRE(points.x && points.y && coefficients && range && rms && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(points.count >= 1 && degree >= 0 && degree <= kMaxFitDegree, DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(points.check());
  const int32_t n = degree + 1;
  WorkSpace work(buffer);
  const Rows basis = work.take(n, points.count);
  const PrmtRange found = rangeOf(points.x, points.count);
  loadChebyshev(points, found, basis);
  double sum[kMaxFitDegree + 1], powers[kMaxFitDegree + 1], squares;
  DAX_REQUIRE(fitChebyshev(points, basis, work, sum, &squares), DAX_STS_LEAST_SQUARES);
  setPowers(sum, n, powers);
  DAX_REQUIRE_OK(points.store(powers, n, squares, coefficients, rms));
  *range = found;
  return DAX_STS_OK;
}

DaxStatus polyValue(const double* coefficients, int32_t degree, const PrmtRange* range, const double* at, int32_t count,
                    int32_t derivative, double* values) {
  DAX_REQUIRE(coefficients && range && at && values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1 && degree >= 0 && degree <= kMaxValueDegree, DAX_STS_BAD_SIZE);
  const PrmtRange where = *range;
  DAX_REQUIRE(std::isfinite(where.centre) && std::isfinite(where.halfWidth) && where.halfWidth > 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(derivative >= 0 && derivative <= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areFinite(at, count), DAX_STS_DATA_RANGE);
  for (int32_t k = 0; k < count; ++k) {
    const double t = (at[k] - where.centre) / where.halfWidth;
    double sum = 0;
    for (int32_t i = degree; i >= derivative; --i) {
      double factor = coefficients[i];
      for (int32_t j = 0; j < derivative; ++j) factor *= i - j;
      sum = sum * t + factor;
    }
    for (int32_t j = 0; j < derivative; ++j) sum /= where.halfWidth;
    values[k] = sum;
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus PRMT_EQ_PolyFit_BufferSize_f64(int32_t count, int32_t degree, uint64_t* bytes) {
  return dax::polyFitNeed(count, degree, bytes);
}

DaxStatus PRMT_EQ_PolyFit_f64(const double* x, const double* y, const double* weights, int32_t count, int32_t degree,
                              double* coefficients, PrmtRange* range, double* rms, void* buffer) {
  return dax::polyFit({x, y, weights, count}, degree, coefficients, range, rms, buffer);
}

DaxStatus PRMT_EQ_PolyValue_f64(const double* coefficients, int32_t degree, const PrmtRange* range, const double* at,
                                int32_t count, int32_t derivative, double* values) {
  return dax::polyValue(coefficients, degree, range, at, count, derivative, values);
}
