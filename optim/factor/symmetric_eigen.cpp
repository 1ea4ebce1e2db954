#include "optim/factor/symmetric_eigen.h"

#include <cfloat>
#include <cmath>

#include "optim/factor/householder.h"

namespace dax {
namespace {

constexpr int32_t kMaxJacobi = 8;  // rows up to which rotations of the whole matrix are used

// Rotations of a pair of rows and columns, until nothing is left beside the diagonal (Golub and Van Loan 2013, 8.5). Both
// halves are kept.
class CyclicJacobi {
 public:
  CyclicJacobi(const Rows& a, const Rows& vectors) : a_(a), vectors_(vectors), n_(a.rows) {}

  bool run() {
    constexpr int kMaxSweeps = 60;
    for (int sweep = 0; sweep < kMaxSweeps; ++sweep) {
      bool turned = false;
      for (int32_t p = 0; p < n_; ++p) {
        for (int32_t q = p + 1; q < n_; ++q) turned |= turn(p, q);
      }
      if (!turned) return true;
    }
    return false;
  }

 private:
  // An element that is nothing beside both of its diagonal elements is left; of definite matrices small eigenvalues keep
  // their digits so (Demmel and Veselic 1992).
  bool turn(int32_t p, int32_t q) {
    const double off = a_.row(p)[q], first = a_.row(p)[p], second = a_.row(q)[q];
    const double beside = std::sqrt(std::fabs(first)) * std::sqrt(std::fabs(second));
    if (std::fabs(off) <= 0x1p-54 * beside || std::fabs(off) < DBL_MIN) return false;
    const double ratio = (second - first) / (2 * off);
    const double tangent = (ratio < 0 ? -1 : 1) / (std::fabs(ratio) + std::sqrt(1 + ratio * ratio));
    const double cosine = 1 / std::sqrt(1 + tangent * tangent), sine = cosine * tangent;
    rotate(a_.row(p), a_.row(q), cosine, sine, n_);
    for (int32_t i = 0; i < n_; ++i) a_.row(i)[p] = a_.row(p)[i], a_.row(i)[q] = a_.row(q)[i];
    a_.row(p)[p] = first - tangent * off, a_.row(q)[q] = second + tangent * off;
    a_.row(p)[q] = a_.row(q)[p] = 0;
    if (vectors_.data) rotate(vectors_.row(p), vectors_.row(q), cosine, sine, n_);
    return true;
  }

  const Rows &a_, &vectors_;
  int32_t n_;
};

// Reflections from both sides leave a tridiagonal matrix: `diagonal`, and `beside` with element i between i and i + 1. Rows of
// `a` keep the reflections, `tau` their factors.
void tridiagonalise(const Rows& a, double* diagonal, double* beside, double* tau, double* product) {
  const int32_t n = a.rows;
  for (int32_t k = 0; k < n; ++k) {
    diagonal[k] = a.row(k)[k];
    if (k + 1 == n) break;
    double* const v = a.row(k) + k + 1;
    const int32_t rest = n - k - 1;
    beside[k] = makeReflection(v, rest, tau + k);
    if (tau[k] == 0) continue;
    // w = tau A v - (tau^2 / 2) (v^T A v) v, then A -= v w^T + w v^T.
    for (int32_t i = 0; i < rest; ++i) product[i] = tau[k] * inner(a.row(k + 1 + i) + k + 1, v, rest);
    const double share = 0.5 * tau[k] * inner(product, v, rest);
    for (int32_t i = 0; i < rest; ++i) product[i] -= share * v[i];
    for (int32_t i = 0; i < rest; ++i) {
      double* const row = a.row(k + 1 + i) + k + 1;
      for (int32_t j = 0; j < rest; ++j) row[j] -= v[i] * product[j] + product[i] * v[j];
    }
  }
}

// Rows become the columns of the product of all reflections.
void formVectors(const Rows& a, const double* tau, const Rows& vectors) {
  const int32_t n = a.rows;
  setIdentity(vectors);
  for (int32_t k = n - 2; k >= 0; --k) {
    const double* const v = a.row(k) + k + 1;
    const int32_t rest = n - k - 1;
    for (int32_t i = k + 1; i < n && tau[k] != 0; ++i) {
      double* const row = vectors.row(i) + k + 1;
      addScaled(row, -tau[k] * inner(v, row, rest), v, rest);
    }
  }
}

// Implicit QL with Wilkinson's shift. `beside` has one element more, which is 0.
class TridiagonalQl {
 public:
  TridiagonalQl(double* diagonal, double* beside, int32_t n, const Rows& vectors)
      : d_(diagonal), e_(beside), n_(n), vectors_(vectors) {}

