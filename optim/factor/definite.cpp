#include "optim/factor/definite.h"

#include <cmath>
#include <numeric>

#include "optim/dense/dense.h"

namespace dax {

bool factorDefinite(const Rows& l, int32_t* exponents) {
  const int32_t n = l.rows;
  for (int32_t i = 0; i < n; ++i) {
    const double diagonal = l.row(i)[i];
    if (!(diagonal > 0)) return false;
    Magnitude magnitude;
    magnitude.add(diagonal);
    exponents[i] = magnitude.exponent() >> 1;
  }
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t i = j; i < n; ++i) l.row(j)[i] = PowerOfTwo(-exponents[i] - exponents[j])(l.row(j)[i]);
  }
  if (!factorPanel(n, n, l.data, l.step)) return false;
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t i = j; i < n; ++i) l.row(j)[i] = PowerOfTwo(exponents[i])(l.row(j)[i]);
  }
  return true;
}

namespace {

// L D L^T of a symmetric matrix, of which both halves are kept, with pivots of one row or two (Bunch and Kaufman 1977).
class Indefinite {
 public:
  Indefinite(const Rows& a, double* e, int32_t* pivots) : a_(a), n_(a.rows), e_(e), pivots_(pivots) {
    std::iota(pivots, pivots + n_, 0);
    std::fill_n(e, n_, 0.0);
  }

  void factor() {
    for (int32_t k = 0; k < n_;) {
      const Choice choice = choose(k);
      exchange(k, k + choice.size - 1, choice.row);
      choice.size == 1 ? eliminateOne(k) : eliminateTwo(k);
      k += choice.size;
    }
  }

 private:
  struct Choice {
    int32_t size, row;
  };

  // The largest magnitude in row `row` from column k on, without the diagonal.
  double largestBeside(int32_t k, int32_t row, int32_t* where) const {
    double largest = 0;
    *where = row;
    for (int32_t j = k; j < n_; ++j) {
      if (const double size = std::fabs(a_.row(row)[j]); j != row && size > largest) largest = size, *where = j;
    }
    return largest;
  }

  Choice choose(int32_t k) const {
    constexpr double kGrowth = 0.6403882032022076;  // (1 + sqrt 17) / 8
    int32_t other, unused;
    const double own = std::fabs(a_.row(k)[k]), beside = largestBeside(k, k, &other);
    if (own >= kGrowth * beside) return {1, k};
    const double otherBeside = largestBeside(k, other, &unused);
    if (own * otherBeside >= kGrowth * beside * beside) return {1, k};
    if (std::fabs(a_.row(other)[other]) >= kGrowth * otherBeside) return {1, other};
    return {2, other};
  }

  // Row and column `to` of the part that is left, from column k on, and the rows of L.
  void exchange(int32_t k, int32_t to, int32_t from) {
    if (to == from) return;
    std::swap(pivots_[to], pivots_[from]);
    std::swap_ranges(a_.row(to), a_.row(to) + n_, a_.row(from));
    for (int32_t i = k; i < n_; ++i) std::swap(a_.row(i)[to], a_.row(i)[from]);
  }

  void eliminateOne(int32_t k) {
    const double* const pivot = a_.row(k);
    if (pivot[k] == 0) return;  // the whole column is 0
    for (int32_t i = k + 1; i < n_; ++i) {
      double* const row = a_.row(i);
      const double factor = pivot[i] / pivot[k];
      for (int32_t j = k + 1; j < n_; ++j) row[j] -= factor * pivot[j];
      row[k] = factor;
    }
  }

  void eliminateTwo(int32_t k) {
    const double *const first = a_.row(k), *const second = a_.row(k + 1);
    // Divided by the corner, which is the largest.
    const double corner = second[k], p = first[k] / corner, q = second[k + 1] / corner;
    const double scale = 1 / (p * q - 1);
    for (int32_t i = k + 2; i < n_; ++i) {
      double* const row = a_.row(i);
      const double x = first[i] / corner, y = second[i] / corner;
      const double left = scale * (q * x - y), right = scale * (p * y - x);
      for (int32_t j = k + 2; j < n_; ++j) row[j] -= left * first[j] + right * second[j];
      row[k] = left, row[k + 1] = right;
    }
    e_[k] = corner;
    a_.row(k + 1)[k] = 0;
  }

  const Rows& a_;
  int32_t n_;
  double* e_;
  int32_t* pivots_;
};

}  // namespace

void factorIndefinite(const Rows& a, double* beside, int32_t* pivots) {
  Indefinite(a, beside, pivots).factor();
}

}  // namespace dax
