// What comes from Gaussian elimination.
#include <cmath>

#include "frame/check.h"
#include "optim/factor/closed_form.h"
#include "optim/factor/lu.h"
#include "optim/matrix/matrix_factor.h"
#include "optim/matrix/matrix_solve.h"

namespace dax {
namespace {

constexpr int32_t kMaxClosed = 4;  // rows of which the inverse is a formula

// A copy scaled to magnitudes below 1.
struct ScaledSquare {
  template <class T>
  ScaledSquare(MatrixIn<T> from, WorkSpace& work) : a(work.take(from.rows, from.cols)) {
    Magnitude magnitude;
    magnitude.add(from);
    isFinite = magnitude.isFinite();
    if (!isFinite) return;
    exponent = magnitude.exponent();
    loadRows(from, PowerOfTwo(-exponent), a);
  }
  Rows a;
  int exponent = 0;
  bool isFinite;
};

bool isFinite(const Rows& a) {
  Magnitude magnitude;
  magnitude.add(MatrixIn<double>{a.data, a.step, a.rows, a.cols});
  return magnitude.isFinite();
}

// x = A^-1 b by cofactors, in place; false where these would lose digits.
bool solveClosed(const Rows& a, const Rows& b) {
  if (a.rows > kMaxClosed) return false;
  double inverse[kMaxClosed * kMaxClosed];
  const double determinant = adjugate(a, inverse);
  if (!isFarFromSingular(a, determinant)) return false;
  for (int32_t j = 0; j < b.cols; ++j) {
    double x[kMaxClosed];
    for (int32_t i = 0; i < a.rows; ++i) {
      double sum = 0;
      for (int32_t k = 0; k < a.rows; ++k) sum += inverse[i * a.rows + k] * b.row(k)[j];
      x[i] = sum / determinant;
    }
    for (int32_t i = 0; i < a.rows; ++i) b.row(i)[j] = x[i];
  }
  return true;
}

// The factors of A and what they make of b, whose rows follow the pivots: `load` fills row i of b with row `from`.
template <class Load>
bool solveScaled(const Rows& a, const Rows& b, int32_t* pivots, const Load& load) {
  for (int32_t i = 0; i < a.rows; ++i) load(i, i);
  if (solveClosed(a, b)) return true;
  if (!factorLu(a, pivots)) return false;
  for (int32_t i = 0; i < a.rows; ++i) load(i, pivots[i]);
  solveLu(a, b);
  return isFinite(b);
}

// f 2^exponent, f in [0.5, 1) or -f.
struct Scaled {
  double mantissa = 1;
  int32_t exponent = 0;