  bool run() {
    constexpr int kMaxRounds = 60;
    e_[n_ - 1] = 0;
    for (int32_t first = 0; first < n_; ++first) {
      for (int round = 0;; ++round) {
        const int32_t last = blockFrom(first);
        if (last == first) break;
        if (round == kMaxRounds) return false;
        step(first, last);
      }
    }
    return true;
  }

 private:
  int32_t blockFrom(int32_t i) const {
    while (i + 1 < n_ && !(std::fabs(e_[i]) <= 0x1p-53 * (std::fabs(d_[i]) + std::fabs(d_[i + 1])))) ++i;
    return i;
  }

  void step(int32_t first, int32_t last) {
    const double slope = (d_[first + 1] - d_[first]) / (2 * e_[first]);
    const double root = std::sqrt(slope * slope + 1);
    double bulge = d_[last] - d_[first] + e_[first] / (slope + (slope < 0 ? -root : root));
    double sine = 1, cosine = 1, shift = 0;
    for (int32_t i = last - 1; i >= first; --i) {
      const double f = sine * e_[i], b = cosine * e_[i];
      const double length = std::sqrt(f * f + bulge * bulge);
      e_[i + 1] = length;
      if (length == 0) {
        d_[i + 1] -= shift;
        e_[last] = 0;
        return;
      }
      sine = f / length, cosine = bulge / length;
      const double g = d_[i + 1] - shift, r = (d_[i] - g) * sine + 2 * cosine * b;
      shift = sine * r;
      d_[i + 1] = g + shift;
      bulge = cosine * r - b;
      if (vectors_.data) rotate(vectors_.row(i), vectors_.row(i + 1), cosine, sine, n_);
    }
    d_[first] -= shift, e_[first] = bulge, e_[last] = 0;
  }

  double *d_, *e_;
  int32_t n_;
  const Rows& vectors_;
};

// Ascending, each vector with its element of largest magnitude positive.
void sortValues(double* values, int32_t n, const Rows& vectors) {
  for (int32_t i = 0; i < n; ++i) {
    const auto smallest = static_cast<int32_t>(std::min_element(values + i, values + n) - values);
    std::swap(values[i], values[smallest]);
    if (!vectors.data) continue;
    double* const row = vectors.row(i);
    if (smallest != i) std::swap_ranges(row, row + n, vectors.row(smallest));
    if (signOf(row, n) < 0) {
      for (int32_t j = 0; j < n; ++j) row[j] = -row[j];
    }
  }
}

}  // namespace

bool eigenSymmetric(const Rows& a, double* values, const Rows& vectors, double* work) {
  const int32_t n = a.rows;
  if (n <= kMaxJacobi) {
    if (vectors.data) setIdentity(vectors);
    if (!CyclicJacobi(a, vectors).run()) return false;
    for (int32_t i = 0; i < n; ++i) values[i] = a.row(i)[i];
  } else {
    double *const beside = work, *const tau = work + n, *const product = work + 2 * n;
    tridiagonalise(a, values, beside, tau, product);
    if (vectors.data) formVectors(a, tau, vectors);
    if (!TridiagonalQl(values, beside, n, vectors).run()) return false;
  }
  sortValues(values, n, vectors);
  return true;
}

}  // namespace dax
