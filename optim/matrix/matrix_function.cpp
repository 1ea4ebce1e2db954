#include "optim/matrix/matrix_function.h"

#include <cmath>

#include "frame/check.h"
#include "optim/factor/hessenberg.h"
#include "optim/factor/lu.h"
#include "optim/factor/product.h"

namespace dax {
namespace {

bool hasOnlyFinite(const Rows& a) {
  Magnitude magnitude;
  magnitude.add(MatrixIn<double>{a.data, a.step, a.rows, a.cols});
  return magnitude.isFinite();
}

void multiply(const Rows& a, const Rows& b, const Rows& to) {
  product(byRows(a.data, a.step), byColumns(b.data, b.step), to, a.cols);
}

void copy(const Rows& from, const Rows& to) {
  std::copy_n(from.data, int64_t{from.rows} * from.cols, to.data);
}

// to = to + factor from, all elements.
void addTo(const Rows& to, double factor, const Rows& from) {
  for (int32_t i = 0; i < to.rows; ++i) addScaled(to.row(i), factor, from.row(i), to.cols);
}

void addIdentity(const Rows& a, double factor) {
  for (int32_t i = 0; i < a.rows; ++i) a.row(i)[i] += factor;
}

// x <- a^-1 x; overwrites a, and `rows` of as many rows.
bool divide(const Rows& a, const Rows& x, const Rows& rows, int32_t* pivots) {
  if (!factorLu(a, pivots)) return false;
  copy(x, rows);
  for (int32_t i = 0; i < a.rows; ++i) std::copy_n(rows.row(pivots[i]), x.cols, x.row(i));
  solveLu(a, x);
  return true;
}

double norm1Of(const Rows& a) {
  double largest = 0;
  for (int32_t j = 0; j < a.cols; ++j) {
    double sum = 0;
    for (int32_t i = 0; i < a.rows; ++i) sum += std::fabs(a.row(i)[j]);
    largest = std::max(largest, sum);
  }
  return largest;
}

// Scaling and squaring with the Pade approximant of degree 13 (Higham, The scaling and squaring method for the matrix
// exponential revisited, 2005).
class Exponential {
 public:
  Exponential(int32_t n, WorkSpace& work)
      : a(work.take(n, n)),
        result(work.take(n, n)),
        two_(work.take(n, n)),
        four_(work.take(n, n)),
        six_(work.take(n, n)),
        odd_(work.take(n, n)),
        even_(work.take(n, n)),
        pivots_(work.takeIntegers(n)) {}

  // Of a 2^exponent.
  bool compute(int exponent) {
    constexpr double kLargest = 5.371920351148152;  // norm up to which the approximant is right to the rounding
    int squarings = std::max(exponent - 900, 0);
    double size = PowerOfTwo(std::min(exponent, 900))(norm1Of(a));
    while (size > kLargest) size /= 2, ++squarings;
    loadRows(MatrixIn<double>{a.data, a.step, a.rows, a.cols}, PowerOfTwo(exponent - squarings), a);
    if (!approximate()) return false;
    for (int k = 0; k < squarings && hasOnlyFinite(result); ++k) {
      multiply(result, result, even_);
      std::swap(result.data, even_.data);
    }
    return hasOnlyFinite(result);
  }

  Rows a, result;

 private:
  // c0 + c1 a^2 + ... + c6 a^12.
  void polynomial(const double (&c)[7], const Rows& to) {
    std::fill_n(result.data, int64_t{a.rows} * a.rows, 0.0);
    addTo(result, c[6], six_), addTo(result, c[5], four_), addTo(result, c[4], two_);
    multiply(six_, result, to);
    addTo(to, c[3], six_), addTo(to, c[2], four_), addTo(to, c[1], two_);
    addIdentity(to, c[0]);
  }

  bool approximate() {
    constexpr double kOdd[7] = {32382376266240000, 1187353796428800, 10559470521600, 33522128640, 40840800, 16380, 1};
    constexpr double kEven[7] = {
        64764752532480000, 7771770303897600, 129060195264000, 670442572800, 1323241920, 960960, 182};
    multiply(a, a, two_), multiply(two_, two_, four_), multiply(four_, two_, six_);
    polynomial(kOdd, even_);
    multiply(a, even_, odd_);
    polynomial(kEven, even_);
    // (even - odd) x = even + odd
    copy(even_, result), addTo(result, 1, odd_), addTo(even_, -1, odd_);
    return divide(even_, result, odd_, pivots_);
  }

  Rows two_, four_, six_, odd_, even_;
  int32_t* pivots_;
};

// Inverse scaling and squaring: square roots by the iteration of Denman and Beavers (1976) until the matrix is near to 1, then
// the Pade approximant of degree 7 in partial fractions (Higham, Evaluating Pade approximants of the matrix logarithm, 2001).
class Logarithm {
 public:
  Logarithm(int32_t n, WorkSpace& work)
      : x(work.take(n, n)),
        z_(work.take(n, n)),
        xInverse_(work.take(n, n)),
        zInverse_(work.take(n, n)),
        rest_(work.take(n, n)),
        pivots_(work.takeIntegers(n)) {}

  // x <- log x.
  bool compute() {
    constexpr double kNear = 0.264;  // distance from 1 up to which the approximant is right to the rounding
    constexpr int kMaxRoots = 80;
    int roots = 0;
    for (;; ++roots) {
      addIdentity(x, -1);
      if (norm1Of(x) <= kNear) break;
      addIdentity(x, 1);
      if (roots == kMaxRoots || !takeRoot()) return false;
    }
    return approximate() && scaleBack(roots);
  }