  void multiply(double factor) {
    mantissa *= factor;
    if (mantissa == 0) {
      exponent = 0;
      return;
    }
    int part;
    mantissa = std::frexp(mantissa, &part);
    exponent += part;
  }
};

bool isOdd(int32_t* order, int32_t n) {
  bool odd = false;
  for (int32_t i = 0; i < n; ++i) {
    for (; order[i] != i; odd = !odd) std::swap(order[i], order[order[i]]);
  }
  return odd;
}

// Of a scaled matrix, which it overwrites.
Scaled determinantOf(const Rows& a, int32_t* pivots) {
  Scaled result;
  if (a.rows <= kMaxClosed) {
    double unused[kMaxClosed * kMaxClosed];
    const double determinant = adjugate(a, unused);
    if (isFarFromSingular(a, determinant)) {
      result.multiply(determinant);
      return result;
    }
  }
  if (!factorLu(a, pivots)) return {0, 0};
  for (int32_t i = 0; i < a.rows; ++i) result.multiply(a.row(i)[i]);
  if (isOdd(pivots, a.rows)) result.mantissa = -result.mantissa;
  return result;
}

}  // namespace

template <class T>
DaxStatus matrixLU(MatrixIn<T> a, MatrixView<T> lu, int32_t* pivots, void* buffer) {
  WorkSpace work(buffer);
  const ScaledSquare scaled(a, work);
  DAX_REQUIRE(scaled.isFinite, DAX_STS_DATA_RANGE);
  int32_t* const order = work.takeIntegers(a.rows);
  DAX_REQUIRE(factorLu(scaled.a, order), DAX_STS_LU);
  const PowerOfTwo back(scaled.exponent), same(0);
  for (int32_t i = 0; i < a.rows; ++i) {
    store(scaled.a.row(i), same, lu.row(i), i);
    store(scaled.a.row(i) + i, back, lu.row(i) + i, a.rows - i);
  }
  std::copy_n(order, a.rows, pivots);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixSolve(MatrixIn<T> a, MatrixIn<T> b, MatrixView<T> x, void* buffer) {
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.add(b);
  const ScaledSquare scaled(a, work);
  DAX_REQUIRE(scaled.isFinite && magnitude.isFinite(), DAX_STS_DATA_RANGE);
  const Rows right = work.take(b.rows, b.cols);
  const PowerOfTwo scale(-magnitude.exponent());
  const bool isSolved = solveScaled(scaled.a, right, work.takeIntegers(a.rows), [&](int32_t i, int32_t from) {
    for (int32_t j = 0; j < b.cols; ++j) right.row(i)[j] = scale(double{b.row(from)[j]});
  });
  DAX_REQUIRE(isSolved, DAX_STS_LU);
  storeRows(right, PowerOfTwo(magnitude.exponent() - scaled.exponent), x);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixInverse(MatrixIn<T> a, MatrixView<T> inverse, void* buffer) {
  WorkSpace work(buffer);
  const ScaledSquare scaled(a, work);
  DAX_REQUIRE(scaled.isFinite, DAX_STS_DATA_RANGE);
  const Rows right = work.take(a.rows, a.rows);
  const bool isSolved = solveScaled(scaled.a, right, work.takeIntegers(a.rows), [&](int32_t i, int32_t from) {
    std::fill_n(right.row(i), a.rows, 0.0);
    right.row(i)[from] = 1;
  });
  DAX_REQUIRE(isSolved, DAX_STS_INVERSION);
  storeRows(right, PowerOfTwo(-scaled.exponent), inverse);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixDet(MatrixIn<T> a, T* mantissa, int32_t* exponent, void* buffer) {
  WorkSpace work(buffer);
  const ScaledSquare scaled(a, work);
  DAX_REQUIRE(scaled.isFinite, DAX_STS_DATA_RANGE);
  const Scaled determinant = determinantOf(scaled.a, work.takeIntegers(a.rows));
  *mantissa = static_cast<T>(determinant.mantissa);
  *exponent = determinant.mantissa == 0 ? 0 : determinant.exponent + a.rows * scaled.exponent;
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixRcond(MatrixIn<T> a, T* rcond, void* buffer) {
  WorkSpace work(buffer);
  const ScaledSquare scaled(a, work);
  DAX_REQUIRE(scaled.isFinite, DAX_STS_DATA_RANGE);
  int32_t* const pivots = work.takeIntegers(a.rows);
  double* const rest = work.take(2 * int64_t{a.rows});
  const double norm = norm1(scaled.a, rest);
  *rcond = factorLu(scaled.a, pivots) ? static_cast<T>(reciprocalCondition(scaled.a, norm, rest)) : 0;
  return DAX_STS_OK;
}

#define DAX_SQUARE(T)                                                             \
  template DaxStatus matrixLU(MatrixIn<T>, MatrixView<T>, int32_t*, void*);       \
  template DaxStatus matrixSolve(MatrixIn<T>, MatrixIn<T>, MatrixView<T>, void*); \
  template DaxStatus matrixInverse(MatrixIn<T>, MatrixView<T>, void*);            \
  template DaxStatus matrixDet(MatrixIn<T>, T*, int32_t*, void*);                 \
  template DaxStatus matrixRcond(MatrixIn<T>, T*, void*);
DAX_SQUARE(double)
DAX_SQUARE(float)
#undef DAX_SQUARE

}  // namespace dax