  Rows x;

 private:
  bool invert(const Rows& a, const Rows& to) {
    copy(a, rest_);
    if (!factorLu(rest_, pivots_)) return false;
    std::fill_n(to.data, int64_t{a.rows} * a.rows, 0.0);
    for (int32_t i = 0; i < a.rows; ++i) to.row(i)[pivots_[i]] = 1;
    solveLu(rest_, to);
    return true;
  }

  // x -> its root, z its inverse: x' = (x + z^-1) / 2, z' = (z + x^-1) / 2.
  bool takeRoot() {
    constexpr int kMaxRounds = 100;
    setIdentity(z_);
    double before = INFINITY;
    for (int round = 0; round < kMaxRounds; ++round) {
      if (!invert(x, xInverse_) || !invert(z_, zInverse_)) return false;
      // What x changes by is half of the difference.
      addTo(zInverse_, -1, x);
      const double change = norm1Of(zInverse_), size = norm1Of(x);
      addTo(x, 0.5, zInverse_);
      addTo(xInverse_, -1, z_), addTo(z_, 0.5, xInverse_);
      if (!(change <= INFINITY)) return false;
      if (change <= 0x1p-52 * size || (change >= before && change < 1e-6 * size)) return true;
      before = change;
    }
    return false;
  }

  // log(1 + x) of a small x: the sum of w x (1 + t x)^-1 over the nodes t and weights w of Gauss and Legendre in 0..1.
  bool approximate() {
    constexpr double kNodes[4] = {0, 0.4058451513773972, 0.7415311855993945, 0.9491079123427585};
    constexpr double kWeights[4] = {0.4179591836734694, 0.3818300505051189, 0.2797053914892767, 0.1294849661688697};
    std::fill_n(z_.data, int64_t{x.rows} * x.rows, 0.0);
    for (int k = -3; k <= 3; ++k) {
      const double node = (1 + (k < 0 ? -kNodes[-k] : kNodes[k])) / 2, weight = kWeights[k < 0 ? -k : k] / 2;
      std::fill_n(xInverse_.data, int64_t{x.rows} * x.rows, 0.0);
      addTo(xInverse_, node, x), addIdentity(xInverse_, 1);
      copy(x, zInverse_);
      if (!divide(xInverse_, zInverse_, rest_, pivots_)) return false;
      addTo(z_, weight, zInverse_);
    }
    return true;
  }

  bool scaleBack(int roots) {
    loadRows(MatrixIn<double>{z_.data, z_.step, z_.rows, z_.cols}, PowerOfTwo(roots), x);
    return hasOnlyFinite(x);
  }

  Rows z_, xInverse_, zInverse_, rest_;
  int32_t* pivots_;
};

// Whether an eigenvalue of a, which is overwritten, lies at 0 or on the negative axis; `work` of 4 a.rows doubles.
DaxStatus checkEigenvalues(const Rows& a, double* work) {
  const int32_t n = a.rows;
  DAX_REQUIRE(eigenGeneral(a, work, work + n, work + 2 * n), DAX_STS_FAILURE);
  for (int32_t i = 0; i < n; ++i) DAX_REQUIRE(work[i] > 0 || work[n + i] != 0, DAX_STS_DEGENERATE);
  return DAX_STS_OK;
}

}  // namespace

template <class T>
DaxStatus matrixExp(MatrixIn<T> a, MatrixView<T> result, void* buffer) {
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.add(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  Exponential exponential(a.rows, work);
  loadRows(a, PowerOfTwo(-magnitude.exponent()), exponential.a);
  DAX_REQUIRE(exponential.compute(magnitude.exponent()), DAX_STS_FAILURE);
  storeRows(exponential.result, PowerOfTwo(0), result);
  return DAX_STS_OK;
}

template <class T>
DaxStatus matrixLog(MatrixIn<T> a, MatrixView<T> result, void* buffer) {
  constexpr int kMaxPlain = 64;
  WorkSpace work(buffer);
  Magnitude magnitude;
  magnitude.add(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  // log(a 2^e) = log a + e ln 2, which costs digits of the diagonal.
  const int exponent = std::abs(magnitude.exponent()) <= kMaxPlain ? 0 : magnitude.exponent();
  double* const values = work.take(4 * int64_t{a.rows});
  Logarithm logarithm(a.rows, work);
  loadRows(a, PowerOfTwo(-exponent), logarithm.x);
  DAX_REQUIRE_OK(checkEigenvalues(logarithm.x, values));
  loadRows(a, PowerOfTwo(-exponent), logarithm.x);
  DAX_REQUIRE(logarithm.compute(), DAX_STS_FAILURE);
  addIdentity(logarithm.x, exponent * 0.69314718055994531);
  storeRows(logarithm.x, PowerOfTwo(0), result);
  return DAX_STS_OK;
}

#define DAX_FUNCTION(T)                                            \
  template DaxStatus matrixExp(MatrixIn<T>, MatrixView<T>, void*); \
  template DaxStatus matrixLog(MatrixIn<T>, MatrixView<T>, void*);
DAX_FUNCTION(double)
DAX_FUNCTION(float)
#undef DAX_FUNCTION

}  // namespace dax
